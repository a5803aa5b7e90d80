#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace dialwright::tools {

/// Keeps its members in the order in which they were written, so that people can read it too.
using Json = nlohmann::ordered_json;

/// Indented, with a line end; bytes that are no UTF-8 become U+FFFD.
[[nodiscard]] std::string JsonText(const Json& json);

}  // namespace dialwright::tools
