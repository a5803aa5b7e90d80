#pragma once

#include <string>

#include "look/picture.h"

namespace dialwright::testing {

/// What a PNG file shows. Throws std::runtime_error for bytes that are none.
[[nodiscard]] tools::Picture DecodePng(const std::string& bytes);

}  // namespace dialwright::testing
