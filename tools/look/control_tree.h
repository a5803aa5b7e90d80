#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "language/rectangle.h"
#include "platform/windows.h"

namespace dialwright::tools {

enum class ControlKind : std::uint8_t {
    Edit,
    ReadOnlyEdit,
    Password,
    PushButton,
    CheckBox,
    RadioButton,
    GroupBox,
    Dropdown,
    Other
};

/// The kind as lists and JSON name it.
[[nodiscard]] const char* NameOf(ControlKind kind);

/// A control as it stood when it was read.
struct ControlInfo {
    HWND handle = nullptr;
    /// How the library's path commands name it, such as "2.1". They always find it: it was found the same way.
    std::wstring path;
    int depth = 0;
    int id = 0;
    /// The library's ID commands would take this very control.
    bool idIsOurs = false;
    /// With this tolerance the library's position commands would take this very control; none where another one lies in
    /// the same place.
    std::optional<int> tolerance;
    std::wstring className;
    ControlKind kind = ControlKind::Other;
    /// Empty for a password field, whatever stands in it.
    std::wstring text;
    /// From the top-left corner of the window's frame, as the library's position commands count.
    Rectangle rectangle;
    bool visible = false;
    bool enabled = false;
};

/// All descendants of a window, each behind its parent, front to back. A window that does not answer is not waited for
/// long: its controls then have no text.
[[nodiscard]] std::vector<ControlInfo> ReadControls(HWND window);

/// Where the visible password fields are, from the corner of the frame.
[[nodiscard]] std::vector<Rectangle> PasswordRectangles(HWND window);

}  // namespace dialwright::tools
