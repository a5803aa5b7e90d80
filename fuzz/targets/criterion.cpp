#include "language/criterion.h"

#include <algorithm>
#include <optional>

#include "look/command_text.h"
#include "match/name_matcher.h"
#include "target.h"

// Expressions are the user's own, and nested look-aheads run past the match limit: both sides are kept short here.
namespace dialwright::fuzz {
namespace {

constexpr std::size_t kStackBytes = std::size_t{512} * 1024;

std::optional<bool> Matches(const std::wstring& pattern, const std::wstring& text) {
    try {
        return MatchesWhole(text.c_str(), CompileCriterion(pattern, kStackBytes));
    } catch (const std::regex_error&) {
        return std::nullopt;
    }
}

bool IsRefused(const std::wstring& pattern, std::size_t stackBytes) {
    try {
        (void)CompileCriterion(pattern, stackBytes);
        return false;
    } catch (const std::regex_error& error) {
        return error.code() == std::regex_constants::error_complexity;
    }
}

std::wstring WithoutZeros(std::wstring text) {
    std::erase(text, L'\0');
    return text;
}

}  // namespace

void Try(Input input) {
    const std::wstring text = WithoutZeros(input.Text(24));
    const std::wstring other = WithoutZeros(input.Text(24));
    const std::wstring pattern = input.Text(40);
    (void)Matches(pattern, text);
    Require(IsRefused(pattern, 1024), "without stack nothing is compiled");
    Require(IsRefused(std::wstring(kMostNestedGroups + 1, L'(') + pattern, kStackBytes), "nor what is nested too deep");

    const std::wstring exact = tools::EscapeForExpression(text);
    Require(Matches(exact, text) == true, "an escaped text matches itself");
    const bool isEmpty = text.empty();
    const bool matches = Matches(exact, other).value_or(false);
    Require(isEmpty || matches || other != text, "and every text that is the same");
    Require(isEmpty || !matches || text.size() == other.size(), "but none of another length");

    Require(ContainsLiteral(text.c_str(), other) == (text.find(other) != std::wstring::npos), "a part is found");
    Require(EqualsLiteral(text.c_str(), other) == (text == other), "the same is the same");
    const tools::NameMatcher literal({.className = other, .title = other, .literal = true}, kStackBytes);
    Require(literal.Takes(other, text + other), "a literal title may be a part, a class may not");
    Require(literal.Takes(text, text + other) == (text == other), "a class is compared whole");
}

}  // namespace dialwright::fuzz
