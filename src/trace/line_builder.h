#pragma once

#include <array>
#include <string_view>

#include "trace/format_arg.h"
#include "trace/line_prefix.h"
#include "trace/logger_state.h"

namespace dialwright {

inline constexpr std::size_t kMessageBytes = 4096;

/// On the stack of whoever writes a line; it holds the longest one.
using LineArea = std::array<char, kMostPrefixBytes + kMessageBytes>;

struct LineSource {
    int sourceLine;
    const char* levelText;
    const char* format;
};

/// A line of the trace, prefix and message, without its end of line. A message that would reach 4,096 bytes is cut
/// after 4,092, which may split a character, and gets "...". Takes no lock.
[[nodiscard]] std::string_view BuildLine(LineArea& area, const LoggerState& logger, const TimeStamp& time,
                                         const LineSource& source, FormatArgs arguments) noexcept;

}  // namespace dialwright
