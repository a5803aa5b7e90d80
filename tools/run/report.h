#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace dialwright::tools {

enum class LineStatus : std::uint8_t { Ok, Failed, Skipped, Planned };

/// What became of one line. All texts are UTF-8 without secrets; control characters may be in them.
struct LineReport {
    std::string file;
    std::size_t line = 0;
    /// The line with its typed text masked.
    std::string text;
    LineStatus status = LineStatus::Skipped;
    double milliseconds = 0;
    /// Only of a failed line.
    std::string code;
    std::string reason;
    std::string suggestion;
    /// What else is to be said of a line that is done, such as the dialog that it opened.
    std::string note;
    /// What the library said of it.
    std::vector<std::string> messages;
    /// Files that a failed line left.
    std::vector<std::string> files;

    /// The messages as lines; the further lines of a message are set in.
    [[nodiscard]] std::vector<std::string> MessageLines() const;
};

struct FileReport {
    std::string file;
    std::vector<LineReport> lines;

    [[nodiscard]] std::size_t Count(LineStatus status) const;
    [[nodiscard]] double Milliseconds() const;
};

struct RunReport {
    std::vector<FileReport> files;
    int exitCode = 0;
    /// Where the workers' trace lies.
    std::string traceFolder;
    /// False: another worker may have taken the trace file.
    bool traceIsOwn = true;

    [[nodiscard]] std::size_t Count(LineStatus status) const;
};

}  // namespace dialwright::tools
