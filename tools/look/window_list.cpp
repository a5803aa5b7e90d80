#include "look/window_list.h"

#include <array>
#include <utility>

#include "language/criterion.h"
#include "platform/stack.h"
#include "window/describe.h"

namespace dialwright::tools {
namespace {

constexpr int kTextUnits = 256;

std::wstring ProgramOf(DWORD processId) {
    const HANDLE process = ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId);
    if (process == nullptr) return {};
    std::array<wchar_t, 1024> path{};
    auto size = static_cast<DWORD>(path.size());
    const bool known = ::QueryFullProcessImageNameW(process, 0, path.data(), &size) != FALSE;
    ::CloseHandle(process);
    if (!known) return {};
    const std::wstring whole(path.data(), size);
    return whole.substr(whole.rfind(L'\\') + 1);
}

}  // namespace

WindowInfo ReadWindow(HWND window) {
    if (!::IsWindow(window)) return {};
    WindowInfo info;
    info.handle = window;
    std::array<wchar_t, kTextUnits> text{};
    ::GetClassNameW(window, text.data(), kTextUnits);
    info.className = text.data();
    text.fill(L'\0');
    ::GetWindowTextW(window, text.data(), kTextUnits);
    info.title = text.data();
    ::GetWindowThreadProcessId(window, &info.processId);
    info.program = ProgramOf(info.processId);
    RECT frame{};
    ::GetWindowRect(window, &frame);
    info.frame = ToRectangle(frame);
    info.visible = ::IsWindowVisible(window) != FALSE;
    info.enabled = ::IsWindowEnabled(window) != FALSE;
    info.minimized = ::IsIconic(window) != FALSE;
    info.hung = ::IsHungAppWindow(window) != FALSE;
    return info;
}

std::vector<WindowInfo> ListTopLevelWindows() {
    std::vector<HWND> handles;
    ::EnumWindows(
        [](HWND window, LPARAM list) noexcept -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&handles));
    std::vector<WindowInfo> windows;
    for (const HWND handle : handles) {
        WindowInfo info = ReadWindow(handle);
        if (info.handle != nullptr) windows.push_back(std::move(info));
    }
    return windows;
}

WindowMatcher::WindowMatcher(WindowCriteria criteria) : wanted(std::move(criteria)) {
    if (wanted.literal) return;
    titleExpression = CompileCriterion(wanted.title, StackBytesLeft());
    classExpression = CompileCriterion(wanted.className, StackBytesLeft());
}

bool WindowMatcher::Takes(const WindowInfo& window) const {
    if (wanted.literal) {
        return ContainsLiteral(window.title.c_str(), wanted.title) &&
               EqualsLiteral(window.className.c_str(), wanted.className);
    }
    return MatchesWhole(window.title.c_str(), titleExpression) &&
           MatchesWhole(window.className.c_str(), classExpression);
}

}  // namespace dialwright::tools
