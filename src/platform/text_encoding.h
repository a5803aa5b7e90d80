#pragma once

#include <cstddef>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>

namespace dialwright {

/// The text in UTF-8; a lone surrogate becomes U+FFFD. Throws only std::bad_alloc.
[[nodiscard]] std::string ToUtf8(std::wstring_view text);

/// The same in memory from `memory`.
[[nodiscard]] std::string_view ToUtf8(std::pmr::monotonic_buffer_resource& memory, std::wstring_view text);

/// The same into an area of the caller's. Returns the bytes written, 0 when they do not fit.
[[nodiscard]] std::size_t ToUtf8(std::wstring_view text, std::span<char> area) noexcept;

}  // namespace dialwright
