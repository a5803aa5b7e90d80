#include "trace/trace_files.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/narrow_path.h"
#include "trace/build_timestamp.h"
#include "trace/clock.h"
#include "trace/file_names.h"
#include "trace/file_pair.h"

#include <sys/stat.h>

namespace dialwright {
namespace {

FileStatus StatusOf(const TracePath& path) {
    struct _stat64 status{};
    if (::_wstat64(WidenPath(path.CStr()).data(), &status) != 0) return {};
    return {.size = status.st_size, .modified = status.st_mtime};
}

void ChooseCurrent(TraceStream& stream, std::uint64_t sizeLimitMiB) {
    const PairChoice choice = ChooseFileOfPair(StatusOf(stream.first), StatusOf(stream.second), sizeLimitMiB);
    stream.current = choice.second ? stream.second : stream.first;
    if (choice.beginAnew) DeleteTraceFile(stream.current);
}

void WriteRotationLine(LoggerState& logger, TraceStream& stream) {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    // Kept on purpose: the number behind "memory:" is where the logger keeps the pointer, not the pointer.
    std::fprintf(stream.file,
                 "(Time Zone: %s) (%s, %lus) log rotated at %04d-%02d-%02d %02d:%02d:%02d.%03d type: 0x%x size: %d "
                 "memory: 0x%p\r\n",
                 RefreshedZoneName().CStr(), BuildTimestamp(), SecondsSinceSystemStart(), now.wYear, now.wMonth,
                 now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds,
                 static_cast<unsigned>(logger.settings.load()), static_cast<int>(logger.sizeLimitMiB),
                 static_cast<void*>(&logger.memoryLog));
    std::fflush(stream.file);
    ::_fseeki64(stream.file, 0, SEEK_END);
    stream.size = static_cast<std::uint64_t>(::_ftelli64(stream.file));
}

void TraceRotate(LoggerState& logger, TraceStream& stream) {
    SwitchToOtherFile(stream);
    const bool keepsFiles = (logger.settings & TRACE_FILE) != 0;
    if (keepsFiles && OpenStream(stream, false)) WriteRotationLine(logger, stream);
}

void RotateIfFull(LoggerState& logger, TraceStream& stream) {
    if (logger.sizeLimitMiB != 0 && stream.size >> 20U >= logger.sizeLimitMiB) TraceRotate(logger, stream);
}

bool EnsureOpen(TraceStream& stream) {
    if (stream.file != nullptr) return true;
    return !stream.current.Empty() && OpenStream(stream, true);
}

}  // namespace

bool BuildFileNames(LoggerState& logger, std::uint64_t sizeLimitMiB) noexcept {
    if (!logger.directory.View().ends_with('\\')) {
        ::SetLastError(ERROR_NOT_READY);
        return false;
    }
    if (logger.fileName.Empty() || logger.fileName.View().find('\\') != std::string_view::npos) {
        ::SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    FixedText<32> suffix;
    if ((logger.settings & TRACE_PID_IN_NAME) != 0) {
        std::array<char, 32> area;
        BoundedText text(area);
        text.Put("_pid_");
        text.PutNumber(::GetCurrentProcessId());
        suffix.Assign(text.View());
    }
    const TraceFileNames names = ComposeFileNames(logger.directory.View(), logger.fileName.View(), suffix.View());
    logger.main.first = names.first;
    logger.main.second = names.second;
    logger.error.first = names.firstError;
    logger.error.second = names.secondError;
    logger.main.current = names.main;
    logger.error.current = names.error;
    if (sizeLimitMiB != 0) {
        CloseStream(logger.main);
        ChooseCurrent(logger.main, sizeLimitMiB);
        ChooseCurrent(logger.error, sizeLimitMiB);
    }
    return true;
}

void TraceFlush(LoggerState& logger, std::size_t end) noexcept {
    if (end > kWriteOutAbove) TraceFlush(logger);
}

void TraceFlush(LoggerState& logger) noexcept {
    const std::size_t waiting = logger.used;
    if (waiting == 0) return;
    if (!EnsureOpen(logger.main)) {
        logger.used = 0;
        return;
    }
    const std::uint64_t written = WriteStream(logger.main, {logger.writeBuffer.data(), waiting});
    // In this order: a process that ends in between finds nothing to write a second time.
    logger.used = 0;
    logger.main.size += written;
    RotateIfFull(logger, logger.main);
}

void AppendToErrorFile(LoggerState& logger, std::string_view line) noexcept {
    if (!EnsureOpen(logger.error)) return;
    auto* const block = static_cast<char*>(std::malloc(line.size() + 2));
    if (block == nullptr) {
        std::perror("Memory allocation error");
        return;
    }
    std::memcpy(block, line.data(), line.size());
    block[line.size()] = '\r';
    block[line.size() + 1] = '\n';
    logger.error.size += WriteStream(logger.error, {block, line.size() + 2});
    std::free(block);
    RotateIfFull(logger, logger.error);
}

void DeleteTraceFiles(LoggerState& logger) noexcept {
    if (BuildFileNames(logger, 0)) DeleteTraceFile(logger.main.current);
    if (!BuildFileNames(logger, 1)) return;
    DeleteTraceFile(logger.main.first);
    DeleteTraceFile(logger.main.second);
    DeleteTraceFile(logger.error.current);
}

void CloseTraceStreams(LoggerState& logger) noexcept {
    CloseStream(logger.main);
    CloseStream(logger.error);
}

}  // namespace dialwright
