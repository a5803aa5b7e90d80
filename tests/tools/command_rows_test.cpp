#include "trace_reader/command_rows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace dialwright::tools {
namespace {

constexpr const char* kSearch = "Window::Window: Initializing window search:\n Class:    Notepad\n Title:    .*";
constexpr const char* kFound = "info Window::Window: Window found successfully. Parent Window Handle: 0x1";

/// A trace whose lines come 1 ms apart.
class Trace {
public:
    /// "level function: message", of this thread.
    Trace& Says(const std::string& text, int thread = 1) {
        const std::size_t blank = text.find(' ');
        const std::string level = std::string(7 - blank, ' ') + text.substr(0, blank);
        const std::string number = std::to_string(1000 + milliseconds++).substr(1);
        const std::string line = "[2025-09-08 14:05:23." + number + "0000 UTC+00:00] [7:" + std::to_string(thread) +
                                 "] [Dialwright  40 " + level + "] " + text.substr(blank + 1);
        rows.Add(0, ReadFields(line));
        return *this;
    }
    Trace& Searches(int thread = 1) { return Says("info " + std::string(kSearch), thread).Says(kFound, thread); }
    Trace& Announces(const std::string& line, int thread = 1) {
        return Says("info DialogScriptManager::ExecuteScript: Executing command: " + line, thread);
    }

    [[nodiscard]] std::vector<CommandRow> Rows() { return rows.Take(); }

