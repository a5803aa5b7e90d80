#pragma once

#include <string>

namespace dialwright {

/// The line as it may be logged: in a line that begins with a SetText command the typed text becomes
/// "*****"; every other line comes back unchanged.
[[nodiscard]] std::wstring MaskCommandForLog(const std::wstring& line);

}  // namespace dialwright
