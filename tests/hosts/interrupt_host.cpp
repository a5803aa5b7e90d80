// Starts a program in a console and interrupts it there, as somebody at the keyboard would: "interrupt_host COMMAND
// LINE" passes the program's output on, sends the console event for a line on standard input, and ends with its exit
// code.

#include <cstdio>
#include <string>

#include "platform/windows.h"

namespace {

/// What stands behind our own name.
std::wstring OwnArguments() {
    const std::wstring line = ::GetCommandLineW();
    const std::size_t end = line.find(line.starts_with(L'"') ? L'"' : L' ', 1);
    const std::size_t begin = end == std::wstring::npos ? end : line.find_first_not_of(L' ', end + 1);
    return begin == std::wstring::npos ? L"" : line.substr(begin);
}

}  // namespace

int main() {
    std::wstring commandLine = OwnArguments();
    if (commandLine.empty()) {
        std::fprintf(stderr, "usage: interrupt_host PROGRAM [ARGUMENTS]\n");
        return 2;
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = ::GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
    ::FreeConsole();
    if (!::AllocConsole()) return 3;
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                          &started)) {
        return 4;
    }
    if (std::fgetc(stdin) != EOF) {
        ::SetConsoleCtrlHandler(nullptr, TRUE);  // it goes to all in the console, so to us too
        ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    }
    ::WaitForSingleObject(started.hProcess, INFINITE);
    DWORD code = 0;
    ::GetExitCodeProcess(started.hProcess, &code);
    return static_cast<int>(code);
}
