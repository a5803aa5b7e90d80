#include <algorithm>

#include "platform/narrow_path.h"
#include "trace/clock.h"
#include "trace/logger.h"
#include "trace/logger_state.h"
#include "trace/own_lines.h"

namespace dialwright {
namespace {

HANDLE Open(const WidePath& path) {
    const HANDLE file = ::CreateFileW(path.data(), GENERIC_WRITE | FILE_READ_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file == INVALID_HANDLE_VALUE ? nullptr : file;
}

/// One by one with the platform's own call, as the usual way leads through another library.
void CreateFolders(WidePath path) {
    for (wchar_t& unit : path) {
        if (unit != L'\\') continue;
        unit = L'\0';
        ::CreateDirectoryW(path.data(), nullptr);
        unit = L'\\';
    }
}

/// The main file, where it is not open yet.
HANDLE OpenMainFile(const LoggerState& logger) {
    const WidePath path = WidenPath(logger.main.current.CStr());
    if (path[0] == L'\0') return nullptr;
    if (const HANDLE file = Open(path)) return file;
    CreateFolders(path);
    return Open(path);
}

std::uint64_t SizeOf(HANDLE file) {
    LARGE_INTEGER size{};
    return ::GetFileSizeEx(file, &size) ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

/// Writes at a place of its own, and returns the place behind it.
std::uint64_t WriteAt(HANDLE file, std::uint64_t place, std::string_view text) {
    OVERLAPPED at{};
    at.Offset = static_cast<DWORD>(place);
    at.OffsetHigh = static_cast<DWORD>(place >> 32U);
    DWORD written = 0;
    ::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, &at);
    return place + written;
}

void WriteStopped(const LoggerState& logger, HANDLE file, std::uint64_t place) {
    if ((logger.settings & kAllSinks) == 0) return;
    LineArea area;
    SecondText second;
    place = WriteAt(file, place, BuildLine(area, logger, NowAtExit(second), kStoppedLine, FormatArgs({})));
    WriteAt(file, place, "\r\n");
}

/// A thread that was writing the buffer out when it was ended has put none, some or all of it at `begin`. The same
/// bytes at the same place once more make it whole. With an empty buffer the file ends where it ends.
void WriteOut(const LoggerState& logger, HANDLE file, std::uint64_t begin) {
    const std::size_t waiting = (std::min)(logger.used.load(), kWriteBufferBytes);
    const std::uint64_t end = waiting == 0 ? SizeOf(file) : WriteAt(file, begin, {logger.writeBuffer.data(), waiting});
    WriteStopped(logger, file, end);
}

/// A lock that one of the ended threads held stays locked for ever. What it guards is then used as it was left; a
/// thread whose end has been ordered gets a moment to leave the system call that it may be in.
void TakeLockIfItCanBeHad(LoggerState& logger) {
    constexpr DWORD kLastSystemCallMs = 10;
    if (logger.lock.try_lock()) return;
    ::Sleep(kLastSystemCallMs);
    (void)logger.lock.try_lock();
}

}  // namespace

void TraceStopAtExit() noexcept {
    LoggerState& logger = Logger();
    if (!logger.started) return;
    TakeLockIfItCanBeHad(logger);
    if (logger.used == 0 && (logger.settings & kAllSinks) == 0) return;
    if (const HANDLE open = logger.main.handle) {
        WriteOut(logger, open, logger.main.size);
    } else if (const HANDLE opened = OpenMainFile(logger)) {
        WriteOut(logger, opened, SizeOf(opened));
        ::CloseHandle(opened);
    }
    logger.started = false;
}

}  // namespace dialwright
