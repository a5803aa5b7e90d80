#pragma once

#include <cstddef>
#include <string>

namespace dialwright::tools {

/// What GitHub's runner shows at a line of a file. All texts are UTF-8 without control characters.
struct Annotation {
    /// "error" or "warning".
    std::string level;
    std::string file;
    std::size_t line = 0;
    /// 0 for the whole line.
    std::size_t column = 0;
    std::string title;
    std::string text;
};

/// The workflow command, with a line end.
[[nodiscard]] std::string GithubAnnotation(const Annotation& annotation);

}  // namespace dialwright::tools
