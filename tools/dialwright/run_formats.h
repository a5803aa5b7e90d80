#pragma once

#include <string>

#include "run/report.h"

namespace dialwright::tools {

// All in UTF-8, without control characters.

/// A line of output for a line that has ended, and further ones with the reason of a failure.
[[nodiscard]] std::string FormatLine(const LineReport& line);

/// How it all went, in one line.
[[nodiscard]] std::string FormatSum(const RunReport& report);

[[nodiscard]] std::string FormatRunAsJson(const RunReport& report);

/// An annotation for a line that failed.
[[nodiscard]] std::string FormatLineForGithub(const LineReport& line);

}  // namespace dialwright::tools
