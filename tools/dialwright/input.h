#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dialwright::tools {

/// All bytes of a file, or of standard input for "-". Nothing when it cannot be read. The path is UTF-8.
[[nodiscard]] std::optional<std::string> ReadInput(const std::string& path);

/// Writes to standard output as it is, without changing line ends.
void WriteOutput(std::string_view text);

[[nodiscard]] std::wstring Wide(std::string_view utf8);

}  // namespace dialwright::tools
