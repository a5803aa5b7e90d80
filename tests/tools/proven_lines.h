#pragma once

#include <optional>
#include <string>

#include "platform/windows.h"

namespace dialwright::testing {

/// Lets dialwright.exe write the lines for a window, naming controls by "id", "path" or "rectangle", and the library
/// carry out each that types, clears, selects or checks; looks from outside at what changed: the control of the line,
/// and no other. Fails the running test where that is not so. Returns how many lines were proven. What buttons do only
/// their program knows: they are left to the test, and so is the control with the ID `restless`, which its program
/// changes at times of its own.
[[nodiscard]] int ProveLines(HWND window, const std::wstring& way, std::optional<int> restless = std::nullopt);

/// The first line that dialwright.exe writes for the first control with this ID.
[[nodiscard]] std::wstring LineFor(HWND window, int id, const std::wstring& way = L"id");

/// The line that it writes for the window itself with this command.
[[nodiscard]] std::wstring WindowLine(HWND window, const std::wstring& command);

/// Lets the library carry out the lines for the window itself, the last of which closes it.
void ProveWindowLines(HWND window);

/// 1 when the library carried it out.
[[nodiscard]] int Execute(const std::wstring& line);

}  // namespace dialwright::testing
