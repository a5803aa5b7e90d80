#include "look/window_list.h"

#include <array>
#include <utility>

#include "look/unique_handle.h"
#include "platform/stack.h"
#include "window/describe.h"

namespace dialwright::tools {
namespace {

constexpr int kTextUnits = 256;

std::wstring ProgramOf(DWORD processId) {
    const UniqueHandle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    if (process == nullptr) return {};
    std::array<wchar_t, 1024> path{};
    auto size = static_cast<DWORD>(path.size());
    if (!::QueryFullProcessImageNameW(process.get(), 0, path.data(), &size)) return {};
    const std::wstring whole(path.data(), size);
    return whole.substr(whole.rfind(L'\\') + 1);
}

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, kTextUnits> text{};
    ::GetClassNameW(window, text.data(), kTextUnits);
    return text.data();
}

std::wstring TitleOf(HWND window) {
    std::array<wchar_t, kTextUnits> text{};
    ::GetWindowTextW(window, text.data(), kTextUnits);
    return text.data();
}

std::vector<HWND> TopLevelWindows() {
    std::vector<HWND> handles;
    ::EnumWindows(
        [](HWND window, LPARAM list) noexcept -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&handles));
    return handles;
}

}  // namespace

WindowInfo ReadWindow(HWND window) {
    if (!::IsWindow(window)) return {};
    WindowInfo info;
    info.handle = window;
    info.className = ClassOf(window);
    info.title = TitleOf(window);
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
    std::vector<WindowInfo> windows;
    for (const HWND handle : TopLevelWindows()) {
        WindowInfo info = ReadWindow(handle);
        if (info.handle != nullptr) windows.push_back(std::move(info));
    }
    return windows;
}

WindowMatcher::WindowMatcher(WindowCriteria criteria) : names(std::move(criteria), StackBytesLeft()) {}

bool WindowMatcher::Takes(const WindowInfo& window) const { return names.Takes(window.className, window.title); }

HWND WindowMatcher::FirstMatch() const {
    for (const HWND window : TopLevelWindows()) {
        if (names.Takes(ClassOf(window), TitleOf(window))) return window;
    }
    return nullptr;
}

}  // namespace dialwright::tools
