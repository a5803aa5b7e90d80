#pragma once

#include <chrono>
#include <cstdint>

#include "platform/windows.h"

namespace dialwright {

inline constexpr DWORD kPollIntervalMs = 100;

/// Whole milliseconds since then, truncated toward zero.
[[nodiscard]] inline std::int64_t ElapsedMs(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - since).count();
}

inline void SleepForPollInterval() { ::Sleep(kPollIntervalMs); }

}  // namespace dialwright
