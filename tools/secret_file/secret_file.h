#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dialwright::tools {

/// A value that must stand in no trace and no report.
struct Secret {
    std::string name;
    std::string value;
    /// Counted from 1.
    int line = 0;
};

/// What a secret file holds: lines NAME=VALUE in UTF-8; blank ones and those that begin with "#" are skipped.
struct SecretFile {
    std::vector<Secret> secrets;
    /// Why the file is refused, without any value; empty when it is right.
    std::string problem;
};

[[nodiscard]] SecretFile ReadSecretFile(std::string_view text);

}  // namespace dialwright::tools
