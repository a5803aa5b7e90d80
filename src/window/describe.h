#pragma once

#include <string>

#include "language/rectangle.h"
#include "platform/windows.h"

namespace dialwright {

/// A handle's value in upper-case hexadecimal, without prefix or leading zeros; null is "0".
[[nodiscard]] std::wstring FormatHandleHex(HWND hwnd);

/// The same in lower case, as the path lookup prints the handles in the messages that it puts together.
[[nodiscard]] std::wstring FormatHandleLowerHex(HWND hwnd);

[[nodiscard]] Rectangle ToRectangle(const RECT& rect);

/// "[left,top]-[right,bottom]" in decimal.
[[nodiscard]] std::wstring FormatRect(const RECT& rect);

}  // namespace dialwright
