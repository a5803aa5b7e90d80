#pragma once

#include <vector>

#include "look/control_tree.h"
#include "look/window_list.h"
#include "run/secrets.h"

namespace dialwright::tools {

/// A window and its controls, without secrets.
struct RedactedLook {
    WindowInfo window;
    std::vector<ControlInfo> controls;
    /// What of it must not be in a picture.
    std::vector<Rectangle> blanked;
};

/// Hides values in titles and texts, and the whole text of each control that was given one, as it may hold a part of
/// it.
[[nodiscard]] RedactedLook LookWithoutSecrets(WindowInfo window, const Redactor& redactor,
                                              const std::vector<HWND>& controlsWithSecrets = {});

/// All top-level windows, without secrets in their titles.
[[nodiscard]] std::vector<WindowInfo> WindowsWithoutSecrets(const Redactor& redactor);

}  // namespace dialwright::tools
