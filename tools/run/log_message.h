#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dialwright::tools {

/// A message of the library as it comes on standard output, in UTF-8; its further lines are joined by line feeds.
struct LogMessage {
    std::string tag;
    std::string text;
};

/// Puts messages together from the lines of the library's standard output.
class MessageCollector {
public:
    /// A line without its line end.
    void Add(std::string_view line);

    [[nodiscard]] const std::vector<LogMessage>& All() const { return messages; }

private:
    std::vector<LogMessage> messages;
};

}  // namespace dialwright::tools
