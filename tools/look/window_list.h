#pragma once

#include <string>
#include <vector>

#include "language/rectangle.h"
#include "match/name_matcher.h"
#include "platform/windows.h"

namespace dialwright::tools {

/// A top-level window as it stood when it was read. Class and title are cut as the library cuts them.
struct WindowInfo {
    HWND handle = nullptr;
    std::wstring className;
    std::wstring title;
    DWORD processId = 0;
    /// The program's file name; empty where the system does not tell it.
    std::wstring program;
    Rectangle frame;
    bool visible = false;
    bool enabled = false;
    bool minimized = false;
    bool hung = false;
};

/// All top-level windows in the order in which the library looks at them.
[[nodiscard]] std::vector<WindowInfo> ListTopLevelWindows();

/// One window of any kind; its handle is null when there is no such window.
[[nodiscard]] WindowInfo ReadWindow(HWND window);

/// Tells which windows the library would take.
class WindowMatcher {
public:
    /// Throws std::regex_error for what is no expression.
    explicit WindowMatcher(WindowCriteria criteria);

    /// Throws std::regex_error where an expression explodes.
    [[nodiscard]] bool Takes(const WindowInfo& window) const;

    /// The window that the library would take now, or null. Throws as Takes.
    [[nodiscard]] HWND FirstMatch() const;

private:
    NameMatcher names;
};

}  // namespace dialwright::tools
