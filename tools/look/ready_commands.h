#pragma once

#include <string>
#include <vector>

#include "look/control_tree.h"
#include "look/window_list.h"

namespace dialwright::tools {

/// The command lines that act on this control of this window, each with a timeout: by ID where the library would find
/// this very control so, else by path. Empty for a control that no command acts on, and in a window whose title or
/// class cannot be written in one line. Placeholders such as TEXT stand for what only the user knows.
[[nodiscard]] std::vector<std::wstring> ReadyCommands(const WindowInfo& window, const ControlInfo& control);

/// The lines that act on the window itself.
[[nodiscard]] std::vector<std::wstring> ReadyWindowCommands(const WindowInfo& window);

}  // namespace dialwright::tools
