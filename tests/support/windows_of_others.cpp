#include "support/windows_of_others.h"

#include <cstdint>
#include <sstream>

namespace dialwright::testing {
namespace {

std::string FormatHandle(HWND hwnd, bool upperCase) {
    std::ostringstream text;
    text << std::hex << (upperCase ? std::uppercase : std::nouppercase) << reinterpret_cast<std::uintptr_t>(hwnd);
    return text.str();
}

}  // namespace

std::wstring TextOf(HWND control) {
    const LRESULT length = ::SendMessageW(control, WM_GETTEXTLENGTH, 0, 0);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const LRESULT copied =
        ::SendMessageW(control, WM_GETTEXT, static_cast<WPARAM>(text.size()), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

int CheckStateOf(HWND button) { return static_cast<int>(::SendMessageW(button, BM_GETCHECK, 0, 0)); }

int SelectionOf(HWND combo) { return static_cast<int>(::SendMessageW(combo, CB_GETCURSEL, 0, 0)); }

Rectangle ScreenRectOf(HWND hwnd) {
    RECT rect{};
    ::GetWindowRect(hwnd, &rect);
    return {.left = static_cast<int>(rect.left),
            .top = static_cast<int>(rect.top),
            .right = static_cast<int>(rect.right),
            .bottom = static_cast<int>(rect.bottom)};
}

Rectangle RelativeRectOf(HWND control) {
    const Rectangle root = ScreenRectOf(::GetAncestor(control, GA_ROOT));
    const Rectangle rect = ScreenRectOf(control);
    return {.left = rect.left - root.left,
            .top = rect.top - root.top,
            .right = rect.right - root.left,
            .bottom = rect.bottom - root.top};
}

std::wstring RectangleArgument(const Rectangle& rectangle) {
    return std::to_wstring(rectangle.left) + L"," + std::to_wstring(rectangle.top) + L"," +
           std::to_wstring(rectangle.right) + L"," + std::to_wstring(rectangle.bottom);
}

std::string Hex(HWND hwnd) { return FormatHandle(hwnd, true); }

std::string LowerHex(HWND hwnd) { return FormatHandle(hwnd, false); }

std::string Shown(const Rectangle& r) {
    return "[" + std::to_string(r.left) + "," + std::to_string(r.top) + "]-[" + std::to_string(r.right) + "," +
           std::to_string(r.bottom) + "]";
}

}  // namespace dialwright::testing
