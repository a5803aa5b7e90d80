#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "library.h"
#include "output_gate.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

// Windows that change their order and their titles while they are enumerated.
namespace dialwright::testing {
namespace {

/// Does the same over and over on a thread of its own.
class Unrest {
public:
    explicit Unrest(std::function<void(int round)> action)
        : thread([this, act = std::move(action)] {
              for (; !stopped; ++rounds) act(rounds);
          }) {}
    ~Unrest() {
        stopped = true;
        thread.join();
    }
    Unrest(const Unrest&) = delete;
    Unrest& operator=(const Unrest&) = delete;

    [[nodiscard]] int Rounds() const { return rounds; }

private:
    std::atomic<bool> stopped = false;
    std::atomic<int> rounds = 0;
    std::thread thread;
};

TEST(RestlessDesktop, FindsTheRightWindowWhileTheirOrderIsShuffled) {
    constexpr int kWindows = 4;
    constexpr int kCommands = 120;
    std::vector<std::unique_ptr<PracticeWindow>> targets;
    for (int i = 0; i < kWindows; ++i) targets.push_back(std::make_unique<PracticeWindow>(kPlainClass));
    std::atomic<int> moves = 0;
    const Unrest raising([&](int round) {
        const HWND window = targets[static_cast<std::size_t>(round % kWindows)]->Handle();
        constexpr UINT kFlags = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOSENDCHANGING;
        if (::SetWindowPos(window, round % 3 == 0 ? HWND_BOTTOM : HWND_TOP, 0, 0, 0, 0, kFlags)) ++moves;
    });
    const LogCapture log;
    for (int i = 0; i < kCommands; ++i) {
        const PracticeWindow& target = *targets[static_cast<std::size_t>(i % kWindows)];
        const int state = i / kWindows % 2;
        ASSERT_EQ(1, ExecuteCommand(target.Line(i % 3 == 0 ? L"Window.SetCheckbox.NonRegex" : L"Window.SetCheckbox",
                                                L"31 " + std::to_wstring(state) + L" 20000")));
        ASSERT_EQ(state, CheckStateOf(target.Control(31)));
    }
    EXPECT_GE(moves, kCommands);
    const auto found = log.MessagesFrom("Window::Window: Window found successfully. Parent Window Handle: 0x");
    ASSERT_EQ(static_cast<std::size_t>(kCommands), found.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_TRUE(found[i].ends_with("0x" + Hex(targets[i % kWindows]->Handle()))) << found[i];
    }
}

TEST(RestlessDesktop, FindsAControlBelowOneThatGoesToTheTopDuringTheSearch) {
    const PracticeWindow target(kPlainClass);
    const HWND panelOfControl = target.Control(60);
    const std::wstring place = RectangleArgument(RelativeRectOf(target.Control(64)));
    int moved = 0;
    OutputGate gate("Coordinate transformation", [&] {
        constexpr UINT kFlags = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
        for (const int id : {31, 33, 51, 60}) {
            moved += ::SetWindowPos(target.Control(id), HWND_TOP, 0, 0, 0, 0, kFlags) ? 1 : 0;
        }
    });
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.SetCheckbox.ByPosition", place + L" 0 1 20000")));
    const std::string& log = gate.Close();
    EXPECT_EQ(4, moved);
    EXPECT_EQ(panelOfControl, ::GetWindow(target.Handle(), GW_CHILD));
    EXPECT_EQ(1, CheckStateOf(target.Control(64)));
    // At once, not by the next attempt.
    EXPECT_EQ(std::string::npos, log.find("Position search failed")) << log;
}

TEST(RestlessDesktop, FindsAWindowWhoseTitleChangesAllTheTime) {
    const PracticeWindow target(kPlainClass);
    const std::array<std::wstring, 3> titles = {target.Title() + L" - ready", target.Title() + L" - busy",
                                                target.Title() + std::wstring(300, L'.')};
    const Unrest changing([&](int round) {
        ::SetWindowTextW(target.Handle(), titles[static_cast<std::size_t>(round) % titles.size()].c_str());
    });
    const LogCapture log;
    for (int i = 0; i < 6; ++i) {
        const std::wstring state = std::to_wstring(i % 2);
        // The one title of the three, whenever a poll meets it; and what all have in common, at once.
        ASSERT_EQ(1, ExecuteCommand(L"Window.SetCheckbox PracticeTarget \"" + target.Title() + L" - ready\" 31 " +
                                    state + L" 60000"));
        ASSERT_EQ(i % 2, CheckStateOf(target.Control(31)));
        ASSERT_EQ(1, ExecuteCommand(target.Line(L"Window.SelectDropdown.Index.NonRegex", L"51 " + state + L" 60000")));
        ASSERT_EQ(i % 2, SelectionOf(target.Control(51)));
    }
    EXPECT_GE(changing.Rounds(), 6);
}

TEST(RestlessDesktop, WaitsForATitleThatComesNoMoreUntilTheTimeIsUp) {
    const PracticeWindow target(kPlainClass);
    const Unrest changing(
        [&](int round) { ::SetWindowTextW(target.Handle(), (target.Title() + std::to_wstring(round)).c_str()); });
    ASSERT_TRUE(WaitUntil([&] { return changing.Rounds() > 0; }));
    const LogCapture log;
    const ULONGLONG begin = ::GetTickCount64();
    EXPECT_EQ(0, ExecuteCommand(target.Line(L"Window.Close", L"500")));
    EXPECT_GE(::GetTickCount64() - begin, 490U);
    EXPECT_EQ("Window::CloseWindow: CloseWindow: No valid window handle", log.Messages().back());
}

TEST(FullQueue, HoldsUpAClickAndLosesNone) {
    PracticeWindow target(kPlainClass);
    const ULONGLONG begin = ::GetTickCount64();
    constexpr DWORD kHangsMs = 5000;
    target.Process().WriteLine("hang " + std::to_string(kHangsMs));
    while (target.Process().ReadLine(kPatienceMs).value_or("hanging") != "hanging") continue;
    // The limit of real Windows, beyond which posts fail; Wine has none.
    constexpr std::size_t kMessages = 10'000;
    std::size_t posted = 0;
    while (posted < kMessages && ::PostMessageW(target.Handle(), WM_COMMAND, 0, 0)) ++posted;
    const LogCapture log;
    ASSERT_LT(::GetTickCount64() - begin, kHangsMs) << "the queue is emptied by now";
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.ClickButton", L"21 20000")));
    const std::vector<std::string> events = target.TakeEvents();
    std::vector<std::string> expected(1 + posted, "posted window WM_COMMAND 0 0x0000");
    expected.front() = "sent 21 BM_CLICK";
    if (posted == kMessages) {
        expected.insert(expected.end(),
                        {"posted 21 WM_LBUTTONDOWN 37,11 keys 1", "posted 21 WM_LBUTTONUP 37,11 keys 0"});
    }
    EXPECT_TRUE(expected == events) << posted << " messages were posted, " << events.size() << " came, at first "
                                    << events.front() << ", at last " << events.back();
}

}  // namespace
}  // namespace dialwright::testing
