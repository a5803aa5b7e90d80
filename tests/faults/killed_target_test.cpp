#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "library.h"
#include "output_gate.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/wait.h"

namespace dialwright::testing {
namespace {

void Kill(PracticeWindow& target) {
    target.Process().Kill();
    EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(target.Handle()); }));
}

/// Carries the line out on a target that dies behind the first message with these words. Returns the result; puts what
/// was logged into `log`.
int ExecuteAndKill(PracticeWindow& target, const std::string& words, const std::wstring& line, std::string& log) {
    OutputGate gate(words, [&] { Kill(target); });
    const int result = ExecuteCommand(line);
    log = gate.Close();
    EXPECT_TRUE(gate.WasReached());
    return result;
}

TEST(KilledTarget, WhileACommandWaitsForAControlCostsItsTimeAndNoMore) {
    PracticeWindow target(kPlainClass);
    target.DoAfter(300, L"die");
    const LogCapture log;
    const ULONGLONG begin = ::GetTickCount64();
    EXPECT_EQ(0, ExecuteCommand(target.Line(L"Window.ClickButton", L"4711 1200")));
    EXPECT_GE(::GetTickCount64() - begin, 1190U);
    EXPECT_LT(::GetTickCount64() - begin, 1200U + kPatienceMs);
    EXPECT_FALSE(::IsWindow(target.Handle()));
    EXPECT_GE(log.MessagesFrom("Window::FindChildControl: Child control not found - ID: 4711").size(), 2U);
}

TEST(KilledTarget, BetweenSearchAndLookupHasNoControlLeft) {
    PracticeWindow target;
    std::string log;
    EXPECT_EQ(0, ExecuteAndKill(target, "Window found successfully", target.Line(L"Window.SetText", L"12 x 400"), log));
    EXPECT_TRUE(log.ends_with("Window::SetTextHelper: SetTextHelper - Null control handle\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndTypingIsNotNoticed) {
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(1, ExecuteAndKill(target, "Setting text on control", target.Line(L"Window.SetText", L"12 x 400"), log));
    EXPECT_TRUE(log.ends_with("Window::SimulateMouseClick: Failed to get control rect - Error: 1400\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndClickIsNotNoticed) {
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(1, ExecuteAndKill(target, "Clicking button:", target.Line(L"Window.ClickButton", L"21 400"), log));
    EXPECT_TRUE(log.ends_with("Window::SimulateMouseClick: Failed to get control rect - Error: 1400\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndCheckIsAFailure) {
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(0, ExecuteAndKill(target, "Found matching", target.Line(L"Window.SetCheckbox", L"31 1 400"), log));
    EXPECT_NE(std::string::npos, log.find(") is not a checkbox/radio button\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndSelectionByIndexIsAFailure) {
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(0,
              ExecuteAndKill(target, "Found matching", target.Line(L"Window.SelectDropdown.Index", L"51 1 400"), log));
    EXPECT_NE(std::string::npos, log.find("Index 1 out of range (total items: 0)\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndSelectionByValueIsNotNoticed) {
    // A message to a window that is gone has the result 0, which is that of the first item found and taken.
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(
        1, ExecuteAndKill(target, "Found matching", target.Line(L"Window.SelectDropdown.Value", L"51 Beta 400"), log));
    EXPECT_EQ(std::string::npos, log.find("not found in dropdown")) << log;
}

TEST(KilledTarget, WhileItHangsLetsTheCallReturn) {
    PracticeWindow target(kPlainClass);
    target.DoAfter(1, L"hang 60000");
    ASSERT_EQ("hanging", target.Process().ReadLine(kPatienceMs));
    const LogCapture log;
    std::atomic<int> result = -1;
    std::thread caller([&] { result = ExecuteCommand(target.Line(L"Window.ClearText", L"15 300")); });
    constexpr DWORD kLongerThanTheTimeoutMs = 700;
    EXPECT_FALSE(WaitUntil([&] { return result != -1; }, kLongerThanTheTimeoutMs));
    target.Process().Kill();
    EXPECT_TRUE(WaitUntil([&] { return result != -1; }));
    caller.join();
    EXPECT_EQ(1, result);
}

struct WindowCommand {
    const wchar_t* name;
    const wchar_t* arguments;
    const char* failure;
};

class KilledBeforeItsWindow : public ::testing::TestWithParam<WindowCommand> {};

TEST_P(KilledBeforeItsWindow, WasActedOnFailsAndSaysWhy) {
    PracticeWindow target(kPlainClass);
    const WindowCommand& command = GetParam();
    std::string log;
    EXPECT_EQ(0,
              ExecuteAndKill(target, "Window found successfully", target.Line(command.name, command.arguments), log));
    EXPECT_NE(std::string::npos, log.find(command.failure)) << log;
}

INSTANTIATE_TEST_SUITE_P(
    Commands, KilledBeforeItsWindow,
    ::testing::Values(
        WindowCommand{L"Window.Close", L"400", "Window::CloseWindow: CloseWindow failed with error: 1400\n"},
        WindowCommand{L"Window.Move", L"1,2 3,4 400", "Window::MoveWindow: MoveWindow failed with error: 1400\n"},
        WindowCommand{L"Window.Minimize", L"400", "Window::MinimizeWindow: MinimizeWindow failed with error: 1400\n"},
        WindowCommand{L"Window.Maximize", L"400", "Window::MaximizeWindow: MaximizeWindow failed with error: 1400\n"},
        WindowCommand{L"Window.Restore", L"400", "Window::RestoreWindow: RestoreWindow failed with error: 1400\n"},
        WindowCommand{
            L"Window.BringToFront", L"400",
            "Window::BringToFront: BringToFront failed (Error 1400). Foreground access may be restricted.\n"}),
    [](const auto& info) {
        const std::wstring name = std::wstring(info.param.name).substr(7);
        return std::string(name.begin(), name.end());
    });

}  // namespace
}  // namespace dialwright::testing
