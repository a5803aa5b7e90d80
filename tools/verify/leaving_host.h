#pragma once

#include <string_view>

#include "verify/setting.h"

namespace dialwright::verify {

inline constexpr int kLeavingCode = 7;
inline constexpr int kLeavingThreads = 4;

/// Logs from several threads without pause, and leaves the process meanwhile: ExitProcess, TerminateProcess, or by
/// returning, the value then being main's.
int LogAndLeave(const Setting& setting, std::string_view way);

/// Logs one error and crashes.
[[noreturn]] void LogAndCrash(const Setting& setting);

}  // namespace dialwright::verify
