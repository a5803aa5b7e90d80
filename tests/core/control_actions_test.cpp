#include <gtest/gtest.h>

#include <algorithm>
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
using testing::LogCapture;
using testing::PracticeWindow;

using Events = std::vector<std::string>;
using Messages = std::vector<std::string>;

HWND DeadHandle() { return reinterpret_cast<HWND>(std::uintptr_t{0xDEAD}); }

std::string ClickPoint(HWND control) {
    RECT client{};
    ::GetClientRect(control, &client);
    return std::to_string(client.right / 2) + "," + std::to_string(client.bottom / 2);
}

TEST(SetText, TypesAtTheCaretThenNotifiesThenClicks) {
    PracticeWindow target(kDialogClass);
    const HWND edit = target.Control(12);
    ::SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"xy"));
    ::SendMessageW(edit, EM_SETSEL, 2, 2);
    (void)target.TakeEvents();
    const LogCapture log;
    EXPECT_TRUE(Window::SetTextHelper(edit, L"ab"));
    EXPECT_EQ((Events{"sent 12 WM_CHAR U+0061", "sent 12 WM_CHAR U+0062", "posted window WM_COMMAND 12 EN_CHANGE",
                      "posted 12 WM_LBUTTONDOWN " + ClickPoint(edit) + " keys 1",
                      "posted 12 WM_LBUTTONUP " + ClickPoint(edit) + " keys 0"}),
              target.TakeEvents());
    EXPECT_EQ(L"xyab", testing::TextOf(edit));
    const std::string point = ClickPoint(edit);
    const std::string spaced = point.substr(0, point.find(',')) + ", " + point.substr(point.find(',') + 1);
    EXPECT_EQ((Messages{"Window::SetTextHelper: Setting text on control 0x" + Hex(edit) + ", Text Length: 2 characters",
                        "Window::SimulateMouseClick: Simulating click at center point (" + spaced + ")"}),
              log.Messages());
}

TEST(SetText, TypesUnitByUnitAndLogsNoText) {
    PracticeWindow target(kDialogClass);
    const HWND edit = target.Control(12);
    const LogCapture log;
    EXPECT_TRUE(Window::SetTextHelper(edit, L"\x65E5\xD83D\xDE00"));
    const Events events = target.TakeEvents();
    ASSERT_EQ(6U, events.size());
    EXPECT_EQ("sent 12 WM_CHAR U+65E5", events[0]);
    EXPECT_EQ("sent 12 WM_CHAR U+D83D", events[1]);
    EXPECT_EQ("sent 12 WM_CHAR U+DE00", events[2]);
    EXPECT_EQ(L"\x65E5\xD83D\xDE00", testing::TextOf(edit));
    EXPECT_EQ(std::string::npos, log.Text().find("\xE6\x97\xA5"));
    EXPECT_NE(std::string::npos, log.Text().find("Text Length: 3 characters"));
}

TEST(SetText, NotifiesAndClicksForAnEmptyText) {
    PracticeWindow target(kDialogClass);
    const HWND edit = target.Control(12);
    const LogCapture log;
    EXPECT_TRUE(Window::SetTextHelper(edit, L""));
    const Events events = target.TakeEvents();
    ASSERT_EQ(3U, events.size());
    EXPECT_EQ("posted window WM_COMMAND 12 EN_CHANGE", events[0]);
}

TEST(SetText, NotifiesTheDirectParent) {
    PracticeWindow target(kDialogClass);
    const LogCapture log;
    EXPECT_TRUE(Window::SetTextHelper(target.Control(63), L"a"));
    const Events events = target.TakeEvents();
    ASSERT_EQ(4U, events.size());
    EXPECT_EQ("posted 62 WM_COMMAND 63 EN_CHANGE", events[1]);
}

TEST(SetText, NotifiesNobodyForATopLevelWindow) {
    PracticeWindow target(kDialogClass);
    const LogCapture log;
    EXPECT_TRUE(Window::SetTextHelper(target.Handle(), L"a"));
    const Events events = target.TakeEvents();
    ASSERT_EQ(3U, events.size());
    EXPECT_EQ("sent window WM_CHAR U+0061", events[0]);
    EXPECT_TRUE(events[1].starts_with("posted window WM_LBUTTONDOWN ")) << events[1];
}

