#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}  // namespace CLI

namespace dialwright::tools {

// What the program ends with, the same for every subcommand.
inline constexpr int kDone = 0;
inline constexpr int kFound = 1;
inline constexpr int kUsage = 2;
inline constexpr int kEnvironment = 3;
inline constexpr int kWatchdog = 4;
inline constexpr int kInternal = 5;
inline constexpr int kInterrupted = 130;

/// Carries the subcommand out, with the options that were read, and returns the exit code.
using Action = std::function<int()>;

/// Adds its options to the command line and returns what is to be done.
using DefineSubcommand = Action (*)(CLI::App& command);

Action DefineCheck(CLI::App& command);
Action DefineDoctor(CLI::App& command);
Action DefineInspect(CLI::App& command);
Action DefineLaunch(CLI::App& command);
Action DefineMatch(CLI::App& command);
Action DefineRun(CLI::App& command);
Action DefineTrace(CLI::App& command);
Action DefineWindows(CLI::App& command);

}  // namespace dialwright::tools
