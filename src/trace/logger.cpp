#include "trace/logger.h"

#include <array>
#include <cstring>
#include <mutex>

#include "trace/clock.h"
#include "trace/crash_dump.h"
#include "trace/logger_state.h"
#include "trace/message_text.h"
#include "trace/own_lines.h"
#include "trace/settings_key.h"
#include "trace/trace.h"
#include "trace/trace_directory.h"
#include "trace/trace_files.h"
#include "trace/watcher.h"

namespace dialwright {
namespace {

constexpr DWORD kLastLinesMs = 100;
// The thread that crashes may hold what the watcher waits for.
constexpr DWORD kCrashPatienceMs = 2000;

enum class StopReason : std::uint8_t { Asked, Crash };

bool IsPlainFileName(const char* name) {
    return name != nullptr && *name != '\0' && std::strchr(name, '\\') == nullptr;
}

/// What a logger before this one has left goes: the wrong file would be written.
void ForgetFiles(LoggerState& logger) {
    CloseTraceStreams(logger);
    for (TraceStream* const stream : {&logger.main, &logger.error}) {
        stream->current.Clear();
        stream->first.Clear();
        stream->second.Clear();
    }
}

void Name(LoggerState& logger, const TracePath& directory, const char* fileName, const char* loggerName) {
    // At most 31 characters, which the type sees to, as with the paths.
    logger.loggerName.Assign(loggerName);
    logger.nameIsShown = (logger.settings & TRACE_NO_NAME) == 0;
    logger.directory = directory;
    logger.fileName.Assign(fileName != nullptr ? fileName : "");
}

void BeginWatching(LoggerState& logger) {
    if (!logger.lockIsThere) logger.lock.Initialize();
    logger.lockIsThere = true;
    LARGE_INTEGER frequency{};
    ::QueryPerformanceFrequency(&frequency);
    logger.counterFrequency = frequency.QuadPart;
    logger.started = true;
    logger.watcher.Start(&TraceWatcher);
    if ((logger.settings & TRACE_CRASH_DUMP) != 0) InstallCrashFilter();
    if ((logger.settings & TRACE_MEMORY) != 0) logger.memoryLog = AllocateMemoryLog();
}

/// Whether the files may stay, by the settings key if there is one.
bool KeepsFiles(const LoggerState& logger, std::uint64_t settings) {
    const StoredSettings stored = ReadSettingsKey(logger.settingsKey.CStr());
    return (stored.flag.value_or(settings) & TRACE_FILE) != 0;
}

void DropMemoryLog(LoggerState& logger) {
    FreeMemoryLog(logger.memoryLog);
    logger.memoryLog = nullptr;
}

void WriteLastLines(LoggerState& logger, StopReason reason) {
    const std::lock_guard lock(logger.lock);
    const std::uint64_t settings = logger.settings;
    {
        const ForceInfoLevel forced(logger);
        WriteStoppedLine();
        TraceFlush(logger);
        if (!logger.settingsKey.Empty() && !KeepsFiles(logger, settings)) DeleteTraceFiles(logger);
        if (reason == StopReason::Asked) DropMemoryLog(logger);
    }
    logger.main.current.Clear();
    logger.settings = 0;
    logger.settingsKey.Clear();
    logger.loggerName.Clear();
    logger.nameIsShown = false;
}

void Stop(StopReason reason) {
    LoggerState& logger = Logger();
    // Two threads may crash at once.
    if (logger.stopping.exchange(true)) return;
    if (!logger.started) {
        logger.stopping = false;
        return;
    }
    WriteLastLines(logger, reason);
    if (reason == StopReason::Asked) {
        logger.watcher.Stop();
    } else {
        logger.watcher.StopWithin(kCrashPatienceMs);
    }
    logger.started = false;
    // A line that is past the flag gets the time to end; one that is later than that keeps the lock alive.
    ::Sleep(kLastLinesMs);
    if (logger.linesUnderWay == 0) {
        logger.lock.Delete();
        logger.lockIsThere = false;
    }
    logger.stopping = false;
}

}  // namespace

int TraceStart(const char* directory, const char* fileName, const char* loggerName) noexcept {
    LoggerState& logger = Logger();
    const TracePath composed = ComposeTraceDirectory(directory);
    FindPreciseClock();
    if (!composed.View().ends_with('\\')) {
        ::SetLastError(ERROR_NOT_READY);
        return 0;
    }
    if (logger.started) {
        ::SetLastError(ERROR_ALREADY_EXISTS);
        return 1;
    }
    if (loggerName == nullptr || *loggerName == '\0') {
        ::SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    ::GetLocalTime(&logger.startTime);
    logger.sizeLimitMiB = kSizeLimitAtStart;
    logger.settings = kSettingsAtStart;
    ForgetFiles(logger);
    Name(logger, composed, fileName, loggerName);
    if (IsPlainFileName(fileName) && !BuildFileNames(logger, logger.sizeLimitMiB)) return 0;
    BeginWatching(logger);
    if ((logger.settings & LOG_INFO) != 0) WriteHeaderLine(logger);
    return 1;
}

void TraceStop() noexcept { Stop(StopReason::Asked); }

void TraceStopForDump() noexcept { Stop(StopReason::Crash); }

void ReleaseTrace() noexcept {
    CloseTraceStreams(Logger());
    DropMemoryLog(Logger());
    RemoveOwnCrashFilter();
    FreeMessageLocale();
}

void SetTraceSettingsKey(const char* keyPath) noexcept {
    LoggerState& logger = Logger();
    if (!logger.started) return;
    const std::lock_guard lock(logger.lock);
    logger.settingsKey.Assign(keyPath);
}

}  // namespace dialwright
