#pragma once

#include <cstddef>
#include <string_view>

namespace dialwright::tools {

/// How many letters must be put in, left out or changed to make one text the other. Case does not count. The work grows
/// with the product of the lengths.
[[nodiscard]] std::size_t EditDistance(std::wstring_view from, std::wstring_view to);

}  // namespace dialwright::tools
