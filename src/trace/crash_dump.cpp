#include "trace/crash_dump.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <cstring>

#include "trace/logger.h"
#include "trace/logger_state.h"
#include "trace/own_lines.h"
#include "trace/trace.h"

#include <dbghelp.h>

namespace dialwright {
namespace {

std::atomic<bool> installedOurs = false;

using Path = std::array<char, 260>;

constexpr auto kDumpType = static_cast<MINIDUMP_TYPE>(
    MiniDumpWithFullMemory | MiniDumpWithHandleData | MiniDumpFilterMemory | MiniDumpScanMemory |
    MiniDumpWithUnloadedModules | MiniDumpWithIndirectlyReferencedMemory | MiniDumpFilterModulePaths |
    MiniDumpWithProcessThreadData | MiniDumpWithPrivateReadWriteMemory);
static_assert(kDumpType == 0x3FE);

/// "C:\Apps\host.exe [4312.8876] 2025-09-08 14.05.23.dmp", cut to 259 characters.
Path DumpPath(const char* folder, const char* program) {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    Path path{};
    std::snprintf(path.data(), path.size(), "%s\\%s [%lu.%lu] %04d-%02d-%02d %02d.%02d.%02d.dmp", folder, program,
                  ::GetCurrentProcessId(), ::GetCurrentThreadId(), now.wYear, now.wMonth, now.wDay, now.wHour,
                  now.wMinute, now.wSecond);
    return path;
}

void WriteDump(const Path& path, EXCEPTION_POINTERS* info) {
    // The handle goes on as it comes: the dump of a file that cannot be made fails by itself.
    const HANDLE file = ::CreateFileA(path.data(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, CREATE_ALWAYS, 0, nullptr);
    MINIDUMP_EXCEPTION_INFORMATION exception{
        .ThreadId = ::GetCurrentThreadId(), .ExceptionPointers = info, .ClientPointers = TRUE};
    ::MiniDumpWriteDump(::GetCurrentProcess(), ::GetCurrentProcessId(), file, kDumpType, &exception, nullptr, nullptr);
    ::CloseHandle(file);
}

}  // namespace

LONG WINAPI TraceCrashFilter(EXCEPTION_POINTERS* info) noexcept {
    Path host{};
    if (::GetModuleFileNameA(nullptr, host.data(), static_cast<DWORD>(host.size())) == 0) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    host.back() = '\0';
    if ((Logger().settings & LOG_INFO) != 0) WriteCrashLine(host.data());
    TraceStopForDump();
    char* const lastBackslash = std::strrchr(host.data(), '\\');
    if (lastBackslash == nullptr) return EXCEPTION_CONTINUE_SEARCH;
    *lastBackslash = '\0';
    WriteDump(DumpPath(host.data(), lastBackslash + 1), info);
    return EXCEPTION_CONTINUE_SEARCH;
}

void InstallCrashFilter() noexcept {
    ::SetUnhandledExceptionFilter(&TraceCrashFilter);
    installedOurs = true;
}

void RemoveAnyCrashFilter() noexcept {
    ::SetUnhandledExceptionFilter(nullptr);
    installedOurs = false;
}

void RemoveOwnCrashFilter() noexcept {
    if (!installedOurs.exchange(false)) return;
    const auto installed = ::SetUnhandledExceptionFilter(nullptr);
    if (installed != &TraceCrashFilter) ::SetUnhandledExceptionFilter(installed);
}

}  // namespace dialwright
