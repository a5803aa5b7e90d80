#include "trace/message_text.h"

#include <algorithm>

#include "platform/text_encoding.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

constexpr std::string_view kIndent = "                                                                                ";

std::string Format(const char* format, ...) {
    std::pmr::monotonic_buffer_resource memory;
    std::va_list arguments;
    va_start(arguments, format);
    std::string text(FormatMessageText(memory, format, arguments));
    va_end(arguments);
    return text;
}

template <class Text>
Text Escaped(const Text& text) {
    Text escaped;
    for (const auto c : text) escaped.append(c == '%' ? 2 : 1, c);
    return escaped;
}

/// In ASCII, as the C library that stands in for the platform's refuses other bytes in a wide text.
std::string Ascii(std::string text) {
    for (char& c : text) c = (c & 0x7F) == 0 ? 'z' : static_cast<char>(c & 0x7F);
    return text;
}

std::string WithoutZeros(std::string text) {
    std::erase(text, '\0');
    return text;
}

void CheckNarrow(const std::string& literal, const std::string& narrow, int number) {
    std::wstring wide;
    for (const char c : literal + narrow) wide.push_back(static_cast<unsigned char>(c));
    Require(
        Format((Escaped(literal) + "%s%d").c_str(), narrow.c_str(), number) == ToUtf8(wide) + std::to_string(number),
        "narrow text is Latin-1");
}

void CheckWide(const std::string& literal, const std::string& narrow, const std::wstring& wide, int number) {
    const std::string expected = literal + narrow + "," + ToUtf8(wide) + std::to_string(number);
    Require(Format((Escaped(literal) + "%s,%ls%d").c_str(), narrow.c_str(), wide.c_str(), number) == expected,
            "wide text of any length comes out whole");
}

void CheckIndent(std::string_view message) {
    std::pmr::string indented;
    AppendIndented(indented, message);
    std::string back;
    for (std::string_view rest = indented;;) {
        const std::size_t end = rest.find('\n');
        back += rest.substr(0, end);
        if (end == std::string_view::npos) break;
        back += '\n';
        rest.remove_prefix(end + 1);
        Require(rest.empty() || rest.starts_with(kIndent), "further lines are set in");
        if (!rest.empty()) rest.remove_prefix(kIndent.size());
    }
    Require(back == message, "without the indents it is the message");
}

}  // namespace

void Try(Input input) {
    const int number = input.Any<int>();
    const std::size_t times = input.Between(0, 9) == 0 ? input.Between<std::size_t>(1, 200) : 1;
    const std::string literal = WithoutZeros(input.Bytes(30));
    std::wstring unit = input.Text(12);
    std::erase(unit, L'\0');
    std::wstring wide;
    for (std::size_t i = 0; i < times; ++i) wide += unit;
    const std::string narrow = WithoutZeros(input.RestAsBytes());
    CheckNarrow(literal, narrow, number);
    CheckWide(Ascii(literal), Ascii(narrow), wide, number);
    CheckIndent(narrow);
}

}  // namespace dialwright::fuzz
