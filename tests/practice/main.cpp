// A small program to practise on: one window with every kind of control, which tells on standard output what its
// controls receive. The tests drive it; a person can look at it and try commands on it.

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "commands.h"
#include "layout.h"
#include "recorder.h"

#include <shellapi.h>

namespace {

constexpr const char* kHelp =
    "usage: practice_target [OPTIONS]\n"
    "\n"
    "Shows a window with every kind of control and prints the messages that they receive.\n"
    "\n"
    "  --class NAME     #32770 (the default) makes a dialog, any other name a plain window class\n"
    "  --title TEXT     the window's title (default: Dialwright practice)\n"
    "  --hidden         does not show the window\n"
    "  --refuse-close   stays open when asked to close\n"
    "  --commands       takes commands on standard input and ends with it\n"
    "  --help           prints this\n";

struct CommandLine {
    practice::TargetOptions target;
    bool commands = false;
    bool help = false;
};

std::vector<std::wstring> Arguments() {
    int count = 0;
    wchar_t** values = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::wstring> arguments(values + 1, values + count);
    ::LocalFree(static_cast<void*>(values));
    return arguments;
}

std::optional<CommandLine> ReadArguments(const std::vector<std::wstring>& arguments) {
    CommandLine line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool hasValue = i + 1 < arguments.size();
        if (arguments[i] == L"--class" && hasValue) {
            line.target.windowClass = arguments[++i];
        } else if (arguments[i] == L"--title" && hasValue) {
            line.target.title = arguments[++i];
        } else if (arguments[i] == L"--hidden") {
            line.target.hidden = true;
        } else if (arguments[i] == L"--refuse-close") {
            line.target.refuseClose = true;
        } else if (arguments[i] == L"--commands") {
            line.commands = true;
        } else if (arguments[i] == L"--help") {
            line.help = true;
        } else {
            return std::nullopt;
        }
    }
    return line;
}

/// Runs until the window is closed or the commands end.
void Pump(HWND window) {
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        practice::DispatchPosted(message, window);
        if (!::IsWindow(window)) return;
    }
}

}  // namespace

int main() {
    const auto line = ReadArguments(Arguments());
    if (!line || line->help) {
        std::fputs(kHelp, line ? stdout : stderr);
        return line ? 0 : 2;
    }
    const HWND window = practice::CreateTarget(line->target);
    if (window == nullptr) {
        std::fputs("practice_target: the window cannot be made\n", stderr);
        return 3;
    }
    if (line->commands) practice::TakeCommands(window);
    practice::Print("ready " + std::to_string(reinterpret_cast<std::uintptr_t>(window)));
    Pump(window);
    // The reader may still wait for input: end without waiting for it.
    std::fflush(stdout);
    ::ExitProcess(0);
}
