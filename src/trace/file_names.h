#pragma once

#include <string_view>

#include "trace/fixed_text.h"

namespace dialwright {

struct FileNameParts {
    std::string_view base;
    std::string_view extension;
};

/// The extension begins at the last "."; a name without one is all base, a name that begins with its only one is all
/// extension.
[[nodiscard]] constexpr FileNameParts SplitFileName(std::string_view name) noexcept {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos) return {.base = name, .extension = {}};
    return {.base = name.substr(0, dot), .extension = name.substr(dot)};
}

/// All paths of a logger's files; main and error are those without a number.
struct TraceFileNames {
    TracePath main;
    TracePath error;
    TracePath first;
    TracePath firstError;
    TracePath second;
    TracePath secondError;
};

/// `directory` ends in "\"; `processSuffix` is "" or "_pid_" with the process ID. Each path is cut to 259 characters.
[[nodiscard]] TraceFileNames ComposeFileNames(std::string_view directory, std::string_view fileName,
                                              std::string_view processSuffix) noexcept;

}  // namespace dialwright
