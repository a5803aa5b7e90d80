#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "doctor/library_file.h"
#include "look/window_list.h"

namespace dialwright::tools {

/// How much a process may do; windows of a higher one take no messages of a lower.
enum class Integrity : std::uint8_t { Low, Medium, High, System };

[[nodiscard]] std::string_view NameOf(Integrity integrity);

enum class TargetState : std::uint8_t { NotAsked, Missing, NoRight, Known };

/// What the system tells of this session and this machine.
struct Facts {
    std::uint32_t session = 0;
    bool windowStationIsVisible = false;
    bool isRemote = false;
    /// Nothing where the system does not tell it.
    std::optional<bool> isLocked = {};
    /// The desktop that gets the user's input, empty where it cannot be opened; and our own.
    std::string inputDesktop = {};
    std::string ownDesktop = {};

    std::optional<Integrity> integrity = {};
    TargetState target = TargetState::NotAsked;
    std::optional<Integrity> targetIntegrity = {};

    bool isPerMonitorAware = false;
    std::uint32_t dpi = 0;

    std::uint32_t codePage = 0;
    /// What the code page is without this program's manifest; 0 where the system does not tell it.
    std::uint32_t systemCodePage = 0;

    std::string traceFolder = {};
    std::size_t traceFolderLength = 0;
    bool traceFolderCanBeSpelled = false;
    bool traceFolderCanBeWritten = false;

    std::string libraryPath = {};
    ProgramFile library = {};
    ProgramFile program = {};
};

/// What is to be looked at.
struct Places {
    std::filesystem::path library;
    /// Where workers have their folders.
    std::filesystem::path workFolder;
};

/// Looks at all of it. The target is a window's criteria, if one was asked for.
[[nodiscard]] Facts ReadFacts(const Places& places, const std::optional<WindowCriteria>& target);

}  // namespace dialwright::tools
