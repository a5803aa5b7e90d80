#include "trace/trace.h"
#include "window/describe.h"
#include "window/window.h"

namespace dialwright {
namespace {

// Kept on purpose: neither a dropdown nor a button is made to notify its parent. A program that only listens, and never
// reads the control, does not learn of a selection.

bool SetCurrentItem(HWND combo, WPARAM index) { return ::SendMessageW(combo, CB_SETCURSEL, index, 0) != CB_ERR; }

}  // namespace

bool Window::SelectDropdownByValueInternal(HWND combo, const std::wstring& value) {
    if (combo == nullptr) return false;
    constexpr WPARAM kFromStart = static_cast<WPARAM>(-1);
    const LRESULT index =
        ::SendMessageW(combo, CB_FINDSTRINGEXACT, kFromStart, reinterpret_cast<LPARAM>(value.c_str()));
    if (index == CB_ERR) {
        TraceLog("Window::SelectDropdownByValueInternal", LOG_ERROR, "Value '%ls' not found in dropdown",
                 value.c_str());
        return false;
    }
    return SetCurrentItem(combo, static_cast<WPARAM>(index));
}

bool Window::SelectDropdownByIndexInternal(HWND combo, int index) {
    constexpr const char* kTag = "Window::SelectDropdownByIndexInternal";
    if (combo == nullptr) return false;
    if (index < 0) {
        TraceLog(kTag, LOG_ERROR, "Invalid negative index: %d", index);
        return false;
    }
    const LRESULT count = ::SendMessageW(combo, CB_GETCOUNT, 0, 0);
    if (count > index) return SetCurrentItem(combo, static_cast<WPARAM>(index));
    TraceLog(kTag, LOG_ERROR, "Index %d out of range (total items: %d)", index, static_cast<int>(count));
    return false;
}

bool Window::SetCheckState(HWND control, int state, const std::wstring& label) {
    constexpr const char* kTag = "Window::SetCheckState";
    if (control == nullptr) {
        TraceLog(kTag, LOG_ERROR, "%ls control not found", label.c_str());
        return false;
    }
    // Kept on purpose: a loose test. Only a plain push button is refused; a group box, say, passes and fails below.
    if ((::GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK) == 0) {
        TraceLog(kTag, LOG_ERROR, "Control (0x%ls) is not a checkbox/radio button", FormatHandleHex(control).c_str());
        return false;
    }
    if (!::IsWindowEnabled(control) || !::IsWindowVisible(control)) {
        TraceLog(kTag, LOG_ERROR, "Control (0x%ls) is disabled or hidden", FormatHandleHex(control).c_str());
        return false;
    }
    const auto previous = static_cast<int>(::SendMessageW(control, BM_SETCHECK, static_cast<WPARAM>(state), 0));
    const auto now = static_cast<int>(::SendMessageW(control, BM_GETCHECK, 0, 0));
    if (now == state) {
        TraceLog(kTag, LOG_INFO, "%ls state successfully set to %d", label.c_str(), state);
        return true;
    }
    TraceLog(kTag, LOG_ERROR, "Failed to set %ls state.\nPrevious: %d\nNew: %d", label.c_str(), previous, now);
    return false;
}

}  // namespace dialwright
