#pragma once

#include <cstdint>
#include <string_view>

#include "trace/bounded_text.h"
#include "trace/time_stamp.h"

namespace dialwright {

/// Room for every prefix.
inline constexpr std::size_t kMostPrefixBytes = 256;

struct LinePrefix {
    std::uint64_t settings = 0;
    TimeStamp time;
    unsigned long processId = 0;
    unsigned long threadId = 0;
    /// Empty when the logger was started without a name field.
    std::string_view loggerName;
    int sourceLine = 0;
    std::string_view levelText;
};

/// "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  40    info] ", less what the settings leave out.
void PutPrefix(BoundedText& target, const LinePrefix& prefix) noexcept;

}  // namespace dialwright
