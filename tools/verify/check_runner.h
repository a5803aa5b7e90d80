#pragma once

#include <optional>
#include <string>
#include <vector>

#include "verify/checks.h"

namespace dialwright::verify {

/// What became of one check.
struct CheckReport {
    std::string name;
    Result result = Result::Failed;
    /// Why it failed or was skipped; empty where it passed.
    std::string why = {};
    double milliseconds = 0;
    std::vector<Step> steps = {};
    /// The last lines of the library's trace, of a check that failed.
    std::vector<std::string> trace = {};
};

/// Runs the check in a process of its own, and ends it with all that it has started when it takes too long. A limit in
/// seconds replaces the check's own.
[[nodiscard]] CheckReport RunCheck(const Check& check, const Setting& setting, std::optional<unsigned> limit);

/// What that process does. Returns its exit code.
int CarryOutCheck(const Check& check, const Setting& setting);

}  // namespace dialwright::verify
