#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"
#include "window/window.h"

namespace dialwright {
namespace {

using testing::Hex;
using testing::kDialogClass;
using testing::kPlainClass;
using testing::LogCapture;
using testing::LowerHex;
using testing::PracticeWindow;

using Messages = std::vector<std::string>;

/// The window found, its search's own lines not in the log that a test looks at.
Window Found(const PracticeWindow& target, const wchar_t* windowClass) {
    const LogCapture unseen;
    return {windowClass, target.Title(), 20000, false};
}

Window NotFound() {
    const LogCapture unseen;
    return {L"NoSuchClass", L"no such title", 1, false};
}

TEST(LookupById, AsksAStandardDialogForItsDirectChild) {
    const PracticeWindow target(kDialogClass);
    const Window window = Found(target, kDialogClass);
    const LogCapture log;
    const HWND edit = window.GetControlHandle(12);
    EXPECT_EQ(target.Control(12), edit);
    EXPECT_EQ((Messages{"Window::GetControlHandle: Standard dialog control handle: 0x" + Hex(edit)}), log.Messages());
}

TEST(LookupById, FindsNoNestedControlOfAStandardDialog) {
    const PracticeWindow target(kDialogClass);
    const Window window = Found(target, kDialogClass);
    const LogCapture log;
    EXPECT_EQ(nullptr, window.GetControlHandle(63));
    EXPECT_EQ((Messages{"Window::GetControlHandle: Standard dialog control handle: 0x0"}), log.Messages());
}

TEST(LookupById, FindsADescendantOfAnotherWindowAtAnyDepth) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    const LogCapture log;
    const HWND edit = window.GetControlHandle(63);
    EXPECT_EQ(target.Control(63), edit);
    EXPECT_EQ((Messages{"Window::FindChildControl::<lambda_1>::operator (): Found matching child control: Handle: 0x" +
                        Hex(edit) + " ID: 63"}),
              log.Messages());
}

TEST(LookupById, TakesTheFirstOfTwoWithOneId) {
    for (const wchar_t* windowClass : {kDialogClass, kPlainClass}) {
        const PracticeWindow target(windowClass);
        const Window window = Found(target, windowClass);
        const LogCapture log;
        EXPECT_EQ(L"first", testing::TextOf(window.GetControlHandle(70)));
    }
}

TEST(LookupById, FindsDisabledAndHiddenControls) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    const LogCapture log;
    EXPECT_EQ(target.Control(34), window.GetControlHandle(34));
    EXPECT_EQ(target.Control(35), window.GetControlHandle(35));
}

TEST(LookupById, SaysWhatItMissed) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    const LogCapture log;
    EXPECT_EQ(nullptr, window.GetControlHandle(4711));
    EXPECT_EQ((Messages{"Window::FindChildControl: Child control not found - ID: 4711"}), log.Messages());
}

TEST(LookupById, NeedsAWindow) {
    const Window window = NotFound();
    const LogCapture log;
    EXPECT_EQ(nullptr, window.GetControlHandle(12));
    EXPECT_EQ((Messages{"Window::GetControlHandle: GetControlHandle - Parent window not initialized"}), log.Messages());
}

std::string Path(const std::string& message) { return "Window::FindControlByHierarchy: " + message; }

std::string PathStart(const PracticeWindow& target) {
    return Path("Starting to find control by hierarchy. Initial hwndWindow: 0x" + LowerHex(target.Handle()));
}

std::string Enumerating(HWND child) {
    return Path("Enumerating child window: 0x" + Hex(child) +
                " with control ID: " + std::to_string(::GetDlgCtrlID(child)));
}

Messages Arrival(HWND child, const std::string& segment) {
    return {Path("Found child window with control ID: " + std::to_string(::GetDlgCtrlID(child)) + " and HWND: 0x" +
                 LowerHex(child)),
            Path("Successfully found child window: 0x" + LowerHex(child) + " for segment: " + segment)};
}

void Append(Messages& messages, const Messages& more) { messages.insert(messages.end(), more.begin(), more.end()); }

TEST(LookupByPath, WalksSiblingsAndChildrenAndSaysEachStep) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    const HWND first = ::GetWindow(target.Handle(), GW_CHILD);
    const HWND second = ::GetWindow(first, GW_HWNDNEXT);
    const LogCapture log;
    EXPECT_EQ(second, window.FindControlByHierarchy(L"2"));
    EXPECT_EQ(target.Control(12), second);
    Messages expected = {PathStart(target), Path("Processing segment: 2"), Enumerating(first), Enumerating(second)};
    Append(expected, Arrival(second, "2"));
    expected.push_back(Path("Final control HWND found: 0x" + LowerHex(second)));
    EXPECT_EQ(expected, log.Messages());
}

