#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "language/commands.h"
#include "script/dialog_script_manager.h"
#include "support/log_capture.h"

namespace dialwright::testing {
namespace {

struct DocumentedCommand {
    std::string name;
    std::size_t arguments;
};

/// Rows "| `Name` | kind, kind | ...". A comma parts two arguments, and "none" is none.
std::vector<DocumentedCommand> DocumentedCommands() {
    std::ifstream docs(COMMAND_DOCS);
    std::vector<DocumentedCommand> commands;
    for (std::string line; std::getline(docs, line);) {
        if (!line.starts_with("| `Window.")) continue;
        const std::size_t nameEnd = line.find('`', 3);
        const std::size_t begin = line.find("| ", nameEnd) + 2;
        const std::string cell = line.substr(begin, line.find(" |", begin) - begin);
        const auto commas = static_cast<std::size_t>(std::ranges::count(cell, ','));
        commands.push_back({.name = line.substr(3, nameEnd - 3), .arguments = cell == "none" ? 0 : commas + 1});
    }
    return commands;
}

int Validate(const std::string& name, std::size_t tokensAfterTitle) {
    std::wstring line(name.begin(), name.end());
    line += L" class title";
    for (std::size_t i = 0; i < tokensAfterTitle; ++i) line += L" 1";
    return DialogScriptManager().ValidateCommand(line.c_str());
}

TEST(DocumentedArguments, AreTakenWithAndWithoutATimeoutAndNoOtherCount) {
    const LogCapture log;
    const auto commands = DocumentedCommands();
    ASSERT_EQ(kCommandCount, commands.size());
    for (const DocumentedCommand& command : commands) {
        for (std::size_t count = 0; count <= command.arguments + 2; ++count) {
            const bool fits = count == command.arguments || count == command.arguments + 1;
            EXPECT_EQ(fits ? 1 : 0, Validate(command.name, count)) << command.name << " with " << count;
            EXPECT_EQ(fits ? 1 : 0, Validate(command.name + ".NonRegex", count)) << command.name << " with " << count;
        }
    }
}

}  // namespace
}  // namespace dialwright::testing
