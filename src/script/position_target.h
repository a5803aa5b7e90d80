#pragma once

#include "window/window.h"

namespace dialwright {

/// Where a position-addressed command expects its control, and how far off each edge may be.
struct PositionTarget {
    int left;
    int top;
    int right;
    int bottom;
    int tolerance;
};

/// Null when no control lies there.
[[nodiscard]] HWND FindControl(const Window& window, const PositionTarget& target);

/// RetryUntilTimeout (retry.h) for the state of a check box or radio button. A failure charges the time that the
/// attempts took to the window's `timeoutMs`.
[[nodiscard]] int RetryCheckByPosition(Window& window, const PositionTarget& target, int state, const wchar_t* label);

}  // namespace dialwright
