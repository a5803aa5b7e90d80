#pragma once

#include <cstddef>
#include <span>

#include "trace/bounded_text.h"

namespace dialwright {

inline constexpr std::size_t kDumpRowBytes = 16;
/// Offset, bytes, characters, and the end of line.
inline constexpr std::size_t kDumpRowLength = 8 + 2 + kDumpRowBytes * 3 + 2 + kDumpRowBytes + 2;

/// One row of a dumped block: at most 16 bytes and the offset of the first of them.
void PutDumpRow(BoundedText& target, std::size_t offset, std::span<const unsigned char> bytes) noexcept;

}  // namespace dialwright
