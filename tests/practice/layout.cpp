#include "layout.h"

#include <array>
#include <cstdint>
#include <set>
#include <string>

#include "recorder.h"

namespace practice {
namespace {

struct KindRow {
    const wchar_t* kind;
    const wchar_t* windowClass;
    DWORD style;
};

constexpr const wchar_t* kPanelClass = L"PracticePanel";
constexpr const wchar_t* kRefuserClass = L"PracticeRefuser";

constexpr std::array<KindRow, 15> kKinds = {{
    {L"edit", L"EDIT", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL},
    {L"multiline", L"EDIT", WS_BORDER | WS_TABSTOP | ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL},
    {L"password", L"EDIT", WS_BORDER | WS_TABSTOP | ES_PASSWORD | ES_AUTOHSCROLL},
    {L"static", L"STATIC", SS_LEFT},
    {L"button", L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON},
    {L"check", L"BUTTON", WS_TABSTOP | BS_AUTOCHECKBOX},
    {L"manualcheck", L"BUTTON", WS_TABSTOP | BS_CHECKBOX},
    {L"threestate", L"BUTTON", WS_TABSTOP | BS_AUTO3STATE},
    {L"radio", L"BUTTON", BS_AUTORADIOBUTTON},
    {L"group", L"BUTTON", BS_GROUPBOX},
    {L"dropdown", L"COMBOBOX", WS_TABSTOP | CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL},
    {L"combo", L"COMBOBOX", WS_TABSTOP | CBS_DROPDOWN | CBS_HASSTRINGS | CBS_AUTOHSCROLL},
    {L"list", L"LISTBOX", WS_BORDER | WS_TABSTOP | LBS_NOTIFY},
    {L"panel", kPanelClass, WS_BORDER},
    {L"refuser", kRefuserClass, WS_BORDER},
}};

struct ControlRow {
    const wchar_t* kind;
    int id;
    RECT place;  // left, top, width, height in its parent
    const wchar_t* text;
    int parentId;  // 0: the window itself
};

constexpr int kOpensDialog = 23;
constexpr int kDisabledCheck = 34;
constexpr int kHiddenCheck = 35;

constexpr std::array<ControlRow, 30> kControls = {{
    {L"static", 1001, {12, 14, 70, 18}, L"Name", 0},
    {L"edit", 12, {90, 12, 170, 22}, L"", 0},
    {L"static", 1002, {12, 42, 70, 18}, L"Notes", 0},
    {L"multiline", 13, {90, 40, 170, 44}, L"", 0},
    {L"static", 1003, {12, 92, 70, 18}, L"Secret", 0},
    {L"password", 14, {90, 90, 170, 22}, L"", 0},
    {L"static", 1004, {12, 122, 70, 18}, L"Greeting", 0},
    {L"edit", 15, {90, 120, 170, 22}, L"Hello", 0},
    {L"button", 21, {12, 152, 75, 23}, L"Press", 0},
    {L"button", 22, {92, 152, 75, 23}, L"Other", 0},
    {L"button", kOpensDialog, {172, 152, 88, 23}, L"Open dialog", 0},
    {L"check", 31, {290, 26, 170, 18}, L"Automatic", 0},
    {L"manualcheck", 32, {290, 45, 170, 18}, L"Manual", 0},
    {L"threestate", 33, {290, 64, 170, 18}, L"Three states", 0},
    {L"check", kDisabledCheck, {290, 83, 170, 18}, L"Disabled", 0},
    {L"check", kHiddenCheck, {290, 102, 170, 18}, L"Hidden", 0},
    {L"group", 45, {280, 8, 190, 118}, L"Checks", 0},
    {L"radio", 41, {290, 132, 80, 18}, L"Red", 0},
    {L"radio", 42, {380, 132, 80, 18}, L"Blue", 0},
    {L"dropdown", 51, {280, 156, 90, 120}, L"", 0},
    {L"combo", 52, {380, 156, 90, 120}, L"", 0},
    {L"list", 80, {280, 186, 190, 40}, L"", 0},
    {L"panel", 60, {12, 184, 250, 92}, L"", 0},
    {L"panel", 61, {8, 8, 230, 74}, L"", 60},
    {L"panel", 62, {8, 8, 210, 56}, L"", 61},
    {L"edit", 63, {8, 8, 120, 22}, L"", 62},
    {L"check", 64, {8, 34, 120, 18}, L"Four deep", 62},
    {L"edit", 70, {280, 232, 90, 22}, L"first", 0},
    {L"edit", 70, {380, 232, 90, 22}, L"second", 0},
    {L"static", 1005, {280, 258, 190, 18}, L"", 0},
}};

constexpr int kClientWidth = 482;
constexpr int kClientHeight = 286;
constexpr const wchar_t* kRefuseCloseProperty = L"PracticeRefusesClose";

/// Named after its window, so that targets side by side have each their own.
void OpenDialog(HWND hwnd) {
    std::array<wchar_t, 256> title{};
    ::GetWindowTextW(hwnd, title.data(), static_cast<int>(title.size()));
    ::MessageBoxW(hwnd, L"A modal dialog.", (L"Question of " + std::wstring(title.data())).c_str(), MB_OK);
}

bool HandleMessage(HWND hwnd, UINT message, WPARAM wParam) {
    if (message == WM_CLOSE) {
        if (::GetPropW(hwnd, kRefuseCloseProperty) == nullptr) ::DestroyWindow(hwnd);
        return true;
    }
    if (message == WM_DESTROY && ::GetParent(hwnd) == nullptr) {
        ::PostMessageW(nullptr, WM_APP, 0, 0);  // the pump looks whether a window is left
        return true;
    }
    if (message == WM_COMMAND && wParam == MAKEWPARAM(kOpensDialog, BN_CLICKED)) OpenDialog(hwnd);
    return false;
}

LRESULT CALLBACK PlainProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (HandleMessage(hwnd, message, wParam)) return 0;
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

INT_PTR CALLBACK DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM) {
    return HandleMessage(hwnd, message, wParam) ? TRUE : FALSE;
}

/// Looks like a dropdown with three items and lets none be selected.
LRESULT CALLBACK RefuserProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case CB_GETCOUNT: return 3;
        case CB_FINDSTRINGEXACT: return 1;
        case CB_SETCURSEL: return CB_ERR;
        default: return ::DefWindowProcW(hwnd, message, wParam, lParam);
    }
}

