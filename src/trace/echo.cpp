#include "trace/echo.h"

#include <cstring>
#include <utility>

#include "platform/windows.h"
#include "trace/settings_word.h"
#include "trace/standard_output.h"

namespace dialwright {
namespace {

constexpr WORD kBrightGreen = 10;
constexpr WORD kBrightRed = 12;
constexpr WORD kYellow = 14;

/// Colours the console until it is destroyed. Does nothing where standard output is no console.
class ConsoleColor {
public:
    explicit ConsoleColor(WORD color) noexcept : console(::GetStdHandle(STD_OUTPUT_HANDLE)) {
        CONSOLE_SCREEN_BUFFER_INFO info{};
        isConsole = ::GetConsoleScreenBufferInfo(console, &info) != FALSE;
        before = info.wAttributes;
        if (isConsole) ::SetConsoleTextAttribute(console, color);
    }
    ~ConsoleColor() {
        if (isConsole) ::SetConsoleTextAttribute(console, before);
    }
    ConsoleColor(const ConsoleColor&) = delete;
    ConsoleColor& operator=(const ConsoleColor&) = delete;

private:
    HANDLE console;
    WORD before = 0;
    bool isConsole = false;
};

/// Kept on purpose: the level texts are right-aligned, so only "warning" begins with one of these letters, and errors
/// are printed in the default colour.
WORD ColorOf(const char* levelText) {
    switch (levelText[0]) {
        case 'd': return kBrightGreen;
        case 'e': return kBrightRed;
        case 'w': return kYellow;
        default: return 0;
    }
}

void Print(std::uint64_t settings, const char* text) {
    if ((settings & TRACE_CONSOLE) != 0) WriteStandardOutput(text);
    if ((settings & TRACE_DEBUGGER) != 0) ::OutputDebugStringA(text);
}

/// Behind the first end of line, or the end of the text.
char* EndOfFirstLine(char* text) {
    char* const end = std::strstr(text, "\r\n");
    return end != nullptr ? end + 2 : text + std::strlen(text);
}

}  // namespace

void EchoText(std::uint64_t settings, const char* levelText, bool continuation, char* text) noexcept {
    const WORD color = (settings & TRACE_NO_COLOR) == 0 && !continuation ? ColorOf(levelText) : 0;
    if (color == 0) return Print(settings, text);
    char* const rest = EndOfFirstLine(text);
    const char cut = std::exchange(*rest, '\0');
    {
        const ConsoleColor colored(color);
        Print(settings, text);
    }
    *rest = cut;
    if (*rest != '\0') Print(settings, rest);
}

}  // namespace dialwright
