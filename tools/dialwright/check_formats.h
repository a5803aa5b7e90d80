#pragma once

#include <string>
#include <vector>

#include "check/finding.h"

namespace dialwright::tools {

struct CheckedFile {
    std::string file;
    std::vector<Finding> findings;
};

/// The findings as "text", "json", "sarif" or "github", in UTF-8.
[[nodiscard]] std::string FormatFindings(const std::string& format, const std::vector<CheckedFile>& files);

}  // namespace dialwright::tools
