#include "support/other_program.h"

#include "support/wait.h"

namespace dialwright::testing {
namespace {

struct Search {
    DWORD processId;
    const wchar_t* className;
    HWND found;
};

BOOL CALLBACK VisitWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    wchar_t name[64] = L"";
    ::GetClassNameW(window, name, 64);
    if (owner != search.processId || !::IsWindowVisible(window) || ::lstrcmpW(name, search.className) != 0) return TRUE;
    search.found = window;
    return FALSE;
}

}  // namespace

OtherProgram::OtherProgram(std::wstring commandLine)
    : turn(::CreateMutexW(nullptr, FALSE, L"DialwrightTestsOfOthers")) {
    ::WaitForSingleObject(turn, kPatienceMs);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                          &started)) {
        return;
    }
    ::CloseHandle(started.hThread);
    process = started.hProcess;
    processId = started.dwProcessId;
}

OtherProgram::~OtherProgram() {
    ::TerminateProcess(process, 99);
    ::WaitForSingleObject(process, kPatienceMs);
    ::CloseHandle(process);
    ::ReleaseMutex(turn);
    ::CloseHandle(turn);
}

bool OtherProgram::HasEnded() const { return ::WaitForSingleObject(process, kPatienceMs) == WAIT_OBJECT_0; }

HWND OtherProgram::WaitForWindow(const wchar_t* className) const {
    Search search{.processId = processId, .className = className, .found = nullptr};
    (void)WaitUntil([&] {
        ::EnumWindows(&VisitWindow, reinterpret_cast<LPARAM>(&search));
        return search.found != nullptr;
    });
    return search.found;
}

}  // namespace dialwright::testing
