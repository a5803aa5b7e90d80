#pragma once

#include <filesystem>

namespace dialwright::tools {

/// This program's file, found through links.
[[nodiscard]] std::filesystem::path OwnProgram();

/// The worker's program and the library, which lie beside this program.
[[nodiscard]] std::filesystem::path HostProgram();
[[nodiscard]] std::filesystem::path LibraryFile();

}  // namespace dialwright::tools
