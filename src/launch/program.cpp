#include "launch/program.h"

#include <string>

#include "platform/windows.h"
#include "trace/trace.h"

namespace dialwright {

bool Program::Launch(const wchar_t* programPath, const wchar_t* arguments, unsigned long* processId) {
    const std::wstring path = programPath;
    // Kept on purpose: the path is not quoted, so that one with blanks is split by the platform's rules unless the
    // caller quotes it; and the blank stands even before empty arguments.
    std::wstring commandLine = path + L" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                          &started)) {
        TraceLog("Program::Launch", LOG_ERROR, "Error: Failed to launch program \"%ls\"", path.c_str());
        return false;
    }
    ::CloseHandle(started.hProcess);
    ::CloseHandle(started.hThread);
    if (processId != nullptr) *processId = started.dwProcessId;
    return true;
}

}  // namespace dialwright
