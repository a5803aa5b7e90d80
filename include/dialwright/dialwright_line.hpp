#ifndef DIALWRIGHT_DIALWRIGHT_LINE_HPP
#define DIALWRIGHT_DIALWRIGHT_LINE_HPP

/*
 * Writes command lines in C++17, and hides the typed texts in them. Header only.
 *
 *     std::wstring line = dialwright::Line(L"Window.SetText", L"#32770", dialwright::Literal(L"Sign in (1)"),
 *                                          {1001, L"Ada Lovelace"}, 5000);
 */

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "dialwright_line.h"

namespace dialwright {

/// What went wrong, in one sentence of UTF-8.
class Error : public std::runtime_error {
public:
    explicit Error(const std::wstring& sentence) : std::runtime_error(ToUtf8(sentence)) {}

private:
    static std::string ToUtf8(const std::wstring& text) {
        const auto size = static_cast<int>(text.size());
        const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, text.c_str(), size, nullptr, 0, nullptr, nullptr);
        std::string utf8(static_cast<std::size_t>(bytes), '\0');
        ::WideCharToMultiByte(CP_UTF8, 0, text.c_str(), size, utf8.data(), bytes, nullptr, nullptr);
        return utf8;
    }
};

/// A line that cannot be written.
class LineError : public Error {
public:
    LineError(DialwrightLineError code, const std::wstring& sentence) : Error(sentence), code(code) {}
    [[nodiscard]] DialwrightLineError Code() const noexcept { return code; }

private:
    DialwrightLineError code;
};

/// An argument behind class and title: a text, a whole number, true or false for a check box, or what one of the
/// functions below makes.
class Argument {
public:
    Argument(std::wstring text) : kind(DIALWRIGHT_TEXT), text(std::move(text)) {}
    Argument(const wchar_t* text) : Argument(std::wstring(text)) {}
    template <class Number, std::enable_if_t<std::is_same_v<Number, int> || std::is_same_v<Number, bool>, bool> = true>
    Argument(Number number) : kind(DIALWRIGHT_NUMBERS), numbers{static_cast<int>(number)} {}

    [[nodiscard]] DialwrightArgument ForC() const {
        DialwrightArgument argument{kind, text.c_str(), text.size(), {}, numbers.size()};
        for (std::size_t i = 0; i < numbers.size() && i < DIALWRIGHT_MOST_NUMBERS; ++i) {
            argument.numbers[i] = numbers[i];
        }
        return argument;
    }

private:
    Argument(DialwrightArgumentKind kind, std::wstring text, std::vector<int> numbers)
        : kind(kind), text(std::move(text)), numbers(std::move(numbers)) {}
    friend Argument Numbers(std::vector<int> numbers);
    friend Argument Secret(std::wstring name);
    friend Argument Environment(std::wstring name);

    DialwrightArgumentKind kind;
    std::wstring text;
    std::vector<int> numbers;
};

/// A rectangle (left, top, right, bottom), a position or a size.
[[nodiscard]] inline Argument Numbers(std::vector<int> numbers) {
    return {DIALWRIGHT_NUMBERS, L"", std::move(numbers)};
}

/// The text that `dialwright run` finds under this name in its secret file, or in its environment. Only for the text of
/// a Window.SetText command, and not for a line that the library itself is given.
[[nodiscard]] inline Argument Secret(std::wstring name) { return {DIALWRIGHT_SECRET, std::move(name), {}}; }
[[nodiscard]] inline Argument Environment(std::wstring name) { return {DIALWRIGHT_ENVIRONMENT, std::move(name), {}}; }

