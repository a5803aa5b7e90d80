#pragma once

#include <optional>
#include <string_view>

#include "check/known_windows.h"

namespace dialwright::tools {

/// What `inspect --json` printed; nothing for any other text.
[[nodiscard]] std::optional<KnownWindow> ReadKnownWindow(std::string_view json);

}  // namespace dialwright::tools
