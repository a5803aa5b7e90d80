#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dialwright::tools {

enum class Architecture : std::uint8_t { None, X64, Arm64, X86, Other };

/// "x64", "ARM64", "x86", or words for the rest.
[[nodiscard]] std::string_view NameOf(Architecture architecture);

/// What the first bytes of a program or library say it is made for; None where they are of neither.
[[nodiscard]] Architecture ArchitectureOf(std::string_view firstBytes);

/// What a program file tells of itself without being loaded.
struct ProgramFile {
    bool exists = false;
    Architecture architecture = Architecture::None;
    /// "1.2.3"; empty for a file without a version.
    std::string version = {};
};

[[nodiscard]] ProgramFile ReadProgramFile(const std::wstring& path);

}  // namespace dialwright::tools
