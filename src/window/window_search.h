#pragma once

#include <regex>
#include <string>

#include "platform/windows.h"

namespace dialwright {

/// What the top-level search looks for and what it found.
struct WindowSearchContext {
    std::wstring title;
    std::wstring className;
    bool useRegex = false;
    HWND foundWindow = nullptr;
    // Provision for a search by process: 0 means any, and nothing sets another value.
    DWORD processId = 0;
    std::wregex titleRegex;
    std::wregex classRegex;
};

/// EnumWindows callback; the parameter is that of a GuardedContext<WindowSearchContext>.
BOOL CALLBACK EnumTopLevelProc(HWND hwnd, LPARAM context) noexcept;

}  // namespace dialwright
