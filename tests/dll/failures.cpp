#include "failures.h"

#include <gtest/gtest.h>

#include "library.h"
#include "support/log_capture.h"

namespace dialwright::testing {

std::string Thrown(const std::string& what) {
    return "DialogScriptManager::ExecuteCommand: Exception during command execution: " + what;
}

Messages Unreadable(const std::string& argument) {
    return {"DialogScriptManager::ParseInt: Invalid " + argument, Thrown("Invalid argument")};
}

Messages Refused(const std::string& message) { return {"DialogScriptManager::" + message}; }

void ExpectFailures(const std::vector<FailureRow>& rows) {
    for (const FailureRow& row : rows) {
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(row.line)) << ::testing::PrintToString(row.line);
        EXPECT_EQ(row.log, log.Messages()) << ::testing::PrintToString(row.line);
    }
}

}  // namespace dialwright::testing
