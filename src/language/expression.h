#pragma once

#include <regex>
#include <string>

namespace dialwright {

/// Compiles an expression. Throws std::regex_error, or std::bad_alloc before anything is built of it: the standard
/// library frees a part of its work twice when its memory runs out half-way, which no catch can see. Memory is set
/// aside against that; where it is needed, another thread that runs out at the same moment can still take it first.
[[nodiscard]] std::wregex CompileExpression(const std::wstring& pattern,
                                            std::regex_constants::syntax_option_type options);

}  // namespace dialwright
