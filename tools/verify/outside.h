#pragma once

#include <functional>
#include <string>

#include "language/rectangle.h"
#include "platform/windows.h"

// The windows of another process, read and set from outside without the library. Throws std::runtime_error where the
// target does not answer.
namespace dialwright::verify {

/// Sends a message to a window that may hang.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

[[nodiscard]] std::wstring TextOf(HWND control);
[[nodiscard]] Rectangle ScreenRectangleOf(HWND window);
/// From the top-left corner of its top-level window's frame.
[[nodiscard]] Rectangle RelativeRectangleOf(HWND control);
/// "left,top,right,bottom", as commands write it.
[[nodiscard]] std::wstring Argument(const Rectangle& rectangle);
/// "[left,top]-[right,bottom]".
[[nodiscard]] std::string Shown(const Rectangle& rectangle);
/// Which child of its parent it is, front to back, from 1.
[[nodiscard]] int PositionAmongSiblings(HWND control);

/// Looks until the condition holds, for a few seconds at most.
[[nodiscard]] bool Comes(const std::function<bool()>& condition);

}  // namespace dialwright::verify
