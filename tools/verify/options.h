#pragma once

#include <optional>
#include <string>
#include <vector>

namespace dialwright::verify {

/// What the program is told. The hidden ones are those with which it starts itself.
struct Options {
    std::vector<std::string> reports;
    std::vector<std::string> only;
    std::string also;
    bool quick = false;
    std::optional<unsigned> limit;

    std::string check;
    std::string checkWork;
    std::string leave;
    bool crash = false;
    std::string folder;

    /// Nothing is left out and nothing shortened.
    [[nodiscard]] bool IsWhole() const { return !quick && only.empty() && !limit; }
};

/// What became of the command line: options, or an exit code when it wanted only help or was wrong.
struct ReadOptions {
    Options options;
    std::optional<int> exitCode;
};

[[nodiscard]] ReadOptions ReadCommandLine();

}  // namespace dialwright::verify
