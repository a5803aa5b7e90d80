#pragma once

#include <string>

#include "platform/windows.h"
#include "run/command_line.h"
#include "run/reason.h"

namespace dialwright::tools {

/// What could help a line that failed, in one sentence in UTF-8, from the windows and controls that are there now;
/// empty where there is nothing to say. `window` and `control` are the target, null where they were not found.
[[nodiscard]] std::string Suggest(const CommandLine& line, const Reason& reason, HWND window, HWND control);

}  // namespace dialwright::tools