WNDPROC ProcedureOf(const std::wstring& windowClass) {
    if (windowClass == kPanelClass) return &::DefWindowProcW;
    return windowClass == kRefuserClass ? &RefuserProc : &PlainProc;
}

void RegisterPlainClass(const std::wstring& name) {
    static std::set<std::wstring> registered;
    if (!registered.insert(name).second) return;
    WNDCLASSEXW definition{};
    definition.cbSize = sizeof definition;
    definition.lpfnWndProc = ProcedureOf(name);
    definition.hInstance = ::GetModuleHandleW(nullptr);
    definition.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    definition.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<std::uintptr_t>(COLOR_BTNFACE + 1));
    definition.lpszClassName = name.c_str();
    ::RegisterClassExW(&definition);
}

constexpr DWORD kFrame = WS_OVERLAPPEDWINDOW;

/// A dialog template without items: style, extended style, no items, no place, no menu, class or title.
HWND CreateDialogWindow(const std::wstring& title) {
    const struct {
        DLGTEMPLATE head;
        WORD menu, windowClass, title;
    } frame{{kFrame | DS_MODALFRAME, 0, 0, 0, 0, 100, 100}, 0, 0, 0};
    const HWND hwnd = ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr), &frame.head, nullptr, &DialogProc, 0);
    ::SetWindowTextW(hwnd, title.c_str());
    return hwnd;
}

SIZE OuterSize() {
    RECT frame{0, 0, kClientWidth, kClientHeight};
    ::AdjustWindowRectEx(&frame, kFrame, FALSE, 0);
    return {frame.right - frame.left, frame.bottom - frame.top};
}

HWND FindDescendant(HWND window, int id) {
    struct Search {
        int id;
        HWND found;
    } search{id, nullptr};
    ::EnumChildWindows(
        window,
        [](HWND child, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            if (::GetDlgCtrlID(child) != wanted.id) return TRUE;
            wanted.found = child;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void AddControls(HWND window) {
    for (const ControlRow& row : kControls) {
        const HWND parent = row.parentId == 0 ? window : FindDescendant(window, row.parentId);
        CreateControl(parent, row.kind, row.id, row.place, row.text);
    }
    ::EnableWindow(FindDescendant(window, kDisabledCheck), FALSE);
    ::ShowWindow(FindDescendant(window, kHiddenCheck), SW_HIDE);
    for (const wchar_t* item : {L"Alpha", L"Beta", L"Gamma"}) {
        ::SendMessageW(FindDescendant(window, 51), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        ::SendMessageW(FindDescendant(window, 52), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        ::SendMessageW(FindDescendant(window, 80), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
    }
}

}  // namespace

HWND CreateControl(HWND parent, const std::wstring& kind, int id, const RECT& place, const std::wstring& text) {
    RegisterPlainClass(kPanelClass);
    RegisterPlainClass(kRefuserClass);
    for (const KindRow& row : kKinds) {
        if (kind != row.kind) continue;
        // The identifier travels in the menu parameter.
        const HWND control = ::CreateWindowExW(
            0, row.windowClass, text.c_str(), WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | row.style, place.left,
            place.top, place.right, place.bottom, parent, reinterpret_cast<HMENU>(static_cast<std::intptr_t>(id)),
            ::GetModuleHandleW(nullptr), nullptr);
        const auto font = reinterpret_cast<WPARAM>(::GetStockObject(DEFAULT_GUI_FONT));
        ::SendMessageW(control, WM_SETFONT, font, FALSE);
        // New windows go first in the child order otherwise, and paths would count backwards.
        ::SetWindowPos(control, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        Record(control);
        return control;
    }
    return nullptr;
}

HWND CreatePlainWindow(const std::wstring& windowClass, const std::wstring& title, bool hidden) {
    RegisterPlainClass(windowClass);
    const SIZE size = OuterSize();
    const HWND hwnd = ::CreateWindowExW(0, windowClass.c_str(), title.c_str(), kFrame, 40, 40, size.cx, size.cy,
                                        nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    Record(hwnd);
    if (!hidden) ::ShowWindow(hwnd, SW_SHOWNORMAL);
    return hwnd;
}

HWND CreateTarget(const TargetOptions& options) {
    HWND hwnd = nullptr;
    if (options.windowClass == L"#32770") {
        hwnd = CreateDialogWindow(options.title);
        Record(hwnd);
    } else {
        hwnd = CreatePlainWindow(options.windowClass, options.title, true);
    }
    if (hwnd == nullptr) return nullptr;
    const SIZE size = OuterSize();
    ::SetWindowPos(hwnd, nullptr, 40, 40, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    if (options.refuseClose) ::SetPropW(hwnd, kRefuseCloseProperty, reinterpret_cast<HANDLE>(std::uintptr_t{1}));
    AddControls(hwnd);
    if (!options.hidden) ::ShowWindow(hwnd, SW_SHOWNORMAL);
    return hwnd;
}

}  // namespace practice
