#pragma once

#include "platform/windows.h"

namespace dialwright {

/// The process's filter for unhandled exceptions while the settings want dumps: notes the host in the trace, stops the
/// logger and writes a dump of the whole memory beside the host program. Always lets the crash go on.
LONG WINAPI TraceCrashFilter(EXCEPTION_POINTERS* info) noexcept;

/// Another filter that was installed is neither called nor kept.
void InstallCrashFilter() noexcept;

/// Removes whatever filter is installed.
void RemoveAnyCrashFilter() noexcept;

/// Removes the filter if it is TraceCrashFilter.
void RemoveOwnCrashFilter() noexcept;

}  // namespace dialwright
