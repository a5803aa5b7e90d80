#pragma once

#include <map>
#include <string>

#include "verify/practice.h"
#include "verify/setting.h"

namespace dialwright::verify {

/// What the host without a manifest says after it has carried out a line: "result", "awareness before", "awareness
/// after", "rectangle", "codepage"; what it could not tell is missing.
using PlainOutput = std::map<std::string, std::string>;

/// Runs it on a window of the target's. A token gives it other rights than ours.
[[nodiscard]] PlainOutput RunPlainHost(const Setting& setting, const std::wstring& line, const Practice& target,
                                       HANDLE token = nullptr);

}  // namespace dialwright::verify
