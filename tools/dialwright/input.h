#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace dialwright::tools {

/// All bytes of a file, or of standard input for "-". Nothing when it cannot be read. The path is UTF-8.
[[nodiscard]] std::optional<std::string> ReadInput(const std::string& path);

/// Makes the file anew; false when it cannot be written. The path is UTF-8.
[[nodiscard]] bool WriteWholeFile(const std::string& path, std::string_view bytes);

/// Writes to standard output as it is, without changing line ends.
void WriteOutput(std::string_view text);
/// Some of it could not be written.
[[nodiscard]] bool OutputWasLost();

/// A path that was given in UTF-8.
[[nodiscard]] std::filesystem::path FilePath(const std::string& utf8);

}  // namespace dialwright::tools
