#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <string>
#include <string_view>
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
    std::string log;
    const ULONGLONG begin = ::GetTickCount64();
    EXPECT_EQ(0, ExecuteAndKill(target, "Child control not found - ID: 4711",
                                target.Line(L"Window.ClickButton", L"4711 1200"), log));
    EXPECT_GE(::GetTickCount64() - begin, 1190U);
    EXPECT_LT(::GetTickCount64() - begin, 1200U + kPatienceMs);
    constexpr std::string_view kTry = "Child control not found - ID: 4711";
    EXPECT_NE(log.find(kTry), log.rfind(kTry)) << log;
}

TEST(KilledTarget, BetweenSearchAndLookupHasNoControlLeft) {
    PracticeWindow target;
    std::string log;
    EXPECT_EQ(0,
              ExecuteAndKill(target, "Window found successfully", target.BriefLine(L"Window.SetText", L"12 x"), log));
    EXPECT_TRUE(log.ends_with("Window::SetTextHelper: SetTextHelper - Null control handle\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndTypingIsNotNoticed) {
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(1, ExecuteAndKill(target, "Setting text on control", target.BriefLine(L"Window.SetText", L"12 x"), log));
    EXPECT_TRUE(log.ends_with("Window::SimulateMouseClick: Failed to get control rect - Error: 1400\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndClickIsNotNoticed) {
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(1, ExecuteAndKill(target, "Clicking button:", target.BriefLine(L"Window.ClickButton", L"21"), log));
    EXPECT_TRUE(log.ends_with("Window::SimulateMouseClick: Failed to get control rect - Error: 1400\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndCheckIsAFailure) {
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(0, ExecuteAndKill(target, "Found matching", target.BriefLine(L"Window.SetCheckbox", L"31 1"), log));
    EXPECT_NE(std::string::npos, log.find(") is not a checkbox/radio button\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndSelectionByIndexIsAFailure) {
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(0,
              ExecuteAndKill(target, "Found matching", target.BriefLine(L"Window.SelectDropdown.Index", L"51 1"), log));
    EXPECT_NE(std::string::npos, log.find("Index 1 out of range (total items: 0)\n")) << log;
}

TEST(KilledTarget, BetweenLookupAndSelectionByValueIsNotNoticed) {
    // A message to a window that is gone has the result 0, which is that of the first item found and taken.
    PracticeWindow target(kPlainClass);
    std::string log;
    EXPECT_EQ(
        1, ExecuteAndKill(target, "Found matching", target.BriefLine(L"Window.SelectDropdown.Value", L"51 Beta"), log));
    EXPECT_EQ(std::string::npos, log.find("not found in dropdown")) << log;
}

/// Lets the target hang from now on, for longer than any test takes.
void Hang(PracticeWindow& target) {
    target.Process().WriteLine("hang 600000");
    while (target.Process().ReadLine(kPatienceMs).value_or("hanging") != "hanging") continue;
}

/// A command that is carried out on a thread of its own.
class Call {
public:
    explicit Call(const std::wstring& line) : thread([this, line] { result = ExecuteCommand(line); }) {}
    ~Call() { thread.join(); }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    /// Nothing while it goes on after so many milliseconds.
    [[nodiscard]] std::optional<int> ResultWithin(DWORD milliseconds) const {
        constexpr int kNone = -1;
        return WaitUntil([&] { return result != kNone; }, milliseconds) ? std::optional<int>(result) : std::nullopt;
    }

private:
    std::atomic<int> result = -1;
    std::thread thread;
};

TEST(HungTarget, IsAskedToCloseAtOnce) {
    PracticeWindow target(kPlainClass);
    Hang(target);
    const LogCapture log;
    const Call call(target.BriefLine(L"Window.Close"));
    EXPECT_EQ(1, call.ResultWithin(kPatienceMs));
    EXPECT_TRUE(::IsWindow(target.Handle()));
    target.Process().Kill();
}

struct HeldUpCommand {
    const wchar_t* name;
    const wchar_t* arguments;
    int result;
};

class HungTargetHoldsUp : public ::testing::TestWithParam<HeldUpCommand> {};

TEST_P(HungTargetHoldsUp, ACommandBeyondItsTimeoutUntilItIsKilled) {
    PracticeWindow target(kPlainClass);
    Hang(target);
    const HeldUpCommand& command = GetParam();
    const LogCapture log;
    const DWORD timeoutMs = Patient(kBriefMs);
    const Call call(target.Line(command.name, std::wstring(command.arguments) + std::to_wstring(timeoutMs)));
    constexpr DWORD kBeyondMs = 400;
    EXPECT_EQ(std::nullopt, call.ResultWithin(timeoutMs + kBeyondMs));
    target.Process().Kill();
    EXPECT_EQ(command.result, call.ResultWithin(kPatienceMs));
}

template <class Command>
std::string NameOfTest(const ::testing::TestParamInfo<Command>& info) {
    std::wstring name = std::wstring(info.param.name).substr(7);
    std::erase(name, L'.');
    return std::string(name.begin(), name.end());
}

INSTANTIATE_TEST_SUITE_P(
    Commands, HungTargetHoldsUp,
    ::testing::Values(HeldUpCommand{L"Window.SetText", L"12 x ", 1}, HeldUpCommand{L"Window.ClearText", L"15 ", 1},
                      HeldUpCommand{L"Window.ClickButton", L"21 ", 1},
                      HeldUpCommand{L"Window.SetCheckbox", L"31 1 ", 0},
                      HeldUpCommand{L"Window.SelectRadio", L"41 ", 0},
                      HeldUpCommand{L"Window.SelectDropdown.Index", L"51 1 ", 0},
                      HeldUpCommand{L"Window.SelectDropdown.Value", L"51 Beta ", 1},
                      HeldUpCommand{L"Window.Move", L"1,2 300,400 ", 0}, HeldUpCommand{L"Window.Minimize", L"", 0},
                      HeldUpCommand{L"Window.Maximize", L"", 0}, HeldUpCommand{L"Window.Restore", L"", 0},
                      HeldUpCommand{L"Window.BringToFront", L"", 0}),
    NameOfTest<HeldUpCommand>);

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
    EXPECT_EQ(
        0, ExecuteAndKill(target, "Window found successfully", target.BriefLine(command.name, command.arguments), log));
    EXPECT_NE(std::string::npos, log.find(command.failure)) << log;
}

INSTANTIATE_TEST_SUITE_P(
    Commands, KilledBeforeItsWindow,
    ::testing::Values(
        WindowCommand{L"Window.Close", L"", "Window::CloseWindow: CloseWindow failed with error: 1400\n"},
        WindowCommand{L"Window.Move", L"1,2 3,4", "Window::MoveWindow: MoveWindow failed with error: 1400\n"},
        WindowCommand{L"Window.Minimize", L"", "Window::MinimizeWindow: MinimizeWindow failed with error: 1400\n"},
        WindowCommand{L"Window.Maximize", L"", "Window::MaximizeWindow: MaximizeWindow failed with error: 1400\n"},
        WindowCommand{L"Window.Restore", L"", "Window::RestoreWindow: RestoreWindow failed with error: 1400\n"},
        WindowCommand{
            L"Window.BringToFront", L"",
            "Window::BringToFront: BringToFront failed (Error 1400). Foreground access may be restricted.\n"}),
    NameOfTest<WindowCommand>);

}  // namespace
}  // namespace dialwright::testing
