#pragma once

#include <vector>

#include "language/rectangle.h"
#include "look/picture.h"
#include "platform/windows.h"

namespace dialwright::tools {

struct WindowPicture {
    /// As large as the window's frame; without pixels where there is no picture.
    Picture picture;
    /// Whatever covered the window is in the picture.
    bool fromScreen = false;
    /// Why there is no picture; null when there is one.
    const char* trouble = nullptr;
};

/// What the whole top-level window of this window looks like. Password fields, and the rectangles in `blanked`, which
/// count from the corner of the frame, are filled with one colour. A window that hangs is not waited for long.
[[nodiscard]] WindowPicture TakeWindowPicture(HWND window, std::vector<Rectangle> blanked = {});

}  // namespace dialwright::tools
