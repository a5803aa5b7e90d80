#pragma once

#include <cstdarg>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace dialwright {

/// Formats what nearly every message is made of, text and plain %d, %s, %ls, %zu and %%, without the C runtime, which
/// takes four times as long. The very bytes that FormatByRuntime makes, or nothing: for any other sequence, text
/// in the format that is not ASCII, wide text with surrogates, and what does not fit into the area.
[[nodiscard]] std::optional<std::string_view> FormatPlain(std::span<char> area, const char* format,
                                                          std::va_list arguments) noexcept;

}  // namespace dialwright
