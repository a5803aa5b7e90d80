#pragma once

#include <filesystem>

namespace dialwright::tools {

/// The folder of this program, found through links.
[[nodiscard]] std::filesystem::path OwnFolder();

/// The worker's program and the library, which lie beside this program.
[[nodiscard]] inline std::filesystem::path HostProgram() { return OwnFolder() / "dialwright-host.exe"; }
[[nodiscard]] inline std::filesystem::path LibraryFile() { return OwnFolder() / "Dialwright.dll"; }

}  // namespace dialwright::tools
