#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "platform/critical_section.h"
#include "platform/windows.h"
#include "trace/fixed_text.h"
#include "trace/memory_log.h"
#include "trace/settings_word.h"
#include "trace/trace_stream.h"
#include "trace/watcher_thread.h"

namespace dialwright {

/// The write buffer is written out when more than kWriteOutAbove bytes wait in it, and a line is far shorter than the
/// rest.
inline constexpr std::size_t kWriteBufferBytes = 131072;
inline constexpr std::size_t kWriteOutAbove = 98304;

/// All that the process-wide logger knows. The members without a lock of their own are guarded by `lock`, which exists
/// only while the logger is started; the atomic ones may be read without it.
struct LoggerState {
    std::atomic<bool> started = false;
    std::atomic<bool> stopping = false;
    std::atomic<std::uint64_t> settings = 0;
    /// Calls of the line writer that are under way. The lock is not deleted under them.
    std::atomic<int> linesUnderWay = 0;
    /// The performance counter at the last line.
    std::atomic<std::int64_t> lastLine = 0;

    CriticalSection lock;
    bool lockIsThere = false;

    std::uint64_t sizeLimitMiB = 0;
    FixedText<32> loggerName;
    /// Whether the name was to be shown when the logger was started.
    bool nameIsShown = false;
    TracePath settingsKey;
    TracePath directory;
    TracePath fileName;
    TraceStream main;
    TraceStream error;

    /// Text that waits for the main file. The byte behind it is always zero: the echo reads up to a zero byte.
    std::array<char, kWriteBufferBytes + 1> writeBuffer{};
    std::atomic<std::size_t> used = 0;

    TraceMemLog* memoryLog = nullptr;
    std::int64_t counterFrequency = 1;
    SYSTEMTIME startTime{};
    WatcherThread watcher;
};

/// The one instance.
[[nodiscard]] LoggerState& Logger() noexcept;

/// Sets bit 0x1 of the settings word, so that a line of the logger's own is written whatever the word says, and puts
/// the word back.
class ForceInfoLevel {
public:
    explicit ForceInfoLevel(LoggerState& state) noexcept;
    ~ForceInfoLevel();
    ForceInfoLevel(const ForceInfoLevel&) = delete;
    ForceInfoLevel& operator=(const ForceInfoLevel&) = delete;

private:
    LoggerState& logger;
    std::uint64_t before;
};

}  // namespace dialwright
