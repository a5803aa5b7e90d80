#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "look/control_tree.h"
#include "look/window_list.h"

namespace dialwright::tools {

/// What a line names a control by.
enum class NamedBy : std::uint8_t { Id, Path, Rectangle };

/// The command lines that act on this control of this window, each with a timeout. They name it in the way that is
/// asked for where the library would find this very control so, else by path. Empty for a control that no command acts
/// on, and in a window whose title or class cannot be written in one line. Placeholders such as TEXT stand for what
/// only the user knows.
[[nodiscard]] std::vector<std::wstring> ReadyCommands(const WindowInfo& window, const ControlInfo& control,
                                                      NamedBy wanted = NamedBy::Id);

/// The lines that act on the window itself.
[[nodiscard]] std::vector<std::wstring> ReadyWindowCommands(const WindowInfo& window);

}  // namespace dialwright::tools
