#include "by_hand.h"

#include <algorithm>

#include "language/commands.h"

namespace dialwright::testing {
namespace {

bool IsBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

bool IsLineEnd(wchar_t c) { return c == L'\n' || c == L'\r' || c == 0x2028 || c == 0x2029; }

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// The position of the quote that closes the one at `open`, or npos.
std::size_t ClosingQuote(const std::wstring& line, std::size_t open) {
    for (std::size_t i = open + 1; i < line.size(); ++i) {
        if (line[i] == L'"') return i;
        if (line[i] != L'\\') continue;
        if (i + 1 == line.size() || IsLineEnd(line[i + 1])) return std::wstring::npos;
        ++i;
    }
    return std::wstring::npos;
}

std::wstring WithoutEscapes(const std::wstring& inside) {
    std::wstring text;
    for (std::size_t i = 0; i < inside.size(); ++i) {
        const std::wstring pair = inside.substr(i, 2);
        if (pair == L"\\\"" || pair == L"\\\\") ++i;
        text += inside[i];
    }
    return text;
}

}  // namespace

TokenList ScanByHand(const std::wstring& line) {
    TokenList tokens;
    for (std::size_t i = 0; i < line.size();) {
        if (IsBlank(line[i])) {
            ++i;
            continue;
        }
        const std::size_t close = line[i] == L'"' ? ClosingQuote(line, i) : std::wstring::npos;
        if (close != std::wstring::npos) {
            tokens.push_back(WithoutEscapes(line.substr(i + 1, close - i - 1)));
            i = close + 1;
            continue;
        }
        std::size_t end = i;
        while (end < line.size() && !IsBlank(line[end])) ++end;
        tokens.push_back(line.substr(i, end - i));
        i = end;
    }
    return tokens;
}

std::optional<NumberByHand> ReadNumberByHand(const std::wstring& text) {
    constexpr std::uint64_t kFarOutside = std::uint64_t{1} << 63U;
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i])) ++i;
    NumberByHand number{.isNegative = i < text.size() && text[i] == L'-'};
    if (i < text.size() && (text[i] == L'-' || text[i] == L'+')) ++i;
    if (i == text.size() || !IsDigit(text[i])) return std::nullopt;
    for (; i < text.size() && IsDigit(text[i]); ++i) {
        const auto digit = static_cast<std::uint64_t>(text[i] - L'0');
        // The next digit may just reach the smallest number of 64 bits.
        const bool fits = number.magnitude <= (kFarOutside - digit) / 10;
        number.magnitude = fits ? number.magnitude * 10 + digit : kFarOutside + 1;
    }
    return number;
}

std::wstring MaskFromTheBack(const std::wstring& line) {
    TokenList tokens = ScanByHand(line);
    std::wstring tail;
    const auto number = ReadNumberByHand(tokens.back());
    constexpr std::uint64_t kMost = std::uint64_t{1} << 63U;
    if (number && number->IsWithin(kMost, kMost - 1) && tokens.size() > 1) {
        tail = L" " + tokens.back();
        tokens.pop_back();
    }
    tail.insert(0, tokens.size() == 1 ? L"*****" : L" \"*****\"");
    tokens.pop_back();
    std::wstring head;
    for (std::size_t i = 0; i < tokens.size(); ++i) head += i == 0 ? tokens[i] : L" \"" + tokens[i] + L"\"";
    return head + tail;
}

bool IsValidByHand(const std::wstring& line) {
    const TokenList tokens = ScanByHand(line);
    if (tokens.empty()) return false;
    constexpr std::wstring_view kSuffix = L".NonRegex";
    std::wstring_view name = tokens[0];
    if (name.ends_with(kSuffix) && name != kSuffix) name.remove_suffix(kSuffix.size());
    const auto command = std::ranges::find(kCommands, name, &CommandSpec::name);
    if (command == kCommands.end()) return false;
    const bool hasCount = tokens.size() >= command->minTokens && tokens.size() <= command->MaxTokens();
    return hasCount && std::ranges::none_of(tokens, &std::wstring::empty);
}

bool IsValidScriptByHand(const std::wstring& script) {
    bool hasLine = false;
    for (std::size_t start = 0; start < script.size();) {
        const std::size_t end = (std::min)(script.find(L'\n', start), script.size());
        const std::wstring line = script.substr(start, end - start);
        start = end + 1;
        if (line.find_first_not_of(L" \t\r") == std::wstring::npos) continue;
        if (!IsValidByHand(line)) return false;
        hasLine = true;
    }
    return hasLine;
}

}  // namespace dialwright::testing
