#pragma once

#include <string>
#include <vector>

#include "dialwright/json_text.h"
#include "verify/check_runner.h"
#include "verify/machine.h"
#include "verify/mask.h"

namespace dialwright::verify {

/// What one program, of one architecture, has found.
struct Run {
    std::string architecture;
    Machine machine;
    bool quick = false;
    std::vector<CheckReport> checks = {};
    /// What "dialwright doctor --json" printed; null where it printed nothing of use.
    tools::Json doctor = {};
};

[[nodiscard]] tools::Json ToJson(const Run& run, const Mask& mask);

/// One line for people.
[[nodiscard]] std::string Headline(const Run& run);
[[nodiscard]] std::string LineOf(const CheckReport& check, const Mask& mask);

/// All that goes into a report.
struct Findings {
    /// Each in the form of ToJson; the first is our own.
    tools::Json runs = tools::Json::array();
    /// What has to be said besides.
    std::vector<std::string> notes = {};
    /// Programs that were to look too, and broke down.
    int broken = 0;
    /// Everything was looked at, and as long as it takes.
    bool isWhole = true;
};

/// The report; its sum comes last.
[[nodiscard]] tools::Json ReportOf(const Findings& findings);
[[nodiscard]] std::string SumText(const tools::Json& report);
[[nodiscard]] bool HasFailed(const tools::Json& report);

}  // namespace dialwright::verify
