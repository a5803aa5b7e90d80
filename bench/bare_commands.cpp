#include "bare_commands.h"

#include <cwchar>

namespace dialwright::bench {
namespace {

constexpr int kTextUnits = 256;

struct WindowSearch {
    const wchar_t* className;
    const wchar_t* title;
    HWND found;
};

BOOL CALLBACK VisitWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    wchar_t title[kTextUnits];
    wchar_t className[kTextUnits];
    title[0] = L'\0';
    className[0] = L'\0';
    ::GetWindowTextW(window, title, kTextUnits);
    ::GetClassNameW(window, className, kTextUnits);
    if (std::wcsstr(title, search.title) == nullptr || std::wcscmp(className, search.className) != 0) return TRUE;
    search.found = window;
    return FALSE;
}

struct ControlSearch {
    int controlId;
    HWND found;
};

BOOL CALLBACK VisitControl(HWND control, LPARAM parameter) {
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    if (::GetDlgCtrlID(control) != search.controlId) return TRUE;
    search.found = control;
    return FALSE;
}

HWND FindControl(const BareTarget& target) {
    BareDpiCall();
    const HWND window = BareWindow(target.className, target.title);
    wchar_t className[kTextUnits];
    if (::GetClassNameW(window, className, kTextUnits) == 0) return nullptr;
    if (std::wcscmp(className, L"#32770") == 0) return ::GetDlgItem(window, target.controlId);
    ControlSearch search = {.controlId = target.controlId, .found = nullptr};
    ::EnumChildWindows(window, &VisitControl, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace

void BareDpiCall() {
    using SetAwareness = HRESULT(WINAPI*)(int awareness);
    static const auto setAwareness = reinterpret_cast<SetAwareness>(
        reinterpret_cast<void*>(::GetProcAddress(::LoadLibraryW(L"shcore.dll"), "SetProcessDpiAwareness")));
    setAwareness(2);
}

HWND BareWindow(const wchar_t* className, const wchar_t* title) {
    WindowSearch search = {.className = className, .title = title, .found = nullptr};
    ::EnumWindows(&VisitWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool BareClick(const BareTarget& target) {
    const HWND button = FindControl(target);
    if (button == nullptr || ::GetDlgCtrlID(button) != target.controlId) return false;
    ::SetFocus(button);
    ::SendMessageW(button, BM_CLICK, 0, 0);
    RECT client;
    if (!::GetClientRect(button, &client)) return false;
    const LPARAM middle = MAKELPARAM((client.left + client.right) / 2, (client.top + client.bottom) / 2);
    return ::PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, middle) &&
           ::PostMessageW(button, WM_LBUTTONUP, 0, middle);
}

bool BareClear(const BareTarget& target) {
    const HWND edit = FindControl(target);
    if (edit == nullptr) return false;
    ::SetFocus(edit);
    ::SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
    const HWND parent = ::GetParent(edit);
    return ::PostMessageW(parent, WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(edit), EN_CHANGE),
                          reinterpret_cast<LPARAM>(edit));
}

bool BareSelect(const BareTarget& target, const wchar_t* item) {
    const HWND combo = FindControl(target);
    if (combo == nullptr) return false;
    const LRESULT index =
        ::SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(item));
    return index != CB_ERR && ::SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0) != CB_ERR;
}

bool BareCheck(const BareTarget& target, int state) {
    const HWND box = FindControl(target);
    if (box == nullptr || (::GetWindowLongPtrW(box, GWL_STYLE) & BS_TYPEMASK) == 0) return false;
    if (!::IsWindowEnabled(box) || !::IsWindowVisible(box)) return false;
    ::SendMessageW(box, BM_SETCHECK, static_cast<WPARAM>(state), 0);
    return ::SendMessageW(box, BM_GETCHECK, 0, 0) == state;
}

}  // namespace dialwright::bench
