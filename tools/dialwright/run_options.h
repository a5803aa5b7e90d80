#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "run/plan.h"

namespace CLI {
class App;
}  // namespace CLI

namespace dialwright::tools {

struct RunOptions {
    std::vector<std::string> files;
    std::vector<std::string> lines;
    LineRange range;
    std::size_t repeat = 1;
    bool noCheck = false;
    bool dryRun = false;
    bool keepGoing = false;
    std::string launch;
    std::size_t lineTimeoutMs = 0;
    std::string onModal = "continue";
    std::vector<std::string> onFailure;
    std::string evidenceFolder = "dialwright-failures";
    std::string secretFile;
    std::string junitFile;
    bool json = false;
    std::string annotate = "auto";
    std::string workFolder;
};

/// Defines the options of `dialwright run` and its help.
[[nodiscard]] std::shared_ptr<RunOptions> AddRunOptions(CLI::App& command);

}  // namespace dialwright::tools
