#include "trace/format_interpreter.h"

#include <array>
#include <cwchar>
#include <memory>
#include <new>

#include "platform/text_encoding.h"

namespace dialwright {
namespace {

/// One "%" sequence, read up to its conversion.
struct Conversion {
    char pad = ' ';
    std::size_t width = 0;
    bool leftJustified = false;
    bool is64Bit = false;
};

constexpr std::size_t kMostDigits = 32;
constexpr std::size_t kShortWideUnits = 1024;
constexpr std::size_t kBytesPerUnit = 4;
// More than any line holds; a longer width is not told apart from it.
constexpr std::size_t kMostWidth = 100'000;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t PaddingFor(const Conversion& conversion, std::size_t length) {
    return conversion.width > length ? conversion.width - length : 0;
}

/// Sign or "0x", then digits; `counted` is how many characters of both take a place of the width.
void PutPadded(BoundedText& target, const Conversion& conversion, std::string_view lead, std::string_view digits,
               std::size_t counted) {
    const std::size_t padding = PaddingFor(conversion, counted);
    const bool zeros = conversion.pad == '0' && !conversion.leftJustified;
    if (!zeros && !conversion.leftJustified) target.PutRepeated(' ', padding);
    target.Put(lead);
    if (zeros) target.PutRepeated('0', padding);
    target.Put(digits);
    if (conversion.leftJustified) target.PutRepeated(' ', padding);
}

class Digits {
public:
    Digits(std::uint64_t value, int base) noexcept
        : end(std::to_chars(area.data(), area.data() + area.size(), value, base).ptr) {}
    Digits(const Digits&) = delete;
    Digits& operator=(const Digits&) = delete;

