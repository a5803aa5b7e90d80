#pragma once

#include "platform/windows.h"

namespace dialwright {

/// What the position search looks for, relative to the root window, and where it puts what it found.
struct PositionSearchContext {
    int left;
    int top;
    int right;
    int bottom;
    int tolerance;
    HWND* result;
};

}  // namespace dialwright
