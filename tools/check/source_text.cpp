#include "check/source_text.h"

namespace dialwright::tools {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// Decodes one character at `at` and moves behind it; an invalid byte is one replacement character.
class Decoder {
public:
    explicit Decoder(std::string_view utf8) : bytes(utf8) {}

    [[nodiscard]] bool AtEnd() const { return at == bytes.size(); }
    [[nodiscard]] bool SawInvalid() const { return sawInvalid; }

    char32_t Next() {
        const unsigned char lead = Byte(at);
        const int more = lead < 0x80                   ? 0
                         : lead >= 0xC2 && lead < 0xE0 ? 1
                         : lead >= 0xE0 && lead < 0xF0 ? 2
                         : lead >= 0xF0 && lead < 0xF5 ? 3
                                                       : -1;
        if (more < 0 || bytes.size() - at <= static_cast<std::size_t>(more)) return Invalid();
        char32_t character = more == 0 ? lead : lead & (0x3FU >> static_cast<unsigned>(more));
        for (int i = 1; i <= more; ++i) {
            const unsigned char follower = Byte(at + static_cast<std::size_t>(i));
            if ((follower & 0xC0U) != 0x80U) return Invalid();
            character = character << 6U | (follower & 0x3FU);
        }
        const bool overlong = (more == 2 && character < 0x800) || (more == 3 && character < 0x10000);
        if (overlong || character > 0x10FFFF || (character >= 0xD800 && character < 0xE000)) return Invalid();
        at += static_cast<std::size_t>(more) + 1;
        return character;
    }

private:
    [[nodiscard]] unsigned char Byte(std::size_t index) const { return static_cast<unsigned char>(bytes[index]); }

    char32_t Invalid() {
        ++at;
        sawInvalid = true;
        return kReplacement;
    }

    std::string_view bytes;
    std::size_t at = 0;
    bool sawInvalid = false;
};

void Append(std::wstring& text, char32_t character) {
    if (sizeof(wchar_t) > 2 || character < 0x10000) {
        text.push_back(static_cast<wchar_t>(character));
        return;
    }
    const char32_t rest = character - 0x10000;
    text.push_back(static_cast<wchar_t>(0xD800 + (rest >> 10U)));
    text.push_back(static_cast<wchar_t>(0xDC00 + (rest & 0x3FFU)));
}

bool IsComment(std::wstring_view line) {
    const std::size_t first = line.find_first_not_of(L" \t\r");
    return first != std::wstring_view::npos && line[first] == L'#';
}

}  // namespace

SourceText ReadSource(std::string_view utf8) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (utf8.starts_with(kByteOrderMark)) utf8.remove_prefix(kByteOrderMark.size());
    SourceText source;
    std::wstring line;
    const auto endLine = [&] {
        source.lines.push_back({.number = source.lines.size() + 1, .text = line, .isComment = IsComment(line)});
        line.clear();
    };
    Decoder decoder(utf8);
    while (!decoder.AtEnd()) {
        const char32_t character = decoder.Next();
        source.hadZero = source.hadZero || character == 0;
        if (character == U'\n') {
            endLine();
        } else {
            Append(line, character);
        }
    }
    if (!line.empty()) endLine();
    source.hadInvalidBytes = decoder.SawInvalid();
    return source;
}

std::wstring Wide(std::string_view utf8) {
    std::wstring text;
    text.reserve(utf8.size());
    for (Decoder decoder(utf8); !decoder.AtEnd();) Append(text, decoder.Next());
    return text;
}

std::wstring PureScript(const SourceText& source) {
    std::wstring script;
    for (const SourceLine& line : source.lines) {
        if (!line.isComment) script += line.text;
        script += L'\n';
    }
    return script;
}

}  // namespace dialwright::tools
