#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "language/rectangle.h"

namespace dialwright::tools {

/// The largest tolerance, up to a few pixels, with which a search for the rectangle of one control finds it and none of
/// those that are looked at before; `places` are in the order of the library. Nothing where one before lies in the very
/// same place.
[[nodiscard]] std::optional<int> ToleranceThatFinds(const std::vector<Rectangle>& places, std::size_t wanted);

}  // namespace dialwright::tools
