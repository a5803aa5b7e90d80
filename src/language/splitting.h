#pragma once

#include <string>
#include <vector>

namespace dialwright {

/// The non-blank lines of a script, each as it stands: leading blanks and a trailing carriage return stay.
[[nodiscard]] std::vector<std::wstring> SplitScriptLines(const std::wstring& script);

/// The pieces between commas, untrimmed. Empty pieces count, except one after a final comma;
/// an empty text has no pieces.
[[nodiscard]] std::vector<std::wstring> SplitByComma(const std::wstring& text);

/// The segments of a hierarchy path such as "2.1.3", split at full stops by the rule of SplitByComma.
[[nodiscard]] std::vector<std::wstring> SplitHierarchyPath(const std::wstring& path);

}  // namespace dialwright
