#pragma once

#include <string>
#include <vector>

#include "look/control_tree.h"
#include "look/window_list.h"

namespace dialwright::tools {

// All in UTF-8, without control characters.

[[nodiscard]] std::string FormatWindows(const std::vector<WindowInfo>& windows, bool json);

/// The first is the one that a command takes.
[[nodiscard]] std::string FormatMatches(const std::vector<WindowInfo>& windows, bool json);

[[nodiscard]] std::string FormatControls(const WindowInfo& window, const std::vector<ControlInfo>& controls, bool json);

}  // namespace dialwright::tools
