#pragma once

#include <string>
#include <vector>

#include "look/control_tree.h"
#include "look/ready_commands.h"
#include "look/window_list.h"

namespace dialwright::tools {

// All in UTF-8, without control characters.

[[nodiscard]] std::string FormatWindows(const std::vector<WindowInfo>& windows, bool json);

/// The first is the one that a command takes.
[[nodiscard]] std::string FormatMatches(const std::vector<WindowInfo>& windows, bool json);

[[nodiscard]] std::string ControlsAsJson(const WindowInfo& window, const std::vector<ControlInfo>& controls,
                                         NamedBy way);

/// With the controls' numbers where there is a picture that has them too.
[[nodiscard]] std::string ControlsAsText(const WindowInfo& window, const std::vector<ControlInfo>& controls,
                                         NamedBy way, bool numbered);

}  // namespace dialwright::tools