    void ToUpper() noexcept {
        for (char* digit = area.data(); digit != end; ++digit) {
            if (*digit >= 'a') *digit = static_cast<char>(*digit - 'a' + 'A');
        }
    }
    [[nodiscard]] std::string_view View() const noexcept {
        return {area.data(), static_cast<std::size_t>(end - area.data())};
    }

private:
    std::array<char, kMostDigits> area{};
    char* end;
};

bool IsInteger(const FormatArg& argument) { return argument.kind == FormatArg::Kind::Integer; }

// Without "ll" an integer counts by its lower 32 bits, whatever was given.
std::uint64_t UnsignedValue(const Conversion& conversion, const FormatArg& argument) {
    return conversion.is64Bit ? argument.integer : static_cast<std::uint32_t>(argument.integer);
}

void PutSigned(BoundedText& target, const Conversion& conversion, const FormatArg& argument) {
    if (!IsInteger(argument)) return;
    const auto value = conversion.is64Bit ? static_cast<std::int64_t>(argument.integer)
                                          : std::int64_t{static_cast<std::int32_t>(argument.integer)};
    const bool negative = value < 0;
    const auto bits = static_cast<std::uint64_t>(value);
    const Digits digits(negative ? 0 - bits : bits, 10);
    PutPadded(target, conversion, negative ? "-" : "", digits.View(), digits.View().size() + (negative ? 1 : 0));
}

void PutUnsigned(BoundedText& target, const Conversion& conversion, const FormatArg& argument) {
    if (!IsInteger(argument)) return;
    const Digits digits(UnsignedValue(conversion, argument), 10);
    PutPadded(target, conversion, "", digits.View(), digits.View().size());
}

void PutHexadecimal(BoundedText& target, const Conversion& conversion, const FormatArg& argument, bool upper) {
    if (!IsInteger(argument)) return;
    Digits digits(UnsignedValue(conversion, argument), 16);
    if (upper) digits.ToUpper();
    PutPadded(target, conversion, "0x", digits.View(), digits.View().size());
}

void PutLowerHexadecimal(BoundedText& target, const Conversion& conversion, const FormatArg& argument) {
    PutHexadecimal(target, conversion, argument, false);
}

void PutUpperHexadecimal(BoundedText& target, const Conversion& conversion, const FormatArg& argument) {
    PutHexadecimal(target, conversion, argument, true);
}

/// The address of any pointer, text or not.
std::uint64_t AddressOf(const FormatArg& argument) {
    switch (argument.kind) {
        case FormatArg::Kind::Narrow: return reinterpret_cast<std::uintptr_t>(argument.narrow);
        case FormatArg::Kind::Wide: return reinterpret_cast<std::uintptr_t>(argument.wide);
        case FormatArg::Kind::Pointer: return reinterpret_cast<std::uintptr_t>(argument.pointer);
        case FormatArg::Kind::Integer: break;
    }
    return argument.integer;
}

void PutPointer(BoundedText& target, const Conversion&, const FormatArg& argument) {
    Digits digits(AddressOf(argument), 16);
    digits.ToUpper();
    PutPadded(target, {.pad = '0', .width = 16}, "0x", digits.View(), digits.View().size());
}

void PutCharacter(BoundedText& target, const Conversion& conversion, const FormatArg& argument) {
    if (!IsInteger(argument)) return;
    target.PutRepeated(' ', PaddingFor(conversion, 1));
    target.Put(static_cast<char>(argument.integer));
}

void PutNarrow(BoundedText& target, const Conversion& conversion, const FormatArg& argument) {
    if (argument.kind != FormatArg::Kind::Narrow || argument.narrow == nullptr) return;
    const std::string_view text = argument.narrow;
    target.PutRepeated(' ', PaddingFor(conversion, text.size()));
    target.Put(text);
}

void PutWide(BoundedText& target, const Conversion&, const FormatArg& argument) {
    if (argument.kind != FormatArg::Kind::Wide || argument.wide == nullptr) return;
    const std::wstring_view text = argument.wide;
    if (text.size() < kShortWideUnits) {
        std::array<char, kShortWideUnits * kBytesPerUnit> area;
        target.Put({area.data(), ToUtf8(text, area)});
        return;
    }
    const std::size_t bytes = text.size() * kBytesPerUnit + kBytesPerUnit;
    const std::unique_ptr<char[]> area(new (std::nothrow) char[bytes]);
    if (area != nullptr) target.Put({area.get(), ToUtf8(text, {area.get(), bytes})});
}

struct ConversionRow {
    std::string_view letters;
    void (*put)(BoundedText& target, const Conversion& conversion, const FormatArg& argument);
};

constexpr std::array<ConversionRow, 10> kConversions = {{
    {.letters = "d", .put = &PutSigned},
    {.letters = "i", .put = &PutSigned},
    {.letters = "u", .put = &PutUnsigned},
    {.letters = "x", .put = &PutLowerHexadecimal},
    {.letters = "X", .put = &PutUpperHexadecimal},
    {.letters = "p", .put = &PutPointer},
    {.letters = "c", .put = &PutCharacter},
    {.letters = "s", .put = &PutNarrow},
    {.letters = "S", .put = &PutWide},
    {.letters = "ws", .put = &PutWide},
}};

std::size_t ReadWidth(std::string_view& rest) {
    std::size_t width = 0;
    while (!rest.empty() && IsDigit(rest.front())) {
        width = (std::min)(width * 10 + static_cast<std::size_t>(rest.front() - '0'), kMostWidth);
        rest.remove_prefix(1);
    }
    return width;
}

/// The width that an argument gives; one that is missing, negative or no number gives none.
std::size_t WidthFrom(const FormatArg* argument) {
    if (argument == nullptr || !IsInteger(*argument)) return 0;
    const auto width = static_cast<std::int32_t>(argument->integer);
    return width < 0 ? 0 : (std::min)(static_cast<std::size_t>(width), kMostWidth);
}

bool SkipIf(std::string_view& rest, char character) {
    if (!rest.starts_with(character)) return false;
    rest.remove_prefix(1);
    return true;
}

Conversion ReadFlags(std::string_view& rest, FormatArgs& arguments) {
    Conversion conversion;
    if (rest.starts_with('0') || rest.starts_with(' ')) {
        conversion.pad = rest.front();
        rest.remove_prefix(1);
    }
    if (SkipIf(rest, '*')) {
        conversion.width = WidthFrom(arguments.Next());
    } else {
        conversion.leftJustified = SkipIf(rest, '-');
        conversion.width = ReadWidth(rest);
    }
    if (SkipIf(rest, 'l')) conversion.is64Bit = SkipIf(rest, 'l');
    return conversion;
}

/// One sequence, the "%" itself left out. An unknown conversion loses its one character.
void PutSequence(BoundedText& target, std::string_view& rest, FormatArgs& arguments) {
    const Conversion conversion = ReadFlags(rest, arguments);
    for (const ConversionRow& row : kConversions) {
        if (!rest.starts_with(row.letters)) continue;
        rest.remove_prefix(row.letters.size());
        if (const FormatArg* const argument = arguments.Next()) row.put(target, conversion, *argument);
        return;
    }
    if (rest.starts_with('%')) target.Put('%');
    if (!rest.empty()) rest.remove_prefix(1);
}

}  // namespace

void InterpretFormat(BoundedText& target, const char* format, FormatArgs arguments) noexcept {
    std::string_view rest = format;
    for (;;) {
        const std::size_t sequence = rest.find('%');
        target.Put(rest.substr(0, sequence));
        if (sequence == std::string_view::npos) return;
        rest.remove_prefix(sequence + 1);
        PutSequence(target, rest, arguments);
    }
}

}  // namespace dialwright
