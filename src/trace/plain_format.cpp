#include "trace/plain_format.h"

#include <charconv>
#include <cstring>

namespace dialwright {
namespace {

/// Text that grows in an area, and knows when it has not fitted.
class Output {
public:
    explicit Output(std::span<char> area) noexcept : begin(area.data()), at(begin), end(begin + area.size()) {}

    bool Put(std::string_view text) noexcept {
        if (text.size() > Room()) return false;
        std::memcpy(at, text.data(), text.size());
        at += text.size();
        return true;
    }

    template <class Number>
    bool PutNumber(Number number) noexcept {
        const auto [behind, error] = std::to_chars(at, end, number);
        if (error != std::errc()) return false;
        at = behind;
        return true;
    }

    /// A character below U+0800, in UTF-8.
    bool PutNarrow(unsigned int unit) noexcept {
        if (Room() < (unit < 0x80 ? 1 : 2)) return false;
        if (unit >= 0x80) *at++ = static_cast<char>(0xC0U | unit >> 6U);
        *at++ = static_cast<char>(unit < 0x80 ? unit : 0x80U | (unit & 0x3FU));
        return true;
    }

    /// One of the others that are no surrogates.
    bool PutWide(unsigned int unit) noexcept {
        if (Room() < 3) return false;
        *at++ = static_cast<char>(0xE0U | unit >> 12U);
        *at++ = static_cast<char>(0x80U | (unit >> 6U & 0x3FU));
        *at++ = static_cast<char>(0x80U | (unit & 0x3FU));
        return true;
    }

    [[nodiscard]] std::string_view View() const noexcept { return {begin, static_cast<std::size_t>(at - begin)}; }

private:
    [[nodiscard]] std::size_t Room() const noexcept { return static_cast<std::size_t>(end - at); }

    char* begin;
    char* at;
    char* end;
};

/// As Latin-1.
bool PutNarrowText(Output& output, const char* text) noexcept {
    if (text == nullptr) return output.Put("(null)");
    for (; *text != '\0'; ++text) {
        if (!output.PutNarrow(static_cast<unsigned char>(*text))) return false;
    }
    return true;
}

bool IsSurrogate(unsigned int unit) { return unit >= 0xD800 && unit < 0xE000; }

bool PutWideText(Output& output, const wchar_t* text) noexcept {
    if (text == nullptr) return output.Put("(null)");
    for (; *text != L'\0'; ++text) {
        const unsigned int unit = *text;
        // Halves of a pair may come from two arguments.
        if (IsSurrogate(unit)) return false;
        if (!(unit < 0x800 ? output.PutNarrow(unit) : output.PutWide(unit))) return false;
    }
    return true;
}

bool IsAscii(std::string_view text) noexcept {
    unsigned char all = 0;
    for (const char c : text) all |= static_cast<unsigned char>(c);
    return all < 0x80;
}

/// The sequence at the beginning of `rest`, behind its "%". Takes it off, and its argument.
bool PutSequence(Output& output, std::string_view& rest, std::va_list& arguments) noexcept {
    const auto take = [&](std::string_view sequence) {
        if (!rest.starts_with(sequence)) return false;
        rest.remove_prefix(sequence.size());
        return true;
    };
    if (take("d")) return output.PutNumber(va_arg(arguments, int));
    if (take("s")) return PutNarrowText(output, va_arg(arguments, const char*));
    if (take("ls")) return PutWideText(output, va_arg(arguments, const wchar_t*));
    if (take("zu")) return output.PutNumber(va_arg(arguments, std::size_t));
    return take("%") && output.Put("%");
}

}  // namespace

std::optional<std::string_view> FormatPlain(std::span<char> area, const char* format, std::va_list arguments) noexcept {
    Output output(area);
    std::string_view rest = format;
    if (!IsAscii(rest)) return std::nullopt;
    std::va_list pass;
    va_copy(pass, arguments);
    bool sound = true;
    while (sound && !rest.empty()) {
        const std::size_t percent = rest.find('%');
        sound = output.Put(rest.substr(0, percent));
        if (percent == std::string_view::npos) break;
        rest.remove_prefix(percent + 1);
        sound = sound && PutSequence(output, rest, pass);
    }
    va_end(pass);
    if (!sound) return std::nullopt;
    return output.View();
}

}  // namespace dialwright
