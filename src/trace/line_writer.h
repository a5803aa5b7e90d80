#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "trace/format_arg.h"

namespace dialwright {

/// The word that enables levels and sinks; 0 while the logger is stopped.
[[nodiscard]] std::uint64_t TraceSettings() noexcept;

/// Writes one line to the sinks of the trace. `data`, which may be null, is dumped behind it. The format is not the C
/// runtime's but that of InterpretFormat. Writes nothing while the logger is stopped. From any thread; never throws.
void WriteTraceLine(const void* data, std::size_t dataLength, int sourceLine, const char* levelText, const char* format,
                    FormatArgs arguments) noexcept;

/// The same with the arguments as they are: each goes on with its type, and all of them counted.
template <class... Arguments>
void TraceLine(const void* data, std::size_t dataLength, int sourceLine, const char* levelText, const char* format,
               const Arguments&... arguments) noexcept {
    const std::array<FormatArg, sizeof...(Arguments)> packed{FormatArg(arguments)...};
    WriteTraceLine(data, dataLength, sourceLine, levelText, format, FormatArgs(packed));
}

}  // namespace dialwright
