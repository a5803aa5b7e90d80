#pragma once

#include <string>
#include <vector>

#include "support/diverted_output.h"

namespace dialwright::testing {

/// Takes over this process's standard output, where the library copies its log; gives it back when destroyed.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// All that was written so far, to the byte.
    [[nodiscard]] std::string Text() const;

    /// The same as messages: a line that begins with the 80-space indent continues the one before.
    [[nodiscard]] std::vector<std::string> Messages() const;

    /// Only the messages that begin with this text.
    [[nodiscard]] std::vector<std::string> MessagesFrom(const std::string& beginning) const;

private:
    int file;
    DivertedOutput output;
};

}  // namespace dialwright::testing
