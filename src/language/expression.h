#pragma once

#include <regex>
#include <string>

namespace dialwright {

/// Compiles an expression. Throws std::regex_error, or std::bad_alloc before anything is built of it: the standard
/// library frees a part of its work twice when its memory runs out half-way, which no catch can see.
[[nodiscard]] std::wregex CompileExpression(const std::wstring& pattern,
                                            std::regex_constants::syntax_option_type options);

}  // namespace dialwright
