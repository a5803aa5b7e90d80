#pragma once

#include <string>

#include "language/rectangle.h"
#include "platform/windows.h"

// Reading the windows of another process from outside, as a person would see them.
namespace dialwright::testing {

[[nodiscard]] std::wstring TextOf(HWND control);
[[nodiscard]] int CheckStateOf(HWND button);
[[nodiscard]] int SelectionOf(HWND combo);
[[nodiscard]] Rectangle ScreenRectOf(HWND hwnd);
/// Relative to its top-level window's outer rectangle.
[[nodiscard]] Rectangle RelativeRectOf(HWND control);
/// "left,top,right,bottom", as commands write it.
[[nodiscard]] std::wstring RectangleArgument(const Rectangle& rectangle);
/// Upper-case hexadecimal, as most messages print handles, and lower-case.
[[nodiscard]] std::string Hex(HWND hwnd);
[[nodiscard]] std::string LowerHex(HWND hwnd);
/// "[left,top]-[right,bottom]".
[[nodiscard]] std::string Shown(const Rectangle& rectangle);

}  // namespace dialwright::testing
