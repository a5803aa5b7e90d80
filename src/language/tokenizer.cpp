#include "language/tokenizer.h"

#include <iterator>
#include <regex>
#include <string_view>
#include <utility>

#include "language/expression.h"

namespace dialwright {
namespace {

// A quoted token with backslash escapes, or else a run of characters that are not white space.
constexpr wchar_t kTokenPattern[] = LR"re(\"((?:[^\"\\]|\\.)*)\"|(\S+))re";
static_assert(std::size(kTokenPattern) == 28 + 1);

constexpr std::size_t kQuotedInside = 1;
constexpr std::size_t kPlainRun = 2;

/// Only \" and \\ are escapes. Any other backslash stands for itself, so a Windows path needs no doubling.
std::wstring Unescape(std::wstring_view inside) {
    std::wstring text;
    text.reserve(inside.size());
    for (std::size_t i = 0; i < inside.size(); ++i) {
        const bool escape =
            inside[i] == L'\\' && i + 1 < inside.size() && (inside[i + 1] == L'"' || inside[i + 1] == L'\\');
        if (escape) ++i;
        text.push_back(inside[i]);
    }
    return text;
}

template <class Visit>
void ForEachToken(const std::wstring& line, Visit&& visit) {
    const std::wregex expression = CompileExpression(kTokenPattern, std::regex_constants::ECMAScript);
    for (std::wsregex_iterator match(line.begin(), line.end(), expression), end; match != end; ++match) {
        const auto& inside = (*match)[kQuotedInside];
        const auto& run = (*match)[kPlainRun];
        visit(*match, inside.matched ? Unescape(inside.str()) : run.str());
    }
}

}  // namespace

TokenList TokenizeCommand(const std::wstring& line) {
    TokenList tokens;
    ForEachToken(line, [&](const std::wsmatch&, std::wstring text) { tokens.push_back(std::move(text)); });
    return tokens;
}

std::vector<Token> TokenizeWithOffsets(const std::wstring& line) {
    std::vector<Token> tokens;
    ForEachToken(line, [&](const std::wsmatch& match, std::wstring text) {
        tokens.push_back({.text = std::move(text),
                          .offset = static_cast<std::size_t>(match.position()),
                          .length = static_cast<std::size_t>(match.length()),
                          .quoted = match[kQuotedInside].matched});
    });
    return tokens;
}

}  // namespace dialwright
