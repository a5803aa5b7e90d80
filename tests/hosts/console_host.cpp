// A host with a console of its own that has the logger echo lines to it. Prints, to the standard output that it was
// started with, the colour of each row's first character.

#include <cstdio>
#include <string>

#include "platform/windows.h"
#include "trace/line_writer.h"
#include "trace/logger.h"
#include "trace/logger_state.h"

namespace {

std::string ColorsOfRows(HANDLE console, SHORT rows) {
    std::string text;
    for (SHORT row = 0; row < rows; ++row) {
        WORD attribute = 0;
        DWORD read = 0;
        ::ReadConsoleOutputAttribute(console, &attribute, 1, {.X = 0, .Y = row}, &read);
        text += std::to_string(attribute) + " ";
    }
    return text;
}

}  // namespace

int main(int count, char** values) {
    if (count != 2) {
        std::fprintf(stderr, "usage: console_host FOLDER\\\n");
        return 2;
    }
    const HANDLE output = ::GetStdHandle(STD_OUTPUT_HANDLE);
    ::FreeConsole();
    if (!::AllocConsole() || std::freopen("CONOUT$", "w", stdout) == nullptr) return 3;
    const HANDLE console = ::CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                         nullptr, OPEN_EXISTING, 0, nullptr);
    ::SetStdHandle(STD_OUTPUT_HANDLE, console);
    ::SetConsoleTextAttribute(console, FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_BLUE);
    dialwright::TraceStart(values[1], "x.log", "Dialwright");
    dialwright::Logger().settings = dialwright::kSettingsAtStart | dialwright::TRACE_CONSOLE |
                                    dialwright::TRACE_NO_TIME | dialwright::TRACE_NO_PID | dialwright::TRACE_NO_TID;
    dialwright::Logger().writeBuffer.fill('\0');
    const char data[] = "dumped";
    dialwright::TraceLine(nullptr, 0, 40, "   info", "one");
    dialwright::TraceLine(nullptr, 0, 42, "warning", "two");
    dialwright::TraceLine(nullptr, 0, 43, "  error", "three");
    dialwright::TraceLine(data, sizeof data, 42, "warning", "four");
    dialwright::Logger().settings = dialwright::Logger().settings | dialwright::TRACE_NO_COLOR;
    dialwright::TraceLine(nullptr, 0, 42, "warning", "five");
    const std::string colors = ColorsOfRows(console, 6) + "\n";
    DWORD written = 0;
    ::WriteFile(output, colors.data(), static_cast<DWORD>(colors.size()), &written, nullptr);
    return 0;
}
