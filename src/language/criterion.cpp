#include "language/criterion.h"

#include <algorithm>
#include <cwchar>

#include "language/expression.h"

namespace dialwright {
namespace {

// Generous against what was measured with libc++ on x64: 58 to 65 bytes for each state that a chain of the expression
// has, at most 640 for a group with look-ahead. The reserve is for what a match needs besides.
constexpr std::size_t kStackPerState = 80;
constexpr std::size_t kStackPerGroup = 800;
constexpr std::size_t kStackReserve = std::size_t{48} * 1024;

/// The most groups that are open at once. Escapes and bracket expressions are skipped, as their parentheses open none.
std::size_t GroupNesting(const std::wstring& pattern) {
    std::size_t depth = 0;
    std::size_t deepest = 0;
    bool inBrackets = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const wchar_t c = pattern[i];
        if (c == L'\\') {
            ++i;
        } else if (inBrackets) {
            inBrackets = c != L']';
        } else if (c == L'[') {
            inBrackets = true;
        } else if (c == L'(') {
            deepest = std::max(deepest, ++depth);
        } else if (c == L')' && depth > 0) {
            --depth;
        }
    }
    return deepest;
}

/// The states of an expression's longest chain: a bar and a group have more of them than other characters.
std::size_t MostStates(const std::wstring& pattern) {
    const auto isCostly = [](wchar_t c) { return c == L'|' || c == L'('; };
    return pattern.size() + static_cast<std::size_t>(std::ranges::count_if(pattern, isCostly));
}

bool IsTooComplex(const std::wstring& pattern, std::size_t stackBytes) {
    if (pattern.size() > kMostPatternUnits) return true;
    const std::size_t nesting = GroupNesting(pattern);
    if (nesting > kMostNestedGroups) return true;
    return MostStates(pattern) * kStackPerState + nesting * kStackPerGroup + kStackReserve > stackBytes;
}

}  // namespace

std::wregex CompileCriterion(const std::wstring& pattern, std::size_t stackBytes) {
    if (IsTooComplex(pattern, stackBytes)) throw std::regex_error(std::regex_constants::error_complexity);
    return CompileExpression(pattern, std::regex_constants::icase);
}

bool MatchesWhole(const wchar_t* text, const std::wregex& expression) { return std::regex_match(text, expression); }

bool ContainsLiteral(const wchar_t* text, const std::wstring& criterion) {
    return std::wcsstr(text, criterion.c_str()) != nullptr;
}

bool EqualsLiteral(const wchar_t* text, const std::wstring& criterion) {
    return std::wcscmp(text, criterion.c_str()) == 0;
}

}  // namespace dialwright
