#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "library.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"

namespace dialwright::testing {
namespace {

using Messages = std::vector<std::string>;

std::string Narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

TEST(ValidateScript, ChecksLinesInOrderAndStopsAtTheFirstBadOne) {
    const LogCapture log;
    EXPECT_EQ(0, ValidateScript(L"Window.Close c t\r\n\r\n  \nWindow.Foo c t\nWindow.Restore c t\n"));
    EXPECT_EQ((Messages{"DialogScriptManager::ValidateScript: Validating command: Window.Close c t\r",
                        "DialogScriptManager::ValidateScript: Validating command: Window.Foo c t",
                        "DialogScriptManager::ValidateCommand: Unknown command: Window.Foo",
                        "DialogScriptManager::ValidateScript: Invalid command: Window.Foo c t"}),
              log.Messages());
}

TEST(ValidateScript, AcceptsOneLineAmongBlankOnes) {
    const LogCapture log;
    EXPECT_EQ(1, ValidateScript(L"\n \r\nWindow.Close c t\n\t\n"));
    EXPECT_EQ((Messages{"DialogScriptManager::ValidateScript: Validating command: Window.Close c t"}), log.Messages());
}

TEST(Scripts, AreRefusedWhenEmpty) {
    for (const wchar_t* script : {L"", L" \t\r\n", L"\n\n"}) {
        const LogCapture log;
        EXPECT_EQ(0, ValidateScript(script));
        EXPECT_EQ(0, ExecuteScript(script));
        EXPECT_EQ((Messages{"DialogScriptManager::ValidateScript: Script is empty",
                            "DialogScriptManager::ExecuteScript: Script is empty"}),
                  log.Messages());
    }
}

TEST(ExecuteScript, ActsLineByLineAndStopsAtTheFirstFailure) {
    const PracticeWindow target(kPlainClass);
    const std::wstring clear = target.Line(L"Window.ClearText", L"15");
    const std::wstring third = target.Line(L"Window.SetText", L"12 never 500");
    const LogCapture log;
    EXPECT_EQ(0, ExecuteScript(clear + L"\nWindow.Clear c t\n" + third));
    EXPECT_EQ(L"", TextOf(target.Control(15)));
    EXPECT_EQ(L"", TextOf(target.Control(12)));
    const Messages messages = log.Messages();
    EXPECT_EQ("DialogScriptManager::ExecuteScript: Executing command: " + Narrow(clear), messages.front());
    const Messages end(messages.end() - 3, messages.end());
    EXPECT_EQ((Messages{"DialogScriptManager::ExecuteScript: Executing command: Window.Clear c t",
                        "DialogScriptManager::ExecuteCommand: Unknown command: Window.Clear",
                        "DialogScriptManager::ExecuteScript: Invalid command: Window.Clear c t"}),
              end);
}

TEST(ValidateScript, TouchesNoWindow) {
    PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_EQ(0, ValidateScript(target.Line(L"Window.ClearText", L"15") + L"\nWindow.Clear c t"));
    EXPECT_EQ(Messages{}, target.TakeAllEvents());
    EXPECT_EQ(L"Hello", TextOf(target.Control(15)));
}

TEST(ExecuteScript, ReportsAFailedActionInTheSameWords) {
    const LogCapture log;
    EXPECT_EQ(0, ExecuteScript(L"Window.Close NoSuchClass none 1"));
    EXPECT_EQ("DialogScriptManager::ExecuteScript: Invalid command: Window.Close NoSuchClass none 1",
              log.Messages().back());
}

TEST(ExecuteScript, TurnsALinesExceptionIntoItsFailure) {
    const LogCapture log;
    EXPECT_EQ(0, ExecuteScript(L"Window.ClickButton c t abc"));
    EXPECT_EQ((Messages{"DialogScriptManager::ExecuteScript: Executing command: Window.ClickButton c t abc",
                        "DialogScriptManager::ParseInt: Invalid button ID: abc",
                        "DialogScriptManager::ExecuteCommand: Exception during command execution: Invalid argument",
                        "DialogScriptManager::ExecuteScript: Invalid command: Window.ClickButton c t abc"}),
              log.Messages());
}

TEST(ExecuteScript, ReturnsOneWithoutASummaryWhenAllIsDone) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_EQ(1, ExecuteScript(target.Line(L"Window.ClearText", L"15") + L"\r\n\r\n" +
                               target.Line(L"Window.SetText", L"15 new 5000") + L"\r\n"));
    EXPECT_EQ(L"new", TextOf(target.Control(15)));
    EXPECT_TRUE(log.Messages().back().starts_with("Window::SimulateMouseClick: ")) << log.Messages().back();
}

TEST(Scripts, NeverLogATextThatHasATimeoutOrIsNoNumber) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_EQ(1, ExecuteScript(target.Line(L"Window.SetText", L"12 \"S3CRET one\" 5000") + L"\n" +
                               target.Line(L"Window.SetText.NonRegex", L"14 S3CRET") + L"\n" +
                               target.Line(L"Window.SetText.Path", L"2 \"4711 S3CRET\" 5000")));
    EXPECT_EQ(0, ValidateScript(L"Window.SetText c t 1 S3CRET 5 too many"));
    const std::string text = log.Text();
    // The malformed line has its last word hidden instead: it is not a line that types anything.
    const std::size_t malformed = text.find("Validating command");
    EXPECT_EQ(std::string::npos, text.substr(0, malformed).find("S3CRET"));
    EXPECT_NE(std::string::npos, text.find("\"12\" \"*****\" 5000\n"));
}

TEST(Scripts, HideTheTextAlsoWhereTheLineFails) {
    const LogCapture log;
    EXPECT_EQ(0, ExecuteScript(L"Window.SetText NoSuchClass none 12 S3CRET 1"));
    EXPECT_EQ(0, ExecuteScript(L"Window.SetText.Position c t 1,2 3 S3CRET 1"));
    EXPECT_EQ(
        "DialogScriptManager::ExecuteScript: Invalid command: Window.SetText.Position \"c\" \"t\" \"1,2\" \"3\" "
        "\"*****\" 1",
        log.Messages().back());
    EXPECT_EQ(std::string::npos, log.Text().find("S3CRET"));
}

TEST(Scripts, LogANumberWithoutATimeoutInClear) {
    const LogCapture log;
    EXPECT_EQ(1, ValidateScript(L"Window.SetText c t 1001 4711"));
    EXPECT_EQ((Messages{"DialogScriptManager::ValidateScript: Validating command: Window.SetText \"c\" \"t\" \"*****\" "
                        "4711"}),
              log.Messages());
}

}  // namespace
}  // namespace dialwright::testing