namespace detail {

inline std::wstring SentenceOf(DialwrightLineFault fault, const std::wstring& name, std::size_t count) {
    const int own = ::DialwrightArgumentsOf(name.c_str());
    const std::wstring what = fault.argument == 0   ? L"the class"
                              : fault.argument == 1 ? L"the title"
                                                    : L"argument " + std::to_wstring(fault.argument - 1);
    switch (fault.error) {
        case DIALWRIGHT_LINE_WRITTEN: break;
        case DIALWRIGHT_LINE_UNKNOWN_COMMAND: return L"no command has this name: " + name;
        case DIALWRIGHT_LINE_ARGUMENT_COUNT:
            return name + L" takes " + std::to_wstring(own) + L" arguments behind class and title, not " +
                   std::to_wstring(count);
        case DIALWRIGHT_LINE_NOT_AN_ARGUMENT: return what + L" has more than four numbers";
        case DIALWRIGHT_LINE_EMPTY_ARGUMENT: return what + L" is empty";
        case DIALWRIGHT_LINE_ZERO_CHARACTER: return what + L" holds a zero character";
        case DIALWRIGHT_LINE_LINE_BREAK: return what + L" holds a line break";
        case DIALWRIGHT_LINE_HALF_CHARACTER: return what + L" holds half a character";
        case DIALWRIGHT_LINE_REFERENCE: return what + L" would be a reference to the runner";
        case DIALWRIGHT_LINE_SECRET_PLACE: return what + L": a secret can only be the text of a Window.SetText command";
        case DIALWRIGHT_LINE_SECRET_NAME: return what + L": this is no name of a secret: letters, digits and _";
        case DIALWRIGHT_LINE_TIMEOUT: return L"the timeout must be -1 or 1 to 2147483647 milliseconds";
    }
    return L"";
}

/// A token as the library reads it, and the place of what was written for it.
struct Token {
    std::wstring text;
    std::size_t begin;
    std::size_t end;
};

/// The place behind the quote that closes the one at `open`, or 0: then the quote is an ordinary character.
inline std::size_t BehindQuoted(const std::wstring& line, std::size_t open) {
    for (std::size_t i = open + 1; i < line.size(); ++i) {
        if (line[i] == L'"') return i + 1;
        if (line[i] != L'\\') continue;
        ++i;
        if (i == line.size() || line[i] == L'\n' || line[i] == L'\r' || line[i] == 0x2028 || line[i] == 0x2029) break;
    }
    return 0;
}

inline std::wstring Unescaped(const std::wstring& inside) {
    std::wstring text;
    for (std::size_t i = 0; i < inside.size(); ++i) {
        const bool escapes =
            inside[i] == L'\\' && i + 1 < inside.size() && (inside[i + 1] == L'"' || inside[i + 1] == L'\\');
        if (escapes) ++i;
        text += inside[i];
    }
    return text;
}

inline std::vector<Token> Tokens(const std::wstring& line) {
    const wchar_t* const blanks = L" \t\n\v\f\r";
    std::vector<Token> tokens;
    for (std::size_t i = line.find_first_not_of(blanks); i != std::wstring::npos;
         i = line.find_first_not_of(blanks, i)) {
        const std::size_t closed = line[i] == L'"' ? BehindQuoted(line, i) : 0;
        const std::size_t end = closed != 0 ? closed : std::min(line.find_first_of(blanks, i), line.size());
        const bool quoted = closed != 0;
        tokens.push_back({quoted ? Unescaped(line.substr(i + 1, end - i - 2)) : line.substr(i, end - i), i, end});
        i = end;
    }
    return tokens;
}

/// The tokens that are not to be shown: a typed text, and in a line that is no valid command all but its name.
inline std::vector<Token> HiddenTokens(const std::wstring& line) {
    const std::vector<Token> tokens = Tokens(line);
    if (tokens.empty()) return {};
    const int own = ::DialwrightArgumentsOf(tokens[0].text.c_str());
    const std::size_t shortest = own < 0 ? 0 : 3 + static_cast<std::size_t>(own);
    if (own < 0 || (tokens.size() != shortest && tokens.size() != shortest + 1)) {
        return {tokens.begin() + 1, tokens.end()};
    }
    if (::DialwrightLineTakesText(tokens[0].text.c_str()) == 0) return {};
    return {tokens[shortest - 1]};
}

template <class Visit>
void ForEachLine(const std::wstring& script, Visit&& visit) {
    for (std::size_t begin = 0; begin <= script.size();) {
        const std::size_t end = std::min(script.find(L'\n', begin), script.size());
        visit(script.substr(begin, end - begin));
        begin = end + 1;
    }
}

inline std::wstring MaskLine(std::wstring line) {
    const std::vector<Token> hidden = HiddenTokens(line);
    for (auto token = hidden.rbegin(); token != hidden.rend(); ++token) {
        line.replace(token->begin, token->end - token->begin, L"\"*****\"");
    }
    return line;
}

/// Adds what MaskLine hides, as it is and as it is written.
inline void AddHiddenTexts(const std::wstring& line, std::vector<std::wstring>& texts) {
    for (const Token& token : HiddenTokens(line)) {
        texts.push_back(line.substr(token.begin, token.end - token.begin));
        texts.push_back(token.text);
    }
}

/// The message with ***** wherever it holds one of the texts, the longest first; one below four characters stays.
inline std::wstring Hide(std::vector<std::wstring> texts, std::wstring message) {
    const std::wstring mask = L"*****";
    std::stable_sort(texts.begin(), texts.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
    for (const std::wstring& text : texts) {
        if (text.size() < 4) continue;
        for (std::size_t at = message.find(text); at != std::wstring::npos; at = message.find(text, at + mask.size())) {
            message.replace(at, text.size(), mask);
        }
    }
    return message;
}

}  // namespace detail

/// The line of a command; throws LineError for what cannot be written. Class and title are expressions, see Literal. A
/// name that ends in .NonRegex makes them compared literally. The timeout is 1 to 2,147,483,647 ms, or -1.
[[nodiscard]] inline std::wstring Line(const std::wstring& name, const std::wstring& windowClass,
                                       const std::wstring& title, const std::vector<Argument>& arguments = {},
                                       long long timeoutMs = DIALWRIGHT_DEFAULT_TIMEOUT) {
    const Argument criteria[] = {windowClass, title};
    std::vector<DialwrightArgument> all = {criteria[0].ForC(), criteria[1].ForC()};
    for (const Argument& argument : arguments) all.push_back(argument.ForC());
    DialwrightLineFault fault{DIALWRIGHT_LINE_UNKNOWN_COMMAND, 0};
    const bool hasZero = name.find(L'\0') != std::wstring::npos;
    const std::size_t units =
        hasZero ? 0 : ::DialwrightWriteLine(nullptr, 0, name.c_str(), all.data(), all.size(), timeoutMs, &fault);
    if (units == 0) throw LineError(fault.error, detail::SentenceOf(fault, name, arguments.size()));
    std::wstring line(units, L'\0');
    ::DialwrightWriteLine(line.data(), units, name.c_str(), all.data(), all.size(), timeoutMs, nullptr);
    line.resize(units - 1);
    return line;
}

/// An expression for class or title that matches this very text, whatever its case; any text for an empty one.
[[nodiscard]] inline std::wstring Literal(const std::wstring& text) {
    std::wstring pattern(2 * text.size() + 3, L'\0');
    pattern.resize(::DialwrightWritePattern(pattern.data(), pattern.size(), text.c_str()) - 1);
    return pattern;
}

/// The same lines with ***** for typed texts, and for all that stands in a line that is no valid command.
[[nodiscard]] inline std::wstring Mask(const std::wstring& script) {
    std::wstring masked;
    detail::ForEachLine(script, [&](const std::wstring& line) { masked += detail::MaskLine(line) + L'\n'; });
    masked.pop_back();
    return masked;
}

}  // namespace dialwright

#endif
