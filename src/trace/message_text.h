#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

namespace dialwright {

/// Formats by the C runtime's rules, into UTF-8, in finite time whatever the text and the host's locale.
/// "%s" arguments are read as Latin-1, "%ls" arguments as UTF-16. Throws only std::bad_alloc.
[[nodiscard]] std::string FormatMessageText(const char* format, std::va_list arguments);

/// Puts the 80-space indent before every line of a message but the first; nothing after a final line feed.
[[nodiscard]] std::string IndentContinuationLines(std::string_view message);

}  // namespace dialwright
