#pragma once

#include <cstdint>

namespace dialwright {

/// The bits of the settings word. Its lowest four are the levels, at the values of LogLevel. A set bit enables a sink
/// or a behaviour, or switches off a field of the line prefix.
enum TraceSetting : std::uint64_t {
    TRACE_FILE = 0x100,
    TRACE_MEMORY = 0x200,
    TRACE_DEBUGGER = 0x400,
    TRACE_CONSOLE = 0x800,
    TRACE_NO_TIME = 0x10000,
    TRACE_NO_PID = 0x20000,
    TRACE_NO_TID = 0x40000,
    TRACE_NO_NAME = 0x80000,
    TRACE_NO_LINE = 0x100000,
    TRACE_NO_LEVEL = 0x200000,
    TRACE_NO_COLOR = 0x400000,
    TRACE_PID_IN_NAME = 0x1000000,
    TRACE_CRASH_DUMP = 0x10000000,
};

/// Without any of these nothing is written at all.
inline constexpr std::uint64_t kAllSinks = TRACE_FILE | TRACE_MEMORY | TRACE_DEBUGGER | TRACE_CONSOLE;

/// With all of these set, 0x800000 among them, which means nothing by itself, there is no tag field.
inline constexpr std::uint64_t kNoTagField = 0xFF0000;

/// All four levels, and trace files.
inline constexpr std::uint64_t kSettingsAtStart = 0x10F;
inline constexpr std::uint64_t kSizeLimitAtStart = 512;

}  // namespace dialwright
