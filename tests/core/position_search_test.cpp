#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"
#include "window/enumeration.h"
#include "window/position_search.h"
#include "window/window.h"

namespace dialwright {
namespace {

using testing::Hex;
using testing::kPlainClass;
using testing::LogCapture;
using testing::PracticeWindow;
using testing::Shown;

using Messages = std::vector<std::string>;

Window Found(const PracticeWindow& target) {
    const LogCapture unseen;
    return {kPlainClass, target.Title(), 20000, false};
}

HWND Find(const Window& window, const Rectangle& r, int tolerance) {
    return window.FindControlByPosition(r.left, r.top, r.right, r.bottom, tolerance);
}

std::string Start(const Rectangle& target, int tolerance, HWND window) {
    return "Window::FindControlByPosition: Starting position-based search:\nTarget Area: " + Shown(target) +
           "\nTolerance:   " + std::to_string(tolerance) + "\nParent:      0x" + Hex(window);
}

std::string Coordinates(HWND child) {
    return "Window::GetLocalCoordinates: Coordinate transformation:\nAbsolute: " + Shown(testing::ScreenRectOf(child)) +
           "\nParent:   " + Shown(testing::ScreenRectOf(::GetAncestor(child, GA_ROOT))) +
           "\nRelative: " + Shown(testing::RelativeRectOf(child));
}

std::string Match(HWND child, const Rectangle& target, int tolerance) {
    return "Window::EnumAllChildrenProc: Position match found:\nHWND: 0x" + Hex(child) +
           "\nActual:   " + Shown(testing::RelativeRectOf(child)) + "\nExpected: " + Shown(target) +
           "\nTolerance: " + std::to_string(tolerance);
}

std::string Success(HWND child) {
    return "Window::FindControlByPosition: Position search successful:\nFound HWND: 0x" + Hex(child) +
           "\nPosition:   " + Shown(testing::RelativeRectOf(child));
}

const char* const kEarlyExit = "Window::EnumAllChildrenProc: EnumAllChildrenProc - Early exit (match already found)";

TEST(PositionSearch, FindsAnExactRectangleAndSaysEachStep) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target);
    const HWND label = ::GetWindow(target.Handle(), GW_CHILD);
    const HWND edit = target.Control(12);
    const Rectangle place = testing::RelativeRectOf(edit);
    const LogCapture log;
    EXPECT_EQ(edit, Find(window, place, 0));
    EXPECT_EQ((Messages{Start(place, 0, target.Handle()), Coordinates(label), Coordinates(edit), Match(edit, place, 0),
                        Coordinates(edit), Success(edit)}),
              log.Messages());
}

TEST(PositionSearch, AllowsEachEdgeItsTolerance) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target);
    const HWND edit = target.Control(12);
    const Rectangle place = testing::RelativeRectOf(edit);
    const Rectangle off{place.left - 2, place.top + 2, place.right + 2, place.bottom - 2};
    const LogCapture log;
    EXPECT_EQ(edit, Find(window, off, 5));
    EXPECT_EQ(edit, Find(window, off, 2));
    EXPECT_EQ(nullptr, Find(window, off, 1));
}

TEST(PositionSearch, FindsAControlFourLevelsDeep) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target);
    const HWND edit = target.Control(63);
    const LogCapture log;
    EXPECT_EQ(edit, Find(window, testing::RelativeRectOf(edit), 0));
}

TEST(PositionSearch, LogsTheEarlyExitOnceForEachEnclosingEnumeration) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target);
    const auto earlyExits = [&](int id) {
        const LogCapture log;
        (void)Find(window, testing::RelativeRectOf(target.Control(id)), 0);
        return log.MessagesFrom(kEarlyExit).size();
    };
    EXPECT_EQ(0U, earlyExits(12));  // found by the outermost enumeration itself
    // Four deep, found by the enumeration of the innermost panel: those of two panels and the window's go on, each to
    // a window that it visits again.
    EXPECT_EQ(3U, earlyExits(63));
    EXPECT_EQ(3U, earlyExits(64));
}

