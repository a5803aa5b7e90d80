#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/wait.h"
#include "window/window.h"

// These run alone: any window that another test opens takes the foreground and changes the order.
namespace dialwright {
namespace {

using testing::kPlainClass;
using testing::LogCapture;
using testing::PracticeWindow;
using testing::WaitUntil;

TokenList Criteria(const PracticeWindow& target) { return {L"name", kPlainClass, target.Title()}; }

HWND FirstVisible() {
    HWND hwnd = ::GetTopWindow(nullptr);
    while (hwnd != nullptr && !::IsWindowVisible(hwnd)) hwnd = ::GetWindow(hwnd, GW_HWNDNEXT);
    return hwnd;
}

TEST(BringToFront, RaisesAndActivatesAMinimizedWindow) {
    const PracticeWindow target(kPlainClass);
    const PracticeWindow other(kPlainClass);
    ::ShowWindow(target.Handle(), SW_MINIMIZE);
    ASSERT_TRUE(WaitUntil([&] { return ::IsIconic(target.Handle()) != FALSE; }));
    const LogCapture log;
    EXPECT_TRUE(Window::BringToFront(Criteria(target), true, 20000));
    EXPECT_EQ("Window::BringToFront: Window brought to front successfully", log.Messages().back());
    EXPECT_FALSE(::IsIconic(target.Handle()));
    EXPECT_EQ(target.Handle(), ::GetForegroundWindow());
    EXPECT_EQ(target.Handle(), FirstVisible());
    EXPECT_EQ(0, ::GetWindowLongPtrW(target.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST);
}

TEST(BringToFront, DetachesFromTheTargetsInputAgain) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_TRUE(Window::BringToFront(Criteria(target), true, 20000));
    // Detached, this thread cannot give another thread's control the focus.
    EXPECT_EQ(nullptr, ::SetFocus(target.Control(12)));
    EXPECT_NE(target.Control(12), ::GetFocus());
}

TEST(WindowSearch, TakesTheFirstOfTwoInZOrder) {
    const std::wstring title = testing::UniqueTitle();
    PracticeWindow first(kPlainClass, {}, title);
    PracticeWindow second(kPlainClass, {}, title);
    const LogCapture log;
    for (PracticeWindow* front : {&first, &second, &first}) {
        ::SetWindowPos(front->Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        EXPECT_EQ(front->Handle(), Window(kPlainClass, title, 5000, true).hwndWindow);
    }
}

TEST(BringToFront, RaisesAWindowThatLiesBehindAnother) {
    const PracticeWindow target(kPlainClass);
    const PracticeWindow other(kPlainClass);
    ::SetForegroundWindow(other.Handle());
    ASSERT_TRUE(WaitUntil([&] { return FirstVisible() == other.Handle(); }));
    const LogCapture log;
    EXPECT_TRUE(Window::BringToFront(Criteria(target), true, 20000));
    EXPECT_EQ(target.Handle(), ::GetForegroundWindow());
    EXPECT_EQ(target.Handle(), FirstVisible());
}

}  // namespace
}  // namespace dialwright
