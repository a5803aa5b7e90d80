#pragma once

#include <stdexcept>
#include <vector>

#include "run/plan.h"
#include "run/secrets.h"
#include "run_options.h"

namespace dialwright::tools {

/// Ends the command before anything was carried out.
struct Refused : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What a run will carry out, and what none of its outputs may hold.
struct RunPlan {
    std::vector<PlannedFile> files;
    Redactor redactor;
};

/// Reads the scripts, checks them and fills their secrets in. What is wrong is told on standard error, with `annotates`
/// for GitHub too, and Refused is thrown. Variables that hold a secret leave the environment of this process, so that
/// nothing that it starts inherits them.
[[nodiscard]] RunPlan MakePlan(const RunOptions& options, bool annotates);

}  // namespace dialwright::tools
