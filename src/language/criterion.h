#pragma once

#include <cstddef>
#include <regex>
#include <string>

namespace dialwright {

inline constexpr std::size_t kMostPatternUnits = 4096;
inline constexpr std::size_t kMostNestedGroups = 500;

/// Compiles a class or title criterion: ECMAScript grammar, case-insensitive. Throws std::regex_error for one that
/// is no expression. The standard library recurses over the pattern when it compiles and destroys an expression, and
/// would overflow the host's stack where no catch can see it: a pattern past the limits above, or too large for the
/// `stackBytes` that are left, is refused before with error_complexity.
[[nodiscard]] std::wregex CompileCriterion(const std::wstring& pattern, std::size_t stackBytes);

/// Whether the whole text matches. Throws std::regex_error when the match explodes.
[[nodiscard]] bool MatchesWhole(const wchar_t* text, const std::wregex& expression);

/// Whether the criterion occurs in the text, case-sensitively; an empty one occurs in every text.
[[nodiscard]] bool ContainsLiteral(const wchar_t* text, const std::wstring& criterion);

/// Whether text and criterion are the same, case-sensitively.
[[nodiscard]] bool EqualsLiteral(const wchar_t* text, const std::wstring& criterion);

}  // namespace dialwright
