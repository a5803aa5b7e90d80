// Looks like the practice target, and stops answering as soon as somebody sends its field a character.
// Nothing but the system ends it.

#include <cstdint>
#include <cstdio>

#include "platform/windows.h"

#include <shellapi.h>

namespace {

LRESULT CALLBACK Hang(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CHAR) ::Sleep(INFINITE);
    return ::DefWindowProcW(window, message, wParam, lParam);
}

/// Answers a mark as the practice target does.
DWORD WINAPI Answer(LPVOID) {
    for (int c = std::fgetc(stdin); c != EOF; c = std::fgetc(stdin)) {
        std::fputc(c, stdout);
        if (c == '\n') std::fflush(stdout);
    }
    return 0;
}

}  // namespace

int main() {
    constexpr int kField = 12;
    int count = 0;
    wchar_t** const values = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    const HINSTANCE own = ::GetModuleHandleW(nullptr);
    WNDCLASSEXW field{};
    field.cbSize = sizeof field;
    field.lpfnWndProc = &Hang;
    field.hInstance = own;
    field.lpszClassName = L"HangingField";
    ::RegisterClassExW(&field);
    // The last argument is the title.
    const HWND window = ::CreateWindowExW(0, L"#32770", values[count - 1], WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40,
                                          300, 200, nullptr, nullptr, own, nullptr);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the identifier travels in the menu parameter
    ::CreateWindowExW(0, L"HangingField", L"", WS_CHILD | WS_VISIBLE, 10, 10, 100, 20, window,
                      reinterpret_cast<HMENU>(std::uintptr_t{kField}), own, nullptr);
    std::printf("ready %llu\n", static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(window)));
    std::fflush(stdout);
    ::CloseHandle(::CreateThread(nullptr, 0, &Answer, nullptr, 0, nullptr));
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
    return 0;
}
