#include "trace/format_interpreter.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "target.h"

namespace dialwright::fuzz {
namespace {

constexpr std::size_t kWholeBytes = 8192;

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) escaped.append(c == '%' ? 2 : 1, c);
    return escaped;
}

/// Arguments of all kinds, with the texts that they borrow.
class Arguments {
public:
    explicit Arguments(Input& input) : narrow(input.Bytes(40)), wide(input.Text(40)) {
        const bool isLong = input.Between(0, 15) == 0;
        if (isLong) wide += std::wstring(input.Between<std::size_t>(1000, 1100), L'\x3042');
        const auto count = input.Between<std::size_t>(0, 6);
        for (std::size_t i = 0; i < count; ++i) all.push_back(One(input));
    }

    [[nodiscard]] FormatArgs First(std::size_t count) const {
        return FormatArgs(std::span(all).first((std::min)(count, all.size())));
    }
    [[nodiscard]] FormatArgs All() const { return FormatArgs(all); }

private:
    FormatArg One(Input& input) {
        switch (input.Between(0, 7)) {
            case 0: return narrow.c_str();
            case 1: return wide.c_str();
            case 2: return static_cast<const void*>(narrow.data());
            case 3: return static_cast<const char*>(nullptr);
            case 4: return static_cast<const wchar_t*>(nullptr);
            case 5: return input.Between(-200, 200);
            default: return input.Any<std::uint64_t>();
        }
    }

    std::string narrow;
    std::wstring wide;
    std::vector<FormatArg> all;
};

/// Into a block of exactly this size, so that a byte behind it is found.
std::string Interpret(const std::string& format, FormatArgs arguments, std::size_t size) {
    const auto area = std::make_unique<char[]>(size);
    BoundedText text({area.get(), size});
    InterpretFormat(text, format.c_str(), arguments);
    Require(text.Size() <= size, "a text stays within its area");
    return std::string(text.View());
}

}  // namespace

void Try(Input input) {
    const Arguments arguments(input);
    const auto size = input.Between<std::size_t>(0, 300);
    const auto fewer = input.Between<std::size_t>(0, 5);
    std::string format = input.RestAsBytes();
    std::erase(format, '\0');

    const std::string whole = Interpret(format, arguments.All(), kWholeBytes);
    Require(Interpret(format, arguments.All(), size) == whole.substr(0, size), "a smaller area cuts the same text");
    (void)Interpret(format, arguments.First(fewer), kWholeBytes);
    Require(Interpret(Escaped(format), arguments.All(), kWholeBytes) == format.substr(0, kWholeBytes),
            "doubled percent signs stand for themselves");
    const std::string before = Interpret("<" + format, arguments.All(), kWholeBytes);
    Require(before == ("<" + whole).substr(0, kWholeBytes), "text in front changes nothing behind it");
}

}  // namespace dialwright::fuzz
