#pragma once

#include <string>
#include <vector>

namespace dialwright::testing {

using Messages = std::vector<std::string>;

/// A line that ExecuteCommand refuses, and all that it logs then.
struct FailureRow {
    const wchar_t* line;
    Messages log;
};

void ExpectFailures(const std::vector<FailureRow>& rows);

/// The log line of an exception that ended a command.
[[nodiscard]] std::string Thrown(const std::string& what);
/// What an unreadable number logs: "name: text".
[[nodiscard]] Messages Unreadable(const std::string& argument);
/// One line of the manager's: "Function: message".
[[nodiscard]] Messages Refused(const std::string& message);

}  // namespace dialwright::testing
