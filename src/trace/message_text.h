#pragma once

#include <cstdarg>
#include <memory_resource>
#include <string>
#include <string_view>

namespace dialwright {

/// Formats by the C runtime's rules, into UTF-8, in finite time whatever the text and the host's locale.
/// "%s" arguments are read as Latin-1, "%ls" arguments as UTF-16. The text lies in `memory`. Throws only
/// std::bad_alloc.
[[nodiscard]] std::string_view FormatMessageText(std::pmr::monotonic_buffer_resource& memory, const char* format,
                                                 std::va_list arguments);

/// The same, always by the C runtime itself.
[[nodiscard]] std::string_view FormatByRuntime(std::pmr::monotonic_buffer_resource& memory, const char* format,
                                               std::va_list arguments);

/// Gives back what they keep from call to call. Only when nobody is in them; they start anew afterwards.
void FreeMessageLocale() noexcept;

/// Appends a message with the 80-space indent before every line but the first; nothing after a final line feed.
void AppendIndented(std::pmr::string& target, std::string_view message);

}  // namespace dialwright
