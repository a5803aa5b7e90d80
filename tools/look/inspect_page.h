#pragma once

#include <string>
#include <string_view>

namespace dialwright::tools {

/// A page that needs nothing but itself: the picture of a window, and its controls as `inspect --json` prints them.
/// Both may hold anything, whoever named the windows. Without a picture the page has the list alone.
[[nodiscard]] std::string InspectPage(std::string_view json, std::string_view png);

/// JSON that may stand in a script element: nothing in it ends the element or begins a comment.
[[nodiscard]] std::string EscapeForScript(std::string_view json);

[[nodiscard]] std::string Base64(std::string_view bytes);

}  // namespace dialwright::tools
