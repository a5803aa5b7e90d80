#pragma once

#include <cstddef>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>

namespace dialwright {

/// The text in UTF-8, in memory from `memory`; a lone surrogate becomes U+FFFD. Throws only std::bad_alloc.
[[nodiscard]] std::pmr::string ToUtf8(std::pmr::memory_resource* memory, std::wstring_view text);

/// The same in memory from the heap.
[[nodiscard]] std::string ToUtf8(std::wstring_view text);

/// The same into an area of the caller's. Returns the bytes written, 0 when they do not fit.
[[nodiscard]] std::size_t ToUtf8(std::wstring_view text, std::span<char> area) noexcept;

}  // namespace dialwright
