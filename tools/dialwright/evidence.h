#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "run/line_runner.h"
#include "run/report.h"
#include "run/secrets.h"

namespace dialwright::tools {

struct EvidenceSettings {
    std::filesystem::path folder;
    /// "tree", "screenshot".
    std::vector<std::string> kinds;
};

/// Writes down how the target of a failed line stands, or all windows where it was not found: without secrets, and with
/// the controls blank that were given one. Returns the files in UTF-8; what cannot be written is told on standard
/// error.
[[nodiscard]] std::vector<std::string> SaveEvidence(const EvidenceSettings& settings, const LineReport& line,
                                                    const LineResult& result, const Redactor& redactor,
                                                    const std::vector<HWND>& controlsWithSecrets);

}  // namespace dialwright::tools