TEST(SetText, RefusesANullHandle) {
    const LogCapture log;
    EXPECT_FALSE(Window::SetTextHelper(nullptr, L"a"));
    EXPECT_EQ((Messages{"Window::SetTextHelper: SetTextHelper - Null control handle"}), log.Messages());
}

TEST(SetText, SucceedsOnAHandleThatDiedInBetween) {
    const LogCapture log;
    EXPECT_TRUE(Window::SetTextHelper(DeadHandle(), L"a"));
    EXPECT_EQ("Window::SimulateMouseClick: Failed to get control rect - Error: 1400", log.Messages().back());
}

TEST(ClearText, ReplacesTheTextAndNotifiesWithoutAClick) {
    PracticeWindow target(kDialogClass);
    const HWND edit = target.Control(15);
    ASSERT_EQ(L"Hello", testing::TextOf(edit));
    const LogCapture log;
    EXPECT_TRUE(Window::ClearTextHelper(edit));
    EXPECT_EQ((Events{"sent 15 WM_SETTEXT", "posted window WM_COMMAND 15 EN_CHANGE"}), target.TakeEvents());
    EXPECT_EQ(L"", testing::TextOf(edit));
    EXPECT_EQ((Messages{"Window::ClearTextHelper: Cleared text for control HWND 0x" + Hex(edit)}), log.Messages());
}

TEST(ClearText, RefusesANullHandleWithoutAWord) {
    const LogCapture log;
    EXPECT_FALSE(Window::ClearTextHelper(nullptr));
    EXPECT_EQ("", log.Text());
}

TEST(ClickButton, ActivatesTwiceAtItsCentre) {
    PracticeWindow target(kDialogClass);
    const HWND button = target.Control(21);
    const LogCapture log;
    EXPECT_TRUE(Window::ClickHelper(button));
    Events clicks = target.TakeAllEvents();
    EXPECT_EQ(2, std::count(clicks.begin(), clicks.end(), "inner window WM_COMMAND 21 BN_CLICKED"));
    std::erase_if(clicks, [](const std::string& event) { return event.starts_with("inner "); });
    EXPECT_EQ(
        (Events{"sent 21 BM_CLICK", "posted 21 WM_LBUTTONDOWN 37,11 keys 1", "posted 21 WM_LBUTTONUP 37,11 keys 0"}),
        clicks);
    EXPECT_EQ((Messages{"Window::ClickHelper: Clicking button:\nHandle: 0x" + Hex(button) + "\nID:     21",
                        "Window::SimulateMouseClick: Simulating click at center point (37, 11)"}),
              log.Messages());
}

TEST(ClickButton, LeavesAnAutomaticCheckBoxAsItBegan) {
    PracticeWindow target(kDialogClass);
    const LogCapture log;
    EXPECT_TRUE(Window::ClickHelper(target.Control(31)));
    (void)target.TakeEvents();
    EXPECT_EQ(0, testing::CheckStateOf(target.Control(31)));
}

TEST(ClickButton, RefusesANullHandle) {
    const LogCapture log;
    EXPECT_FALSE(Window::ClickHelper(nullptr));
    EXPECT_EQ((Messages{"Window::ClickHelper: ClickHelper - Null button handle"}), log.Messages());
}

TEST(Actions, FocusTheControlWhereThePlatformLetsThem) {
    // Across processes the platform refuses; on a window of the calling thread it does not.
    const HWND parent = ::CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                                          nullptr, nullptr, nullptr);
    const HWND edit =
        ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, parent, nullptr, nullptr, nullptr);
    const HWND button =
        ::CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, 30, 50, 20, parent, nullptr, nullptr, nullptr);
    const LogCapture log;
    EXPECT_TRUE(Window::SetTextHelper(edit, L"a"));
    EXPECT_EQ(edit, ::GetFocus());
    EXPECT_TRUE(Window::ClickHelper(button));
    EXPECT_EQ(button, ::GetFocus());
    EXPECT_TRUE(Window::ClearTextHelper(edit));
    EXPECT_EQ(edit, ::GetFocus());
    ::DestroyWindow(parent);
}

TEST(MouseClick, NeedsAHandleAndARectangle) {
    const LogCapture log;
    Window::SimulateMouseClick(nullptr);
    Window::SimulateMouseClick(DeadHandle());
    EXPECT_EQ((Messages{"Window::SimulateMouseClick: SimulateMouseClick - Null control handle",
                        "Window::SimulateMouseClick: Failed to get control rect - Error: 1400"}),
              log.Messages());
}

}  // namespace
}  // namespace dialwright
