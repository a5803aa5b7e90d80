#pragma once

#include "verify/options.h"
#include "verify/report.h"
#include "verify/setting.h"

namespace dialwright::verify {

/// Has the program of another architecture look too, and adds what it found.
void AddOther(const Options& options, const Setting& setting, const Mask& mask, Findings& findings);

}  // namespace dialwright::verify
