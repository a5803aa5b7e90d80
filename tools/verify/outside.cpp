#include "verify/outside.h"

#include <stdexcept>

#include "platform/text_encoding.h"

namespace dialwright::verify {
namespace {

constexpr UINT kAnswerMs = 5000;
constexpr ULONGLONG kPatienceMs = 3000;

}  // namespace

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    if (::SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kAnswerMs, &result) == 0)
        throw std::runtime_error("the target does not answer");
    return static_cast<LRESULT>(result);
}

std::wstring TextOf(HWND control) {
    std::wstring text(static_cast<std::size_t>(Send(control, WM_GETTEXTLENGTH)) + 1, L'\0');
    const LRESULT copied = Send(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

Rectangle ScreenRectangleOf(HWND window) {
    RECT rect{};
    if (!::GetWindowRect(window, &rect)) throw std::runtime_error("the target's window is gone");
    return {.left = static_cast<int>(rect.left),
            .top = static_cast<int>(rect.top),
            .right = static_cast<int>(rect.right),
            .bottom = static_cast<int>(rect.bottom)};
}

Rectangle RelativeRectangleOf(HWND control) {
    return RelativeTo(ScreenRectangleOf(control), ScreenRectangleOf(::GetAncestor(control, GA_ROOT)));
}

std::wstring Argument(const Rectangle& r) {
    return std::to_wstring(r.left) + L"," + std::to_wstring(r.top) + L"," + std::to_wstring(r.right) + L"," +
           std::to_wstring(r.bottom);
}

std::string Shown(const Rectangle& rectangle) { return ToUtf8(FormatRectangle(rectangle)); }

int PositionAmongSiblings(HWND control) {
    int position = 1;
    for (HWND before = ::GetWindow(control, GW_HWNDPREV); before != nullptr;
         before = ::GetWindow(before, GW_HWNDPREV)) {
        ++position;
    }
    return position;
}

bool Comes(const std::function<bool()>& condition) {
    const ULONGLONG deadline = ::GetTickCount64() + kPatienceMs;
    while (!condition()) {
        if (::GetTickCount64() > deadline) return false;
        ::Sleep(20);  // between two looks at the condition
    }
    return true;
}

}  // namespace dialwright::verify
