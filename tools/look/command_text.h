#pragma once

#include <string>
#include <string_view>

namespace dialwright::tools {

/// The text as one token of a command line: as it is where that is safe, else in quotes. It must hold no line feed.
[[nodiscard]] std::wstring QuoteToken(std::wstring_view text);

/// An expression that matches exactly this text; ".*" for an empty one, as no argument may be empty.
[[nodiscard]] std::wstring EscapeForExpression(std::wstring_view text);

}  // namespace dialwright::tools
