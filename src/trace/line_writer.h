#pragma once

#include <cstddef>
#include <cstdint>

namespace dialwright {

/// The word that enables levels, one bit each at the values of LogLevel.
[[nodiscard]] std::uint64_t TraceSettings() noexcept;

/// Hands a finished line on to the sinks of the trace. A logger that was not started has none, and nothing in
/// this version starts it: the line then reaches only the standard-output copy of TraceLog.
void TraceLine(const void* data, std::size_t dataLength, int sourceLine, const char* levelText, const char* format,
               ...) noexcept;

}  // namespace dialwright
