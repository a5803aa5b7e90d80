#pragma once

#include <string_view>

namespace dialwright::tools {

/// The command whose name is most like this one, or nothing when none is near. Case does not count.
[[nodiscard]] std::wstring_view NearestCommandName(std::wstring_view name);

}  // namespace dialwright::tools
