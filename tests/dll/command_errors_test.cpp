#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "failures.h"
#include "language/commands.h"
#include "library.h"
#include "support/log_capture.h"
#include "support/patience.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"

namespace dialwright::testing {
namespace {

TEST(ExecuteCommand, RefusesAMisshapenLineBeforeAnySearch) {
    ExpectFailures({
        {L"", Refused("ExecuteCommand: Empty command")},
        {L" \t ", Refused("ExecuteCommand: Empty command")},
        {L"window.close c t", Refused("ExecuteCommand: Unknown command: window.close")},
        {L"Window.Foo.NonRegex c t", Refused("ExecuteCommand: Unknown command: Window.Foo")},
        {L"Window.ClickButton Cls Title",
         Refused("ValidateCommandArgs: Invalid argument count for Window.ClickButton")},
        {L"Window.SetText a b 1 c 5 x", Refused("ValidateCommandArgs: Invalid argument count for Window.SetText")},
        {LR"(Window.ClickButton Cls "" 5)", Refused("ValidateCommandArgs: Argument 2 is empty for Window.ClickButton")},
        {LR"(Window.SetText c t 5 "")", Refused("ValidateCommandArgs: Argument 4 is empty for Window.SetText")},
    });
}

TEST(ExecuteCommand, RefusesUnreadableNumbersBeforeAnySearch) {
    ExpectFailures({
        {L"Window.SetText c t abc text", Unreadable("control ID: abc")},
        {L"Window.ClickButton Cls Title abc", Unreadable("button ID: abc")},
        {L"Window.ClickButton Cls Title 4294967296", Unreadable("button ID: 4294967296")},
        {L"Window.SelectDropdown.Value c t x y", Unreadable("control ID: x")},
        {L"Window.SelectDropdown.Index c t x y", Unreadable("control ID: x")},
        {L"Window.SelectDropdown.Index c t 1 y", Unreadable("dropdown index: y")},
        {L"Window.SelectDropdown.ByPath.Index c t 1 y", Unreadable("dropdown index: y")},
        {L"Window.ClearText c t x", Unreadable("control ID: x")},
        {L"Window.SelectRadio c t x", Unreadable("control ID: x")},
        {L"Window.SetCheckbox c t x y", Unreadable("control ID: x")},
        {L"Window.SetCheckbox c t 1 y", Unreadable("state: y")},
        {L"Window.SetCheckbox.ByPath c t 1 y", Unreadable("state: y")},
        {L"Window.ClickButton c t \xD83D", Unreadable("button ID: \xEF\xBF\xBD")},
    });
}

TEST(ExecuteCommand, RefusesStatesOtherThan0And1BeforeAnySearch) {
    ExpectFailures({
        {L"Window.SetCheckbox Cls Title 7 2", Refused("ExecuteCheckboxByID: Invalid checkbox state: 2")},
        {L"Window.SetCheckbox Cls Title 7 -1", Refused("ExecuteCheckboxByID: Invalid checkbox state: -1")},
        {L"Window.SetCheckbox.ByPath Cls Title x 2", Refused("ExecuteCheckboxByPath: Invalid checkbox state: 2")},
    });
}

TEST(ExecuteCommand, RefusesAnUnreadableTimeoutOfAnyCommand) {
    ExpectFailures({
        {L"Window.Close c t x", {Thrown("invalid stoul argument")}},
        {L"Window.Close c t 4294967296", {Thrown("stoul argument out of range")}},
        {L"Window.ClickButton c t abc x", {Thrown("invalid stoul argument")}},  // before the ID is read
        {L"Window.SetCheckbox c t 7 2 x", {Thrown("invalid stoul argument")}},
        {L"Window.Move c t 1 2 x", {Thrown("invalid stoul argument")}},
    });
}

TEST(ExecuteCommand, RefusesAnUnreadableTimeoutBehindEachCommand) {
    for (const CommandSpec& spec : kCommands) {
        std::wstring line(spec.name);
        for (std::uint64_t token = 1; token < spec.MaxTokens(); ++token) line += L" x";
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(line));
        EXPECT_EQ((Messages{Thrown("invalid stoul argument")}), log.Messages());
    }
}

TEST(ExecuteCommand, ReportsAMalformedPathOnceWithoutARetry) {
    const PracticeWindow target(kPlainClass);
    for (const auto& [path, error] :
         {std::pair(L"1.x", "invalid stoi argument"), std::pair(L"x", "invalid stoi argument"),
          std::pair(L"1..2", "invalid stoi argument"), std::pair(L"99999999999", "stoi argument out of range")}) {
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(target.Line(L"Window.ClickButton.Path", std::wstring(path) + L" 5000")));
        EXPECT_EQ(Thrown(error), log.Messages().back());
        EXPECT_EQ(1U, log.MessagesFrom("Window::FindControlByHierarchy: Starting to find").size());
    }
}

TEST(ExecuteCommand, FindsNothingAtPaths0AndMinus1) {
    const PracticeWindow target(kPlainClass);
    const std::wstring timeout = L" " + std::to_wstring(Patient(150));
    for (const wchar_t* path : {L"0", L"-1"}) {
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(target.Line(L"Window.ClickButton.Path", path + timeout)));
        EXPECT_EQ("Window::ClickHelper: ClickHelper - Null button handle", log.Messages().back());
    }
}

TEST(ExecuteCommand, ReportsAnInvalidExpressionAfterTheStartLineAlone) {
    for (const wchar_t* line :
         {L"Window.Close Cls ( 5000", L"Window.Close [ Title 5000", L"Window.Close Cls *a 5000"}) {
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(line));
        const Messages messages = log.Messages();
        ASSERT_EQ(2U, messages.size());
        EXPECT_TRUE(messages[0].starts_with("Window::Window: Initializing window search:"));
        EXPECT_TRUE(messages[1].starts_with(Thrown(""))) << messages[1];
    }
}

TEST(ExecuteCommand, ReportsAnExplodingExpressionLikeAnyOther) {
    const PracticeWindow target(kPlainClass, {}, std::wstring(60, L'a') + UniqueTitle());
    const LogCapture log;
    EXPECT_EQ(0, ExecuteCommand(L"Window.Close PracticeTarget (a+)+b 20000"));
    EXPECT_EQ(Thrown(std::regex_error(std::regex_constants::error_complexity).what()), log.Messages().back());
}

TEST(ExecuteCommand, ReportsATooLargePatternLikeAnyOther) {
    const std::string complexity = std::regex_error(std::regex_constants::error_complexity).what();
    for (const std::wstring& pattern :
         {std::wstring(4097, L'x'), std::wstring(501, L'(') + L"x" + std::wstring(501, L')')}) {
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(L"Window.Close Cls " + pattern + L" 5000"));
        const Messages messages = log.Messages();
        ASSERT_EQ(2U, messages.size());
        EXPECT_EQ(Thrown(complexity), messages[1]);
    }
}

TEST(ExecuteCommand, ReadsLeadingDigitsAsTheNumber) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.ClearText", L"15abc 5000ms")));
    EXPECT_EQ(L"", TextOf(target.Control(15)));
}

TEST(ExecuteCommand, PassesTextsOnAsTheyAreWritten) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.SetText", LR"(12 " 100% \"C:\\x\" ")")));
    EXPECT_EQ(LR"( 100% "C:\x" )", TextOf(target.Control(12)));
    EXPECT_EQ(std::string::npos, log.Text().find("100%"));
}

}  // namespace
}  // namespace dialwright::testing