TEST(EnumAllChildrenProc, GoesOnAfterAMatchWithinAndLogsNothingMore) {
    // The match lies below the panel: the panel's own callback says to go on, and nothing is left to stop early.
    const PracticeWindow target(kPlainClass);
    const Rectangle place = testing::RelativeRectOf(target.Control(64));
    HWND found = nullptr;
    GuardedContext<PositionSearchContext> search{{place.left, place.top, place.right, place.bottom, 0, &found}, {}};
    const LogCapture log;
    EXPECT_EQ(TRUE, Window::EnumAllChildrenProc(target.Control(62), CallbackParameter(search)));
    EXPECT_EQ(target.Control(64), found);
    EXPECT_EQ(Messages{}, log.MessagesFrom(kEarlyExit));
    EXPECT_EQ(FALSE, Window::EnumAllChildrenProc(target.Control(62), CallbackParameter(search)));
    EXPECT_EQ((Messages{kEarlyExit}), log.MessagesFrom(kEarlyExit));
}

TEST(PositionSearch, WarnsWhenNothingLiesThere) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target);
    const Rectangle nowhere{5000, 5000, 5001, 5001};
    const LogCapture log;
    EXPECT_EQ(nullptr, Find(window, nowhere, 3));
    EXPECT_EQ(Start(nowhere, 3, target.Handle()), log.Messages().front());
    EXPECT_EQ(
        "Window::FindControlByPosition: Position search failed:\nTarget:    [5000,5000]-[5001,5001]\nTolerance: "
        "3\nParent:    0x" +
            Hex(target.Handle()),
        log.Messages().back());
}

TEST(PositionSearch, SearchesTheRootOfAChildWindowAndNamesIt) {
    // The start line names the window that was asked, the failure the root that was searched.
    const PracticeWindow target(kPlainClass);
    Window window = Found(target);
    window.hwndWindow = target.Control(60);
    const LogCapture log;
    EXPECT_EQ(target.Control(12), Find(window, testing::RelativeRectOf(target.Control(12)), 0));
    EXPECT_EQ(nullptr, Find(window, {1, 2, 3, 4}, -1));
    EXPECT_NE(std::string::npos, log.Messages().front().find("Parent:      0x" + Hex(target.Control(60))));
    EXPECT_NE(std::string::npos, log.Messages().back().find("Parent:    0x" + Hex(target.Handle())));
}

TEST(PositionSearch, NeverMatchesANegativeToleranceAndSurvivesTheLimits) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target);
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    const LogCapture log;
    EXPECT_EQ(nullptr, Find(window, testing::RelativeRectOf(target.Control(12)), -1));
    EXPECT_EQ(nullptr, Find(window, {kLeast, kLeast, kLeast, kLeast}, 5));
    EXPECT_EQ(nullptr, Find(window, {kLeast, kMost, kLeast, kMost}, kMost));
    EXPECT_NE(nullptr, Find(window, {0, 0, 0, 0}, kMost));
}

TEST(PositionSearch, NeedsAWindow) {
    const LogCapture unseen;
    const Window window(L"NoSuchClass", L"no such title", 1, false);
    const LogCapture log;
    EXPECT_EQ(nullptr, Find(window, {1, 2, 3, 4}, 0));
    EXPECT_EQ(
        (Messages{Start({1, 2, 3, 4}, 0, nullptr), "Window::FindControlByPosition: Invalid window hierarchy for: 0x0"}),
        log.Messages());
}

TEST(LocalCoordinates, AreZeroForADeadHandle) {
    const LogCapture log;
    const RECT rect = Window::GetLocalCoordinates(nullptr);
    EXPECT_EQ(0, rect.left);
    EXPECT_EQ(0, rect.bottom);
    (void)Window::GetLocalCoordinates(reinterpret_cast<HWND>(std::uintptr_t{0xDEAD}));
    EXPECT_EQ((Messages{"Window::GetLocalCoordinates: GetLocalCoordinates - Invalid window handle (HWND: 0x0)",
                        "Window::GetLocalCoordinates: GetLocalCoordinates - Invalid window handle (HWND: 0xDEAD)"}),
              log.Messages());
}

TEST(ScreenRect, SaysThatADeadHandleHasNone) {
    const LogCapture log;
    const RECT rect = Window::GetScreenRect(reinterpret_cast<HWND>(std::uintptr_t{0xDEAD}));
    EXPECT_EQ(0, rect.right);
    EXPECT_EQ((Messages{"Window::GetScreenRect: GetWindowRect failed for HWND: 0xDEAD"}), log.Messages());
}

}  // namespace
}  // namespace dialwright
