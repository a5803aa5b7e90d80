#pragma once

#include <string>

#include "run/report.h"

namespace dialwright::tools {

/// The report in the form that Jenkins and others read: a suite a script, a case a line.
[[nodiscard]] std::string FormatRunAsJUnit(const RunReport& report);

}  // namespace dialwright::tools
