#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <utility>

#include "library.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

// Bounds are generous: the machine may be busy.
namespace dialwright::testing {
namespace {

const ULONGLONG kSlack = Patient(3000);

class Stopwatch {
public:
    [[nodiscard]] ULONGLONG Elapsed() const { return ::GetTickCount64() - begin; }

private:
    ULONGLONG begin = ::GetTickCount64();
};

TEST(TimeBudget, AControlThatComesLateIsFoundByALaterAttempt) {
    PracticeWindow target(kPlainClass);
    target.DoAfter(1000, L"create edit 77 90,150,170,22 0 late");
    const LogCapture log;
    const Stopwatch watch;
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.ClearText", L"77 20000")));
    EXPECT_LT(watch.Elapsed(), 1000 + kSlack);
    EXPECT_EQ(L"", TextOf(target.Control(77)));
    EXPECT_GE(log.MessagesFrom("Window::FindChildControl: Child control not found - ID: 77").size(), 1U);
}

TEST(TimeBudget, ADisabledCheckBoxIsSetOnceItIsEnabled) {
    PracticeWindow target(kPlainClass);
    target.DoAfter(350, L"enable 34 1");
    const LogCapture log;
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.SetCheckbox", L"34 1 20000")));
    EXPECT_EQ(1, CheckStateOf(target.Control(34)));
}

TEST(TimeBudget, IsSharedByWindowSearchAndControlAttempts) {
    PracticeWindow target(kPlainClass);
    const std::wstring later = UniqueTitle();
    target.DoAfter(900, L"open LatePractice " + later);
    const LogCapture log;
    const Stopwatch watch;
    EXPECT_EQ(0, ExecuteCommand(L"Window.ClickButton LatePractice \"" + later + L"\" 4711 1500"));
    EXPECT_GE(watch.Elapsed(), 1490U);
    EXPECT_LT(watch.Elapsed(), 1500 + kSlack);
    // About six attempts fit in what the search left over; without sharing there would be fifteen.
    EXPECT_LE(log.MessagesFrom("Window::ClickHelper: ClickHelper - Null button handle").size(), 10U);
}

TEST(TimeBudget, IsNotOvershotByMuch) {
    if (IsEmulated()) GTEST_SKIP() << "it measures time";
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    for (const std::wstring& arguments : {std::wstring(L"4711 350"), std::wstring(L"4711 1")}) {
        const Stopwatch watch;
        EXPECT_EQ(0, ExecuteCommand(target.Line(L"Window.ClickButton", arguments)));
        EXPECT_LT(watch.Elapsed(), 350 + kSlack);
    }
}

TEST(TimeBudget, MakesNoAttemptWithoutAWindow) {
    const LogCapture log;
    EXPECT_EQ(0, ExecuteCommand(L"Window.ClickButton NoSuchClass none 5 250"));
    EXPECT_EQ(2U, log.Messages().size());
}

TEST(TimeBudget, MakesAttemptsWithTheEndlessTimeout) {
    PracticeWindow target(kPlainClass);
    target.DoAfter(250, L"create edit 77 90,150,170,22 0 late");
    const LogCapture log;
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.ClearText", L"77 -1")));
    EXPECT_NE(std::string::npos, log.Messages().front().find("\nTimeout:  -1ms\n"));
}

TEST(TimeBudget, Reads0AsTenSeconds) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.ClearText", L"15 0")));
    EXPECT_NE(std::string::npos, log.Messages().front().find("\nTimeout:  10000ms\n"));
}

TEST(TimeBudget, RepeatsAFailingActionAndItsMessages) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_EQ(0, ExecuteCommand(target.Line(L"Window.SelectDropdown.Value", L"51 Delta 1050")));
    const std::size_t attempts =
        log.MessagesFrom("Window::SelectDropdownByValueInternal: Value 'Delta' not found in dropdown").size();
    EXPECT_GE(attempts, 2U);
    EXPECT_LE(attempts, 11U);
}

TEST(TimeBudget, LogsANullHandleOnEveryAttempt) {
    const PracticeWindow target(kPlainClass);
    for (const auto& [line, message] :
         {std::pair(target.Line(L"Window.ClickButton", L"4711 1050"), "Window::ClickHelper: ClickHelper - Null"),
          std::pair(target.Line(L"Window.SetText", L"4711 x 1050"), "Window::SetTextHelper: SetTextHelper - Null")}) {
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(line));
        const std::size_t lookups = log.MessagesFrom("Window::FindChildControl: Child control not found").size();
        EXPECT_GE(lookups, 2U);
        EXPECT_EQ(lookups, log.MessagesFrom(message).size());
    }
}

TEST(TimeBudget, DoesNotBoundAClickThatOpensAModalDialog) {
    PracticeWindow target(kPlainClass);
    const LogCapture log;
    std::atomic<bool> returned{false};
    int result = -1;
    std::thread clicker([&] {
        result = ExecuteCommand(target.BriefLine(L"Window.ClickButton", L"23"));
        returned = true;
    });
    HWND question = nullptr;
    const auto opened = [&] {
        question = ::GetLastActivePopup(target.Handle());
        return question != target.Handle() && question != nullptr;
    };
    EXPECT_TRUE(WaitUntil(opened));
    constexpr DWORD kTwiceTheTimeout = 2 * kBriefMs;
    EXPECT_FALSE(WaitUntil([&] { return returned.load(); }, kTwiceTheTimeout));
    // The first answer ends the sent click, the second the dialog that the posted click opens.
    for (int answers = 0; answers < 2; ++answers) {
        EXPECT_TRUE(WaitUntil(opened));
        const HWND answered = question;
        ::PostMessageW(answered, WM_COMMAND, IDOK, 0);
        EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(answered); }));
    }
    clicker.join();
    EXPECT_EQ(1, result);
}

TEST(TimeBudget, DoesNotBoundAHungTarget) {
    // A sent message waits for its receiver, whatever the command's timeout is.
    PracticeWindow target(kPlainClass);
    target.DoAfter(1, L"hang 3000");
    ASSERT_EQ("hanging", target.Process().ReadLine(kPatienceMs));
    const LogCapture log;
    const Stopwatch watch;
    EXPECT_EQ(1, ExecuteCommand(target.BriefLine(L"Window.ClearText", L"15")));
    EXPECT_GE(watch.Elapsed(), kBriefMs + 500U);
    EXPECT_EQ(L"", TextOf(target.Control(15)));
}

}  // namespace
}  // namespace dialwright::testing
