#pragma once

#include <optional>
#include <string>

namespace dialwright::verify {

/// The version of Wine that this is, or words where it hides its version; nothing on Windows.
[[nodiscard]] std::optional<std::string> WineVersion();

}  // namespace dialwright::verify
