#pragma once

#include <string>

namespace dialwright::tools {

/// What --version prints: this program and the library beside it, each with version and architecture.
[[nodiscard]] std::string VersionText();

}  // namespace dialwright::tools
