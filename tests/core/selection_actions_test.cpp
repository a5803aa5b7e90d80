#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"
#include "window/window.h"

namespace dialwright {
namespace {

using testing::Hex;
using testing::LogCapture;
using testing::PracticeWindow;

using Events = std::vector<std::string>;
using Messages = std::vector<std::string>;

/// What this control received and what it told its parent.
Events EventsOf(int id, PracticeWindow& target) {
    Events events = target.TakeAllEvents();
    const std::string named = " " + std::to_string(id) + " ";
    std::erase_if(events, [&](const std::string& event) { return event.find(named) == std::string::npos; });
    return events;
}

TEST(SelectByValue, SetsTheItemSilentlyWhateverItsCase) {
    PracticeWindow target;
    const LogCapture log;
    EXPECT_TRUE(Window::SelectDropdownByValueInternal(target.Control(51), L"bETA"));
    EXPECT_EQ((Events{"sent 51 CB_FINDSTRINGEXACT -1", "sent 51 CB_SETCURSEL 1"}), EventsOf(51, target));
    EXPECT_EQ(1, testing::SelectionOf(target.Control(51)));
    EXPECT_EQ("", log.Text());
}

TEST(SelectByValue, WantsTheWholeItem) {
    PracticeWindow target;
    const LogCapture log;
    EXPECT_FALSE(Window::SelectDropdownByValueInternal(target.Control(51), L"Bet"));
    EXPECT_EQ((Events{"sent 51 CB_FINDSTRINGEXACT -1"}), EventsOf(51, target));
    EXPECT_EQ((Messages{"Window::SelectDropdownByValueInternal: Value 'Bet' not found in dropdown"}), log.Messages());
}

TEST(SelectByIndex, SetsTheItemSilently) {
    PracticeWindow target;
    const LogCapture log;
    EXPECT_TRUE(Window::SelectDropdownByIndexInternal(target.Control(52), 2));
    const Events events = target.TakeEvents();
    EXPECT_EQ((Events{"sent 52 CB_GETCOUNT", "sent 52 CB_SETCURSEL 2"}), events);
    EXPECT_EQ(2, testing::SelectionOf(target.Control(52)));
    EXPECT_EQ("", log.Text());
}

TEST(SelectByIndex, RefusesIndicesOutsideTheList) {
    PracticeWindow target;
    const LogCapture log;
    EXPECT_FALSE(Window::SelectDropdownByIndexInternal(target.Control(51), 3));
    EXPECT_FALSE(Window::SelectDropdownByIndexInternal(target.Control(51), -1));
    EXPECT_EQ((Events{"sent 51 CB_GETCOUNT"}), EventsOf(51, target));
    EXPECT_EQ((Messages{"Window::SelectDropdownByIndexInternal: Index 3 out of range (total items: 3)",
                        "Window::SelectDropdownByIndexInternal: Invalid negative index: -1"}),
              log.Messages());
}

TEST(Selection, FailsWithoutAWordWhereTheItemIsNotTaken) {
    PracticeWindow target;
    target.Do(L"create refuser 78 10,10,50,20 0 x");
    const LogCapture log;
    EXPECT_FALSE(Window::SelectDropdownByValueInternal(target.Control(78), L"Beta"));
    EXPECT_FALSE(Window::SelectDropdownByIndexInternal(target.Control(78), 2));
    EXPECT_EQ("", log.Text());
}

TEST(Selection, RefusesANullHandleWithoutAWord) {
    const LogCapture log;
    EXPECT_FALSE(Window::SelectDropdownByValueInternal(nullptr, L"Beta"));
    EXPECT_FALSE(Window::SelectDropdownByIndexInternal(nullptr, 0));
    EXPECT_EQ("", log.Text());
}

struct CheckRow {
    int id;
    int state;
    const wchar_t* label;
    const char* message;
};

TEST(SetCheckState, SetsTheStateSilently) {
    PracticeWindow target;
    const CheckRow rows[] = {
        {31, 1, L"Checkbox", "Checkbox state successfully set to 1"},
        {31, 0, L"Checkbox", "Checkbox state successfully set to 0"},
        {32, 1, L"Checkbox", "Checkbox state successfully set to 1"},
        {33, 1, L"Checkbox", "Checkbox state successfully set to 1"},
        {41, 1, L"Radio button", "Radio button state successfully set to 1"},
    };
    for (const CheckRow& row : rows) {
        const std::string id = std::to_string(row.id);
        const LogCapture log;
        EXPECT_TRUE(Window::SetCheckState(target.Control(row.id), row.state, row.label));
        EXPECT_EQ((Events{"sent " + id + " BM_SETCHECK " + std::to_string(row.state), "sent " + id + " BM_GETCHECK"}),
                  target.TakeEvents());
        EXPECT_EQ(row.state, testing::CheckStateOf(target.Control(row.id)));
        (void)target.TakeEvents();
        EXPECT_EQ((Messages{std::string("Window::SetCheckState: ") + row.message}), log.Messages());
    }
}

TEST(SetCheckState, RefusesAPushButtonAndADeadControl) {
    PracticeWindow target;
    for (const int id : {21, 34, 35}) {
        const HWND control = target.Control(id);
        const LogCapture log;
        EXPECT_FALSE(Window::SetCheckState(control, 1, L"Checkbox"));
        EXPECT_EQ(Events{}, target.TakeEvents());
        EXPECT_EQ((Messages{"Window::SetCheckState: Control (0x" + Hex(control) + ") is " +
                            (id == 21 ? "not a checkbox/radio button" : "disabled or hidden")}),
                  log.Messages());
    }
}

TEST(SetCheckState, LetsAGroupBoxThroughAndReportsThatItDidNotChange) {
    const PracticeWindow target;
    const LogCapture log;
    EXPECT_FALSE(Window::SetCheckState(target.Control(45), 1, L"Checkbox"));
    EXPECT_EQ((Messages{"Window::SetCheckState: Failed to set Checkbox state.\nPrevious: 0\nNew: 0"}), log.Messages());
}

TEST(SetCheckState, SaysThatANullHandleIsNoControl) {
    const LogCapture log;
    EXPECT_FALSE(Window::SetCheckState(nullptr, 1, L"Radio button"));
    EXPECT_EQ((Messages{"Window::SetCheckState: Radio button control not found"}), log.Messages());
}

}  // namespace
}  // namespace dialwright
