#include "progress_line.h"

#include <cstdio>

#include "check/source_text.h"
#include "platform/text_encoding.h"
#include "platform/windows.h"

#include <io.h>

namespace dialwright::tools {
namespace {

constexpr std::chrono::milliseconds kPatience{500};
constexpr std::size_t kWidth = 70;

/// The terminal understands the sequence that wipes a line out.
bool TakesSequences() {
    const HANDLE console = ::GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return ::_isatty(::_fileno(stderr)) != 0 && ::GetConsoleMode(console, &mode) &&
           ::SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

}  // namespace

ProgressLine::ProgressLine() : isTerminal(TakesSequences()) {}

void ProgressLine::Show(const std::string& text, std::chrono::milliseconds waited) {
    if (!isTerminal || waited < kPatience) return;
    const auto tenths = waited.count() / 100;
    const std::string beginning = ToUtf8(Wide(text).substr(0, kWidth));
    std::fprintf(stderr, "\r\x1B[K%s  %lld.%lld s", beginning.c_str(), static_cast<long long>(tenths / 10),
                 static_cast<long long>(tenths % 10));
    std::fflush(stderr);
    isShown = true;
}

void ProgressLine::Wipe() {
    if (isShown) std::fputs("\r\x1B[K", stderr);
    isShown = false;
}

}  // namespace dialwright::tools
