#pragma once

#include <string>

#include "look/picture.h"

namespace dialwright::tools {

/// The bytes of a PNG file, made by the system's imaging component. Throws std::runtime_error where that fails.
[[nodiscard]] std::string EncodePng(const Picture& picture);

}  // namespace dialwright::tools
