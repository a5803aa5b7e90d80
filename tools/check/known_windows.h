#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "language/rectangle.h"

namespace dialwright::tools {

enum class KnownKind : std::uint8_t { CheckBox, RadioButton, Other };

/// A control as somebody looked at it before.
struct KnownControl {
    /// Such as "2.1".
    std::wstring path;
    int id = 0;
    /// The library's ID commands take this very control.
    bool idFindsIt = false;
    Rectangle rectangle;
    KnownKind kind = KnownKind::Other;
};

/// A window with its controls in the order in which the library looks at them.
struct KnownWindow {
    std::wstring className;
    std::wstring title;
    std::vector<KnownControl> controls;
};

}  // namespace dialwright::tools