    /// Each row as "result attempts command".
    [[nodiscard]] std::vector<std::string> Short() {
        std::vector<std::string> all;
        for (const CommandRow& row : Rows()) {
            all.push_back(std::string(NameOf(row.result)) + " " + std::to_string(row.attempts) + " " + row.command);
        }
        return all;
    }

private:
    CommandRows rows;
    int milliseconds = 0;
};

using Rows = std::vector<std::string>;

TEST(CommandRows, OfAScriptHaveItsLines) {
    Trace trace;
    trace.Announces("Window.Close a b").Searches().Says("debug Window::CloseWindow: Window close requested");
    trace.Announces("Window.Minimize a b").Searches().Says("debug Window::MinimizeWindow: Window minimized");
    EXPECT_EQ((Rows{"ok 1 Window.Close a b", "ok 1 Window.Minimize a b"}), trace.Short());
}

TEST(CommandRows, TellTimeDurationAndTheLastProblem) {
    Trace trace;
    trace.Announces("Window.ClickButton a b 1").Searches();
    trace.Says("error Window::FindChildControl: Child control not found - ID: 1");
    trace.Says("error Window::ClickHelper: ClickHelper - Null button handle");
    trace.Says("error DialogScriptManager::ExecuteScript: Invalid command: Window.ClickButton a b 1");
    const std::vector<CommandRow> rows = trace.Rows();
    ASSERT_EQ(1U, rows.size());
    EXPECT_EQ("2025-09-08 14:05:23.0000000", rows[0].time);
    EXPECT_EQ(7U, rows[0].process);
    EXPECT_EQ(1U, rows[0].thread);
    EXPECT_EQ(5000, rows[0].durationMicroseconds);
    EXPECT_EQ(CommandResult::Failed, rows[0].result);
    EXPECT_EQ(TraceLevel::Error, rows[0].problemLevel);
    EXPECT_EQ("Window::ClickHelper: ClickHelper - Null button handle", rows[0].problem);
    EXPECT_TRUE(rows[0].fromScript);
}

TEST(CommandRows, CountTheAttempts) {
    Trace trace;
    trace.Announces("Window.ClearText a b 1").Searches();
    for (int attempt = 0; attempt < 3; ++attempt) {
        trace.Says("error Window::FindChildControl: Child control not found - ID: 1");
    }
    trace.Says("info Window::FindChildControl::<lambda_1>::operator (): Found matching child control: Handle: 0x1");
    trace.Says("debug Window::ClearTextHelper: Cleared text for control HWND 0x1");
    EXPECT_EQ((Rows{"ok 4 Window.ClearText a b 1"}), trace.Short());
}

TEST(CommandRows, CountOneAttemptForEachWayToLook) {
    for (const char* line : {"debug Window::GetControlHandle: Standard dialog control handle: 0x1",
                             "debug Window::FindControlByHierarchy: Starting to find control by hierarchy.",
                             "info Window::FindControlByPosition: Starting position-based search:\n x"}) {
        Trace trace;
        trace.Announces("x").Searches().Says(line).Says("debug Window::FindControlByHierarchy: Processing segment: 1");
        EXPECT_EQ((Rows{"unknown 1 x"}), trace.Short()) << line;
    }
}

TEST(CommandRows, KeepThreadsApart) {
    Trace trace;
    trace.Announces("one", 1).Announces("two", 2).Searches(1).Searches(2);
    trace.Says("debug Window::CloseWindow: Window close requested", 2);
    trace.Says("error DialogScriptManager::ExecuteScript: Invalid command: one", 1);
    EXPECT_EQ((Rows{"failed 0 one", "ok 1 two"}), trace.Short());
}

TEST(CommandRows, OfCommandsAloneTellWhatTheyLookedFor) {
    Trace trace;
    trace.Searches().Says("info Window::ClickHelper: Clicking button:");
    trace.Says("debug Window::SimulateMouseClick: Simulating click at center point (1, 1)");
    trace.Says("info " + std::string(kSearch)).Says("error Window::Window: Window search failed after 100ms");
    EXPECT_EQ((Rows{R"(ok 0 class "Notepad" title ".*")", R"(failed 0 class "Notepad" title ".*")"}), trace.Short());
}

TEST(CommandRows, OfACommandAloneThatLeavesNoEndAreJudgedByWhatComesNext) {
    Trace succeeds;
    succeeds.Searches().Says("info Window::FindChildControl::<lambda_1>::operator (): Found matching child control");
    succeeds.Searches();
    EXPECT_EQ((Rows{R"(ok 1 class "Notepad" title ".*")", R"(unknown 0 class "Notepad" title ".*")"}),
              succeeds.Short());
    Trace fails;
    fails.Searches().Says("error Window::SelectDropdownByValueInternal: Value 'x' not found in dropdown").Searches();
    EXPECT_EQ((Rows{R"(failed 0 class "Notepad" title ".*")", R"(unknown 0 class "Notepad" title ".*")"}),
              fails.Short());
}

TEST(CommandRows, TakeAClickThatEndsTheWindowForASuccess) {
    Trace trace;
    trace.Searches().Says("error Window::SimulateMouseClick: Failed to get control rect - Error: 1400").Searches();
    EXPECT_EQ(R"(ok 0 class "Notepad" title ".*")", trace.Short().front());
}

TEST(CommandRows, OfRefusedLinesHaveWhatWasSaid) {
    const std::string tag = "error DialogScriptManager::";
    Trace trace;
    trace.Says(tag + "ExecuteCommand: Unknown command: Bogus");
    trace.Says(tag + "ValidateCommandArgs: Invalid argument count for Window.Close");
    trace.Says(tag + "ParseInt: Invalid control ID: x");
    trace.Says(tag + "ExecuteCommand: Exception during command execution: Invalid argument");
    trace.Says(tag + "ExecuteCheckboxByID: Invalid checkbox state: 2");
    trace.Searches();
    EXPECT_EQ((Rows{"failed 0 Unknown command: Bogus", "failed 0 Invalid argument count for Window.Close",
                    "failed 0 Invalid control ID: x", "failed 0 Invalid checkbox state: 2",
                    R"(unknown 0 class "Notepad" title ".*")"}),
              trace.Short());
}

TEST(CommandRows, OfAScriptThatIsRefusedHaveOneRow) {
    const std::string tag = "error DialogScriptManager::";
    Trace trace;
    trace.Announces("Window.ClearText a b x").Says(tag + "ParseInt: Invalid control ID: x");
    trace.Says(tag + "ExecuteCommand: Exception during command execution: Invalid argument");
    trace.Says(tag + "ExecuteScript: Invalid command: Window.ClearText a b x");
    EXPECT_EQ((Rows{"failed 0 Window.ClearText a b x"}), trace.Short());
}

TEST(CommandRows, LeaveOutWhatIsOnlyValidated) {
    Trace trace;
    trace.Says("info DialogScriptManager::ValidateScript: Validating command: Window.Close a b");
    trace.Says("error DialogScriptManager::ValidateCommand: Unknown command: Bogus");
    EXPECT_EQ(Rows{}, trace.Short());
}

TEST(CommandRows, BeginInTheMidstWhereTheTraceDoes) {
    Trace trace;
    trace.Says("info Window::ClickHelper: Clicking button:");
    trace.Says("debug Window::SimulateMouseClick: Simulating click at center point (1, 1)");
    EXPECT_EQ((Rows{"ok 0 (began before this trace)"}), trace.Short());
}

}  // namespace
}  // namespace dialwright::tools
