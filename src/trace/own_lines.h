#pragma once

#include "trace/line_builder.h"
#include "trace/logger_state.h"

namespace dialwright {

inline constexpr LineSource kStoppedLine = {.sourceLine = 1418, .levelText = "   info", .format = "trace stopped"};

// The logger's own lines, whose formats readers of the files know. None checks whether the level is enabled.

void WriteHeaderLine(const LoggerState& logger) noexcept;
void WriteSettingChangedLine(const LoggerState& logger) noexcept;
void WriteStoppedLine() noexcept;
void WriteCrashLine(const char* hostPath) noexcept;

}  // namespace dialwright
