#pragma once

#include <string>

#include "dialwright/json_text.h"
#include "verify/mask.h"
#include "verify/setting.h"

namespace dialwright::verify {

/// What a report tells of the machine, as this program sees it.
struct Machine {
    /// "Windows 10.0.22631.3296 on ARM64", or what it is in its place.
    std::string platform;
    tools::Json json;
};

[[nodiscard]] Machine ReadMachine(const Setting& setting, const Mask& mask);

}  // namespace dialwright::verify
