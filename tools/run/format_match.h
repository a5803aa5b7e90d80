#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dialwright::tools {

/// The texts that stand where a printf format has its conversions, or nothing when the text was not made by this
/// format. Knows the conversions without flags and widths, which is all that the library's messages use.
[[nodiscard]] std::optional<std::vector<std::string>> MatchFormat(std::string_view format, std::string_view text);

}  // namespace dialwright::tools
