#pragma once

#include <cstdint>
#include <ctime>

#include "trace/bounded_text.h"
#include "trace/fixed_text.h"

namespace dialwright {

/// What of a time stamp stays the same for a whole second: all before its fraction and all behind it.
struct SecondText {
    FixedText<32> date;
    FixedText<32> zone;
};

struct TimeStamp {
    /// Borrowed, as it is the same for many lines.
    const SecondText* second = nullptr;
    /// In units of 100 ns, below 10,000,000.
    std::uint32_t fraction = 0;
};

/// The C runtime's zone as the offset that is printed. Kept on purpose: the daylight flag says whether the zone has
/// daylight time at all, not whether it is in force, so such a zone shows its summer offset all year.
[[nodiscard]] constexpr long ZoneOffsetSeconds(long timezone, int daylight) noexcept {
    return timezone - 3600L * daylight;
}

/// Seconds since 1970 as date and time of day, by arithmetic alone.
[[nodiscard]] std::tm BreakDown(std::int64_t seconds) noexcept;

/// "[2025-09-08 14:05:23." and " UTC+02:00] ". A positive offset lies west of Greenwich.
[[nodiscard]] SecondText TextOfSecond(const std::tm& local, long zoneOffsetSeconds) noexcept;

}  // namespace dialwright
