// A host without a manifest, as an ordinary program is: carries one line out and prints what became of itself. Its own
// lines begin with "plain "; the others are the library's.

#include <array>
#include <cstdio>
#include <cstdlib>

#include "platform/windows.h"

#include <dialwright/dialwright_loader.h>
#include <shellapi.h>
#include <shellscalingapi.h>

namespace {

void PrintAwareness(const char* when) {
    PROCESS_DPI_AWARENESS awareness = PROCESS_DPI_UNAWARE;
    if (FAILED(::GetProcessDpiAwareness(nullptr, &awareness))) return;
    std::printf("plain awareness %s %d\n", when, static_cast<int>(awareness));
}

void PrintRectangle(HWND window) {
    RECT rect{};
    if (!::GetWindowRect(window, &rect)) return;
    std::printf("plain rectangle %ld,%ld,%ld,%ld\n", rect.left, rect.top, rect.right, rect.bottom);
}

int CarryOut(const wchar_t* path, const wchar_t* line, HWND window) {
    DialwrightLibrary library{};
    std::array<wchar_t, DIALWRIGHT_LOADER_MESSAGE_UNITS> why{};
    if (::DialwrightLoad(&library, path, why.data(), why.size()) == 0) {
        std::fprintf(stderr, "plain error %ls\n", why.data());
        return 3;
    }
    PrintAwareness("before");
    std::printf("plain result %d\n", library.executeCommand(line));
    PrintAwareness("after");
    PrintRectangle(window);
    std::printf("plain codepage %u\n", ::GetACP());
    ::DialwrightFree(&library);
    return 0;
}

}  // namespace

int main() {
    int count = 0;
    wchar_t** const values = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (count != 4) {
        std::fprintf(stderr, "usage: dialwright-verify-plain LIBRARY LINE WINDOW\n");
        return 2;
    }
    return CarryOut(values[1], values[2], reinterpret_cast<HWND>(std::wcstoull(values[3], nullptr, 10)));
}
