#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "trace/logger_state.h"

namespace dialwright {

// All of these want the logger's lock held.

/// Composes the six paths from the logger's directory and file name, and chooses among the numbered ones when there is
/// a size limit (in MiB); the choice closes the main stream. False, with last error 21 or 87, when directory or file
/// name are not usable.
bool BuildFileNames(LoggerState& logger, std::uint64_t sizeLimitMiB) noexcept;

/// Writes the buffered lines out when `end`, a position in the write buffer, lies above the mark. Lines that cannot be
/// written are dropped.
void TraceFlush(LoggerState& logger, std::size_t end) noexcept;

/// Writes whatever is buffered.
void TraceFlush(LoggerState& logger) noexcept;

/// Writes one line, without its end of line, to the error file at once; drops it when that file cannot be opened.
void AppendToErrorFile(LoggerState& logger, std::string_view line) noexcept;

/// Deletes the main file, and the pair and the error file that are chosen when the names are built anew for it. A file
/// that is open stays.
void DeleteTraceFiles(LoggerState& logger) noexcept;

void CloseTraceStreams(LoggerState& logger) noexcept;

}  // namespace dialwright
