#pragma once

#include <string>
#include <vector>

#include "language/rectangle.h"
#include "platform/windows.h"

namespace dialwright::testing {

/// What a control of the practice target does with commands.
enum class ControlKind : std::uint8_t {
    Edit,
    Push,
    AutoCheck,
    ManualCheck,
    ThreeState,
    Radio,
    Dropdown,
    /// Disabled or hidden: its state cannot be set.
    RefusedCheck,
};

/// A control with the three ways to address it.
struct FixtureControl {
    ControlKind kind;
    int id;
    HWND handle;
    std::vector<int> path;
    /// Relative to the window's outer rectangle, while that is neither minimized nor maximized.
    Rectangle place;
    bool reachedById;
    /// "window" or an ID, as the practice target calls it.
    std::string parent;
};

/// One window of the practice target, as found from outside with nothing of the library.
struct Fixture {
    bool isDialog;
    std::wstring windowClass;
    std::wstring title;
    HWND window;
    Rectangle place;
    std::vector<FixtureControl> controls;
};

[[nodiscard]] Fixture ReadFixture(HWND window, const std::wstring& windowClass, const std::wstring& title);

}  // namespace dialwright::testing
