#pragma once

#include <cstdint>

#include "platform/windows.h"
#include "trace/fixed_text.h"
#include "trace/time_stamp.h"

namespace dialwright {

/// Looks the precise system clock up. Without it the plain one is read. Not for the watcher's thread.
void FindPreciseClock() noexcept;

/// The time now, in the C runtime's zone, its text borrowed until this thread asks again. Reads the zone anew when ten
/// seconds have passed since that was last done.
[[nodiscard]] TimeStamp Now() noexcept;

/// The time now without the C runtime, whose locks a thread may have held that the end of the process has ended: by the
/// distance to UTC that Now last saw. The text is put into `text`.
[[nodiscard]] TimeStamp NowAtExit(SecondText& text) noexcept;

/// The C runtime's name of the standard zone, at most 255 characters, after reading the zone anew.
[[nodiscard]] FixedText<256> RefreshedZoneName() noexcept;

[[nodiscard]] std::int64_t PerformanceCounter() noexcept;
[[nodiscard]] unsigned long SecondsSinceSystemStart() noexcept;

}  // namespace dialwright
