#include "trace/watcher.h"

#include <mutex>

#include "trace/clock.h"
#include "trace/crash_dump.h"
#include "trace/line_writer.h"
#include "trace/logger.h"
#include "trace/logger_state.h"
#include "trace/own_lines.h"
#include "trace/settings_key.h"
#include "trace/trace_files.h"

namespace dialwright {
namespace {

constexpr DWORD kWakeMs = 300;
constexpr std::int64_t kPauseMs = 100;
constexpr std::int64_t kPollSeconds = 11;

std::int64_t Milliseconds(const LoggerState& logger, std::int64_t counter) {
    return counter / logger.counterFrequency * 1000 +
           counter % logger.counterFrequency * 1000 / logger.counterFrequency;
}

void WriteOutAfterAPause(LoggerState& logger) {
    const std::int64_t now = Milliseconds(logger, PerformanceCounter());
    if (now <= Milliseconds(logger, logger.lastLine) + kPauseMs) return;
    const std::lock_guard lock(logger.lock);
    if (logger.started) TraceFlush(logger);  // which leaves nothing pending in the streams
}

TracePath SettingsKey(LoggerState& logger) {
    const std::lock_guard lock(logger.lock);
    return logger.settingsKey;
}

void ApplyFlag(LoggerState& logger, std::uint64_t flag) {
    logger.settings = flag;
    if ((flag & TRACE_FILE) == 0) DeleteTraceFiles(logger);
    if ((flag & TRACE_MEMORY) == 0) {
        FreeMemoryLog(logger.memoryLog);
        logger.memoryLog = nullptr;
    } else if (logger.memoryLog == nullptr) {
        logger.memoryLog = AllocateMemoryLog();
    }
    // Kept on purpose: whatever filter is installed goes, also the host's own.
    if ((flag & TRACE_CRASH_DUMP) != 0) {
        InstallCrashFilter();
    } else {
        RemoveAnyCrashFilter();
    }
}

}  // namespace

void PollTraceSettings() noexcept {
    LoggerState& logger = Logger();
    if (!logger.started) return;
    const TracePath key = SettingsKey(logger);
    if (key.Empty()) return;  // the root of all keys, which has no values, would switch all output off
    const StoredSettings stored = ReadSettingsKey(key.CStr());
    // A key or a value that is missing switches all output off.
    const std::uint64_t flag = stored.flag.value_or(0);
    const std::uint64_t size = stored.size.value_or(kSizeLimitAtStart);
    const std::lock_guard lock(logger.lock);
    // The logger may have been stopped while the key was read.
    if (logger.settingsKey.View() != key.View()) return;
    const bool flagChanged = flag != logger.settings;
    const bool sizeChanged = size != logger.sizeLimitMiB;
    if (!flagChanged && !sizeChanged) return;
    CloseTraceStreams(logger);
    if (flagChanged) ApplyFlag(logger, flag);
    if (sizeChanged) {
        logger.sizeLimitMiB = size;
        BuildFileNames(logger, size);
    }
    const ForceInfoLevel forced(logger);
    WriteSettingChangedLine(logger);
}

void TraceWatcher() noexcept {
    LoggerState& logger = Logger();
    std::int64_t lastPoll = PerformanceCounter();
    while (logger.watcher.SleepUnlessStopped(kWakeMs)) {
        WriteOutAfterAPause(logger);
        const std::int64_t now = PerformanceCounter();
        if ((now - lastPoll) / logger.counterFrequency < kPollSeconds || SettingsKey(logger).Empty()) continue;
        lastPoll = now;
        PollTraceSettings();
    }
}

}  // namespace dialwright
