#include "recorder.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <map>

#include "trace/trace.h"

namespace practice {
namespace {

struct NamedMessage {
    UINT message;
    const char* name;
};

constexpr std::array<NamedMessage, 12> kRecorded = {{
    {WM_CHAR, "WM_CHAR"},
    {WM_SETTEXT, "WM_SETTEXT"},
    {WM_COMMAND, "WM_COMMAND"},
    {WM_LBUTTONDOWN, "WM_LBUTTONDOWN"},
    {WM_LBUTTONUP, "WM_LBUTTONUP"},
    {WM_CLOSE, "WM_CLOSE"},
    {BM_CLICK, "BM_CLICK"},
    {BM_SETCHECK, "BM_SETCHECK"},
    {BM_GETCHECK, "BM_GETCHECK"},
    {CB_GETCOUNT, "CB_GETCOUNT"},
    {CB_SETCURSEL, "CB_SETCURSEL"},
    {CB_FINDSTRINGEXACT, "CB_FINDSTRINGEXACT"},
}};

std::map<HWND, WNDPROC>& Originals() {
    static std::map<HWND, WNDPROC> originals;
    return originals;
}

const MSG* pumped = nullptr;
int depth = 0;

const char* NameOf(UINT message) {
    for (const NamedMessage& row : kRecorded) {
        if (row.message == message) return row.name;
    }
    return nullptr;
}

std::string Text(const char* format, ...) DIALWRIGHT_PRINTF_FORMAT(1, 2);

std::string Text(const char* format, ...) {
    std::array<char, 128> buffer{};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    return buffer.data();
}

std::string Receiver(HWND hwnd) {
    const bool isChild = (::GetWindowLongPtrW(hwnd, GWL_STYLE) & WS_CHILD) != 0;
    return isChild ? std::to_string(::GetDlgCtrlID(hwnd)) : "window";
}

std::string Notification(WORD code, HWND control) {
    std::array<wchar_t, 32> className{};
    ::GetClassNameW(control, className.data(), static_cast<int>(className.size()));
    if (std::wstring(className.data()) == L"Edit") {
        if (code == EN_CHANGE) return "EN_CHANGE";
        if (code == EN_UPDATE) return "EN_UPDATE";
        if (code == EN_SETFOCUS) return "EN_SETFOCUS";
    }
    if (std::wstring(className.data()) == L"ComboBox" && code == CBN_SELCHANGE) return "CBN_SELCHANGE";
    if (std::wstring(className.data()) == L"Button" && code == BN_CLICKED) return "BN_CLICKED";
    return Text("0x%04X", code);
}

std::string Arguments(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CHAR: return Text(" U+%04X", static_cast<unsigned>(wParam));
        case WM_COMMAND:
            return Text(" %u ", LOWORD(wParam)) + Notification(HIWORD(wParam), reinterpret_cast<HWND>(lParam));
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
            return Text(" %d,%d keys %u", static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)),
                        static_cast<unsigned>(wParam));
        case BM_SETCHECK:
        case CB_SETCURSEL:
        case CB_FINDSTRINGEXACT: return Text(" %d", static_cast<int>(wParam));
        default: return {};
    }
}

const char* Origin(HWND hwnd, UINT message) {
    if (depth > 0) return "inner";
    return pumped != nullptr && pumped->hwnd == hwnd && pumped->message == message ? "posted" : "sent";
}

/// A message of another process that the list does not know is shown by number, so that nothing a client does to a
/// control goes unseen. Reading a text changes nothing.
bool IsForeign(HWND hwnd, UINT message) {
    const bool reads = message == WM_GETTEXT || message == WM_GETTEXTLENGTH || message == CB_GETCURSEL;
    return depth == 0 && !reads && Receiver(hwnd) != "window" && (::InSendMessageEx(nullptr) & ISMEX_SEND) != 0;
}

void PrintMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    const char* name = NameOf(message);
    if (name == nullptr && !IsForeign(hwnd, message)) return;
    const std::string shown = name != nullptr ? name : Text("0x%04X", message);
    Print(std::string(Origin(hwnd, message)) + " " + Receiver(hwnd) + " " + shown + Arguments(message, wParam, lParam));
}

LRESULT CALLBACK RecordingProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    PrintMessage(hwnd, message, wParam, lParam);
    const WNDPROC original = Originals()[hwnd];
    ++depth;
    const LRESULT result = ::CallWindowProcW(original, hwnd, message, wParam, lParam);
    --depth;
    if (message == WM_NCDESTROY) Originals().erase(hwnd);
    return result;
}

}  // namespace

void Print(const std::string& line) {
    const std::string whole = line + "\n";
    std::fwrite(whole.data(), 1, whole.size(), stdout);
    std::fflush(stdout);
}

void Record(HWND hwnd) {
    const auto original = ::GetWindowLongPtrW(hwnd, GWLP_WNDPROC);
    Originals()[hwnd] = reinterpret_cast<WNDPROC>(original);
    ::SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&RecordingProc));
}

void DispatchPosted(MSG& message, HWND dialog) {
    pumped = &message;
    if (dialog == nullptr || !::IsDialogMessageW(dialog, &message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    pumped = nullptr;
}

}  // namespace practice
