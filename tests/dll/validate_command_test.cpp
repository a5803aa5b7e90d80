#include <gtest/gtest.h>

#include <string>

#include "language/commands.h"
#include "library.h"
#include "support/log_capture.h"

namespace dialwright::testing {
namespace {

struct Row {
    const wchar_t* line;
    int result;
    const char* log;
};

TEST(ValidateCommand, AnswersAndLogsSo) {
    const Row rows[] = {
        {L"Window.Close Cls Title", 1, ""},
        {L"Window.Close Cls Title 500", 1, ""},
        {L"Window.Close Cls Title 500 x", 0,
         "DialogScriptManager::ValidateCommandArgs: Invalid argument count for Window.Close\n"},
        {L"Window.Close Cls", 0, "DialogScriptManager::ValidateCommandArgs: Invalid argument count for Window.Close\n"},
        {L"Window.Close.NonRegex Cls Title", 1, ""},
        {L"Window.Close.NonRegex Cls", 0,
         "DialogScriptManager::ValidateCommandArgs: Invalid argument count for Window.Close\n"},
        {L"window.close Cls Title", 0, "DialogScriptManager::ValidateCommand: Unknown command: window.close\n"},
        {L"Window.Foo.NonRegex Cls Title", 0, "DialogScriptManager::ValidateCommand: Unknown command: Window.Foo\n"},
        {L".NonRegex Cls Title", 0, "DialogScriptManager::ValidateCommand: Unknown command: .NonRegex\n"},
        {LR"(Window.Close Cls "")", 0,
         "DialogScriptManager::ValidateCommandArgs: Argument 2 is empty for Window.Close\n"},
        {LR"(Window.Close "" "")", 0,
         "DialogScriptManager::ValidateCommandArgs: Argument 1 is empty for Window.Close\n"},
        {LR"(Window.Close Cls Title "")", 0,
         "DialogScriptManager::ValidateCommandArgs: Argument 3 is empty for Window.Close\n"},
        {LR"("" Cls Title)", 0, "DialogScriptManager::ValidateCommand: Unknown command: \n"},
        {L"Window.SetText Cls Title abc text", 1, ""},
        {L"Window.Close ( [", 1, ""},
        {L"", 0, "DialogScriptManager::ValidateCommand: Empty command\n"},
        {L" \t\r\n", 0, "DialogScriptManager::ValidateCommand: Empty command\n"},
        {L"\x65E5\x672C", 0, "DialogScriptManager::ValidateCommand: Unknown command: \xE6\x97\xA5\xE6\x9C\xAC\n"},
        // Near misses of names that are irregular.
        {L"Window.SetText.ByPath c t 1 x", 0,
         "DialogScriptManager::ValidateCommand: Unknown command: Window.SetText.ByPath\n"},
        {L"Window.SelectRadio.Path c t 1", 0,
         "DialogScriptManager::ValidateCommand: Unknown command: Window.SelectRadio.Path\n"},
        {L"Window.SelectDropdown c t 1 x", 0,
         "DialogScriptManager::ValidateCommand: Unknown command: Window.SelectDropdown\n"},
        {L"Window.SelectDropdown.Path.Value c t 1 x", 0,
         "DialogScriptManager::ValidateCommand: Unknown command: Window.SelectDropdown.Path.Value\n"},
        {L"Window.Maximise c t", 0, "DialogScriptManager::ValidateCommand: Unknown command: Window.Maximise\n"},
    };
    for (const Row& row : rows) {
        const LogCapture log;
        EXPECT_EQ(row.result, ValidateCommand(row.line)) << ::testing::PrintToString(row.line);
        EXPECT_EQ(row.log, log.Text());
    }
}

TEST(ValidateCommand, AcceptsEachCommandWithItsCountsAndNoOthers) {
    const LogCapture log;
    for (const CommandSpec& spec : kCommands) {
        std::wstring line(spec.name);
        for (std::uint64_t tokens = 1; tokens <= spec.MaxTokens() + 1; ++tokens) {
            const bool valid = tokens >= spec.minTokens && tokens <= spec.MaxTokens();
            EXPECT_EQ(valid ? 1 : 0, ValidateCommand(line)) << ::testing::PrintToString(line);
            line += L" x";
        }
    }
}

}  // namespace
}  // namespace dialwright::testing
