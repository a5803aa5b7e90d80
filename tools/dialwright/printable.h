#pragma once

#include <string>
#include <string_view>

namespace dialwright::tools {

/// Text of a script or a window in UTF-8, with U+FFFD for control characters: none of them reaches a terminal or a log.
[[nodiscard]] std::string Printable(std::wstring_view text);

/// The same of UTF-8, with U+FFFD also for what is none.
[[nodiscard]] std::string Printable(std::string_view utf8);

}  // namespace dialwright::tools
