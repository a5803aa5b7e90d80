#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "library.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"

namespace dialwright::testing {
namespace {

TEST(Threads, EightCallTheExportsAtOnceEachOnItsOwnWindow) {
    constexpr int kThreads = 8;
    std::vector<std::unique_ptr<PracticeWindow>> targets;
    for (int i = 0; i < kThreads; ++i) targets.push_back(std::make_unique<PracticeWindow>(kPlainClass));
    const LogCapture log;
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            const PracticeWindow& target = *targets[static_cast<std::size_t>(i)];
            const std::wstring text = L"thread" + std::to_wstring(i);
            const std::wstring script = target.Line(L"Window.ClearText", L"15 30000") + L"\n" +
                                        target.Line(L"Window.SetText", L"15 " + text + L" 30000") + L"\n" +
                                        target.Line(L"Window.SetCheckbox", L"31 1 30000") + L"\n" +
                                        target.Line(L"Window.SelectDropdown.Index", L"51 2 30000");
            if (ValidateScript(script) != 1 || ExecuteScript(script) != 1) ++failures;
            if (ExecuteCommand(target.Line(L"Window.ClickButton", L"4711 150")) != 0) ++failures;
            if (TextOf(target.Control(15)) != text || CheckStateOf(target.Control(31)) != 1 ||
                SelectionOf(target.Control(51)) != 2) {
                ++failures;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(0, failures);
}

}  // namespace
}  // namespace dialwright::testing
