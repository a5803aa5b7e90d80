// A host that crashes on purpose, with the logger of the library built in. Its trace lies beside it.

#include <cstdio>
#include <string>

#include "platform/windows.h"
#include "trace/logger.h"
#include "trace/trace.h"

namespace {

DWORD WINAPI Crash(LPVOID) {
    ::RaiseException(EXCEPTION_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    return 0;
}

}  // namespace

int main(int count, char** values) {
    const std::string where = count == 3 ? values[2] : "";
    if (where != "main" && where != "thread") {
        std::fprintf(stderr, "usage: crash_host SETTINGS-KEY main|thread\n");
        return 2;
    }
    std::fclose(stdout);
    dialwright::TraceStart("", "crash.log", "Dialwright");
    dialwright::SetTraceSettingsKey(values[1]);
    dialwright::PollTraceSettings();
    for (int line = 1; line <= 2000; ++line) dialwright::TraceLog("Crash", dialwright::LOG_INFO, "line %d", line);
    if (where != "thread") return static_cast<int>(Crash(nullptr));
    const HANDLE thread = ::CreateThread(nullptr, 0, &Crash, nullptr, 0, nullptr);
    // The crash ends the process. Should it end the thread alone, the exit code says so.
    ::WaitForSingleObject(thread, INFINITE);
    return 4;
}
