#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/wait.h"
#include "support/windows_of_others.h"
#include "window/window.h"

namespace dialwright {
namespace {

using testing::kPlainClass;
using testing::LogCapture;
using testing::PracticeWindow;
using testing::WaitUntil;

TokenList Criteria(const PracticeWindow& target) { return {L"name", kPlainClass, target.Title()}; }

const TokenList kNoWindow = {L"name", L"NoSuchClass", L"no such title"};

TEST(WindowState, MinimizesAlsoAMinimizedWindow) {
    const PracticeWindow target(kPlainClass);
    for (int i = 0; i < 2; ++i) {
        const LogCapture log;
        EXPECT_TRUE(Window::MinimizeWindow(Criteria(target), true, 20000));
        EXPECT_TRUE(WaitUntil([&] { return ::IsIconic(target.Handle()) != FALSE; }));
        EXPECT_EQ("Window::MinimizeWindow: Window minimized", log.Messages().back());
    }
}

TEST(WindowState, MaximizesAndRestores) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_TRUE(Window::MaximizeWindow(Criteria(target), true, 20000));
    EXPECT_TRUE(WaitUntil([&] { return ::IsZoomed(target.Handle()) != FALSE; }));
    EXPECT_EQ("Window::MaximizeWindow: Window maximized", log.Messages().back());
    EXPECT_TRUE(Window::RestoreWindow(Criteria(target), true, 20000));
    EXPECT_TRUE(WaitUntil([&] { return ::IsZoomed(target.Handle()) == FALSE; }));
    EXPECT_EQ("Window::RestoreWindow: Window restored", log.Messages().back());
}

TEST(WindowState, ReportsAHiddenWindowAsAFailureAndShowsIt) {
    struct Row {
        bool (*operation)(const TokenList&, bool, unsigned int);
        const char* beginning;
    };
    const Row rows[] = {
        {&Window::RestoreWindow, "Window::RestoreWindow: RestoreWindow failed with error: "},
        {&Window::MaximizeWindow, "Window::MaximizeWindow: MaximizeWindow failed with error: "},
        {&Window::MinimizeWindow, "Window::MinimizeWindow: MinimizeWindow failed with error: "},
    };
    for (const Row& row : rows) {
        const PracticeWindow target(kPlainClass, {L"--hidden"});
        const LogCapture log;
        EXPECT_FALSE(row.operation(Criteria(target), true, 20000));
        EXPECT_TRUE(WaitUntil([&] { return ::IsWindowVisible(target.Handle()) != FALSE; }));
        EXPECT_TRUE(log.Messages().back().starts_with(row.beginning)) << log.Messages().back();
    }
}

TEST(WindowState, AsksAWindowToClose) {
    PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_TRUE(Window::CloseWindow(Criteria(target), true, 20000));
    EXPECT_EQ("Window::CloseWindow: Window close requested", log.Messages().back());
    EXPECT_TRUE(WaitUntil([&] { return ::IsWindow(target.Handle()) == FALSE; }));
    EXPECT_EQ(0U, target.Process().WaitForExit(testing::kPatienceMs));
}

TEST(WindowState, CountsARefusedCloseAsDone) {
    PracticeWindow target(kPlainClass, {L"--refuse-close"});
    const LogCapture log;
    EXPECT_TRUE(Window::CloseWindow(Criteria(target), true, 20000));
    EXPECT_EQ((std::vector<std::string>{"posted window WM_CLOSE"}), target.TakeEvents());
    EXPECT_TRUE(::IsWindow(target.Handle()));
}

TEST(WindowState, MovesAndSizes) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_TRUE(Window::MoveWindow(Criteria(target), true, 20000, 100, 200, 500, 400));
    EXPECT_EQ((Rectangle{100, 200, 600, 600}), testing::ScreenRectOf(target.Handle()));
    EXPECT_EQ("Window::MoveWindow: Moved window to X:100 Y:200 W:500 H:400", log.Messages().back());
}

TEST(WindowState, PassesNegativePositionsAndZeroSizesOn) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_TRUE(Window::MoveWindow(Criteria(target), true, 20000, -30, -40, 0, 0));
    EXPECT_EQ(-30, testing::ScreenRectOf(target.Handle()).left);
    EXPECT_EQ(-40, testing::ScreenRectOf(target.Handle()).top);
    EXPECT_EQ("Window::MoveWindow: Moved window to X:-30 Y:-40 W:0 H:0", log.Messages().back());
}

TEST(WindowState, NeedsAWindow) {
    struct Row {
        bool (*operation)(const TokenList&, bool, unsigned int);
        std::string name;
    };
    const Row rows[] = {
        {&Window::MinimizeWindow, "MinimizeWindow"},
        {&Window::MaximizeWindow, "MaximizeWindow"},
        {&Window::RestoreWindow, "RestoreWindow"},
        {&Window::CloseWindow, "CloseWindow"},
        {&Window::BringToFront, "BringToFront"},
        {[](const TokenList& arguments, bool useRegex, unsigned int timeoutMs) {
             return Window::MoveWindow(arguments, useRegex, timeoutMs, 1, 2, 3, 4);
         },
         "MoveWindow"},
    };
    for (const Row& row : rows) {
        const LogCapture log;
        EXPECT_FALSE(row.operation(kNoWindow, true, 1));
        const auto messages = log.Messages();
        ASSERT_EQ(3U, messages.size());
        EXPECT_EQ("Window::Window: Window search failed after 1ms", messages[1]);
        EXPECT_EQ("Window::" + row.name + ": " + row.name + ": No valid window handle", messages[2]);
    }
}

}  // namespace
}  // namespace dialwright
