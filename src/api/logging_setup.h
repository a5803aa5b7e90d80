#pragma once

#include <string_view>

#include "trace/fixed_text.h"

namespace dialwright {

/// "host.exe_1_Dialwright.log" for C:\Apps\host.exe in session 1.
[[nodiscard]] TracePath LogFileName(std::string_view hostPath, unsigned long session) noexcept;

/// Starts the logger, with its files named after the host and its session. False when the host's path or session
/// cannot be had; a logger that does not start is no failure.
[[nodiscard]] bool ConfigureLogging() noexcept;

}  // namespace dialwright
