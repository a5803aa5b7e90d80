#include "trace/trace.h"
#include "window/describe.h"
#include "window/window.h"

namespace dialwright {
namespace {

LPARAM PackPoint(int x, int y) { return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y)); }

/// Kept on purpose: sent to the parent of every control, so that of an edit control hears of the change once more.
/// Posted, so that a busy parent does not hold us up.
void NotifyParentOfChange(HWND control) {
    const HWND parent = ::GetParent(control);
    if (parent == nullptr) return;
    ::PostMessageW(parent, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(::GetDlgCtrlID(control)), EN_CHANGE),
                   reinterpret_cast<LPARAM>(control));
}

}  // namespace

void Window::SimulateMouseClick(HWND control) {
    constexpr const char* kTag = "Window::SimulateMouseClick";
    if (control == nullptr) {
        TraceLog(kTag, LOG_ERROR, "SimulateMouseClick - Null control handle");
        return;
    }
    RECT client{};
    if (!::GetClientRect(control, &client)) {
        const int error = static_cast<int>(::GetLastError());
        TraceLog(kTag, LOG_ERROR, "Failed to get control rect - Error: %d", error);
        return;
    }
    const int x = static_cast<int>((client.left + client.right) / 2);
    const int y = static_cast<int>((client.top + client.bottom) / 2);
    TraceLog(kTag, LOG_DEBUG, "Simulating click at center point (%d, %d)", x, y);
    ::PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, PackPoint(x, y));
    ::PostMessageW(control, WM_LBUTTONUP, 0, PackPoint(x, y));
}

bool Window::SetTextHelper(HWND control, const std::wstring& text) {
    constexpr const char* kTag = "Window::SetTextHelper";
    if (control == nullptr) {
        TraceLog(kTag, LOG_ERROR, "SetTextHelper - Null control handle");
        return false;
    }
    TraceLog(kTag, LOG_INFO, "Setting text on control 0x%ls, Text Length: %zu characters",
             FormatHandleHex(control).c_str(), text.size());
    // Takes effect only within this process or where the threads share their input; nobody relies on it.
    ::SetFocus(control);
    // Typed at the caret, so that what the control holds stays and its own input handling runs.
    for (const wchar_t unit : text) ::SendMessageW(control, WM_CHAR, unit, 0);
    NotifyParentOfChange(control);
    // Kept on purpose: the control gets a click in its middle after the text.
    SimulateMouseClick(control);
    return true;
}

bool Window::ClearTextHelper(HWND control) {
    if (control == nullptr) return false;
    ::SetFocus(control);
    ::SendMessageW(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
    NotifyParentOfChange(control);
    TraceLog("Window::ClearTextHelper", LOG_DEBUG, "Cleared text for control HWND 0x%ls",
             FormatHandleHex(control).c_str());
    return true;
}

bool Window::ClickHelper(HWND button) {
    constexpr const char* kTag = "Window::ClickHelper";
    if (button == nullptr) {
        TraceLog(kTag, LOG_ERROR, "ClickHelper - Null button handle");
        return false;
    }
    const int controlId = ::GetDlgCtrlID(button);
    TraceLog(kTag, LOG_INFO, "Clicking button:\nHandle: 0x%ls\nID:     %d", FormatHandleHex(button).c_str(), controlId);
    ::SetFocus(button);
    ::SendMessageW(button, BM_CLICK, 0, 0);
    // Kept on purpose: the button is activated a second time by the posted click, so an automatic check box ends
    // as it began and a push button acts twice.
    SimulateMouseClick(button);
    return true;
}

}  // namespace dialwright