TEST(LookupByPath, GoesDownSegmentBySegment) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    const HWND panel = target.Control(60);
    const LogCapture log;
    const HWND edit = window.FindControlByHierarchy(L"23.1.1.1");
    EXPECT_EQ(target.Control(63), edit);
    EXPECT_EQ(target.Control(64), window.FindControlByHierarchy(L"23.1.1.2"));
    const Messages messages = log.Messages();
    const Messages end = {Enumerating(edit), Arrival(edit, "1")[0], Arrival(edit, "1")[1],
                          Path("Final control HWND found: 0x" + LowerHex(edit))};
    EXPECT_NE(messages.end(), std::search(messages.begin(), messages.end(), end.begin(), end.end()));
    EXPECT_EQ(panel, ::GetAncestor(::GetAncestor(::GetAncestor(edit, GA_PARENT), GA_PARENT), GA_PARENT));
}

TEST(LookupByPath, ReturnsTheWindowItselfForAnEmptyPath) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    const LogCapture log;
    EXPECT_EQ(target.Handle(), window.FindControlByHierarchy(L""));
    EXPECT_EQ((Messages{PathStart(target), Path("Final control HWND found: 0x" + LowerHex(target.Handle()))}),
              log.Messages());
}

TEST(LookupByPath, ReadsSegmentsAsNumbersDo) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    const LogCapture log;
    EXPECT_EQ(target.Control(12), window.FindControlByHierarchy(L"2x"));
    EXPECT_EQ(target.Control(12), window.FindControlByHierarchy(L"2."));
    EXPECT_EQ(target.Control(12), window.FindControlByHierarchy(L" +2"));
}

TEST(LookupByPath, FailsAfterTheLastSibling) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    // The third panel has two children, an edit and a check box.
    const LogCapture log;
    EXPECT_EQ(nullptr, window.FindControlByHierarchy(L"23.1.1.3"));
    const Messages messages = log.Messages();
    ASSERT_GE(messages.size(), 4U);
    const Messages end(messages.end() - 4, messages.end());
    EXPECT_EQ((Messages{Path("Processing segment: 3"), Enumerating(target.Control(63)), Enumerating(target.Control(64)),
                        Path("Failed to find child window at segment: 3 in hierarchy path: 23.1.1.3")}),
              end);
}

TEST(LookupByPath, WalksAllSiblingsForZeroAndBelow) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    for (const char* segment : {"0", "-1", "-2147483648", "2147483647"}) {
        const LogCapture log;
        EXPECT_EQ(nullptr, window.FindControlByHierarchy(std::wstring(segment, segment + std::strlen(segment))));
        const Messages messages = log.Messages();
        EXPECT_EQ(26U + 3U, messages.size());  // start, segment, every direct child, failure
        EXPECT_EQ(
            Path(std::string("Failed to find child window at segment: ") + segment + " in hierarchy path: " + segment),
            messages.back());
    }
}

TEST(LookupByPath, FailsWhereThereIsNoChild) {
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    const LogCapture log;
    EXPECT_EQ(nullptr, window.FindControlByHierarchy(L"2.1"));
    EXPECT_EQ(Path("Failed to find child window at segment: 1 in hierarchy path: 2.1"), log.Messages().back());
}

TEST(LookupByPath, ThrowsForAnUnreadableSegment) {
    struct Row {
        const wchar_t* path;
        const char* error;
    };
    const Row rows[] = {
        {L"x", "invalid stoi argument"},
        {L"1..2", "invalid stoi argument"},
        {L".1", "invalid stoi argument"},
        {L"99999999999", "stoi argument out of range"},
    };
    const PracticeWindow target(kPlainClass);
    const Window window = Found(target, kPlainClass);
    for (const Row& row : rows) {
        const LogCapture log;
        try {
            (void)window.FindControlByHierarchy(row.path);
            ADD_FAILURE() << "no error";
        } catch (const std::logic_error& error) {
            EXPECT_STREQ(row.error, error.what());
        }
        EXPECT_TRUE(log.Messages().back().starts_with(Path("Processing segment: "))) << log.Messages().back();
    }
}

TEST(LookupByPath, NeedsAWindow) {
    const Window window = NotFound();
    const LogCapture log;
    EXPECT_EQ(nullptr, window.FindControlByHierarchy(L"1"));
    EXPECT_EQ((Messages{Path("Error: hwndWindow is null. Cannot traverse hierarchy.")}), log.Messages());
}

}  // namespace
}  // namespace dialwright
