#include "trace/file_names.h"

namespace dialwright {

TraceFileNames ComposeFileNames(std::string_view directory, std::string_view fileName,
                                std::string_view processSuffix) noexcept {
    const FileNameParts parts = SplitFileName(fileName);
    const auto compose = [&](std::string_view part) {
        TracePath path;
        for (const std::string_view piece : {directory, parts.base, part, processSuffix, parts.extension}) {
            path.Append(piece);
        }
        return path;
    };
    return {.main = compose(""),
            .error = compose("_error"),
            .first = compose("_1"),
            .firstError = compose("_1_error"),
            .second = compose("_2"),
            .secondError = compose("_2_error")};
}

}  // namespace dialwright
