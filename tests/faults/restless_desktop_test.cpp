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
    const Unrest raising([&](int round) {
        const HWND window = targets[static_cast<std::size_t>(round % kWindows)]->Handle();
        constexpr UINT kFlags = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOSENDCHANGING;
        ::SetWindowPos(window, round % 3 == 0 ? HWND_BOTTOM : HWND_TOP, 0, 0, 0, 0, kFlags);
    });
    const LogCapture log;
    for (int i = 0; i < kCommands; ++i) {
        const PracticeWindow& target = *targets[static_cast<std::size_t>(i % kWindows)];
        const int state = i / kWindows % 2;
        ASSERT_EQ(1, ExecuteCommand(target.Line(i % 3 == 0 ? L"Window.SetCheckbox.NonRegex" : L"Window.SetCheckbox",
                                                L"31 " + std::to_wstring(state) + L" 20000")));
        ASSERT_EQ(state, CheckStateOf(target.Control(31)));
    }
    EXPECT_GE(raising.Rounds(), kCommands);
    const auto found = log.MessagesFrom("Window::Window: Window found successfully. Parent Window Handle: 0x");
    ASSERT_EQ(static_cast<std::size_t>(kCommands), found.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_TRUE(found[i].ends_with("0x" + Hex(targets[i % kWindows]->Handle()))) << found[i];
    }
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
    EXPECT_EQ(0, ExecuteCommand(target.Line(L"Window.Close", L"500")));
    EXPECT_EQ("Window::CloseWindow: CloseWindow: No valid window handle", log.Messages().back());
}

TEST(FullQueue, HoldsUpAClickAndLosesNone) {
    PracticeWindow target(kPlainClass);
    target.Process().WriteLine("hang 500");
    while (target.Process().ReadLine(kPatienceMs).value_or("hanging") != "hanging") continue;
    // The limit of real Windows, beyond which posts fail; Wine has none.
    constexpr int kMessages = 10'000;
    int posted = 0;
    while (posted < kMessages && ::PostMessageW(target.Handle(), WM_NULL, 0, 0)) ++posted;
    const LogCapture log;
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.ClickButton", L"21 20000")));
    std::vector<std::string> events = target.TakeEvents();
    std::erase_if(events, [](const std::string& event) { return event == "hanging"; });
    std::vector<std::string> expected = {"sent 21 BM_CLICK"};
    if (posted == kMessages) {
        expected.insert(expected.end(),
                        {"posted 21 WM_LBUTTONDOWN 37,11 keys 1", "posted 21 WM_LBUTTONUP 37,11 keys 0"});
    }
    EXPECT_EQ(expected, events) << posted << " messages were posted";
}

}  // namespace
}  // namespace dialwright::testing
