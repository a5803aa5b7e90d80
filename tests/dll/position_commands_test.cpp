#include <gtest/gtest.h>

#include <string>

#include "failures.h"
#include "library.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"

namespace dialwright::testing {
namespace {

TEST(PositionCommands, RefuseStatesOtherThan0And1BeforeAnySearch) {
    ExpectFailures({
        {L"Window.SetCheckbox.ByPosition Cls Title 10,20,110,45 3 2",
         Refused("ExecuteCheckboxByPosition: Invalid checkbox state: 2")},
        {L"Window.SetCheckbox.ByPosition Cls Title 10,20,110,45 3 -1",
         Refused("ExecuteCheckboxByPosition: Invalid checkbox state: -1")},
        {L"Window.SetCheckbox.ByPosition Cls Title 10,20,110 3 2",
         Refused("ExecuteCheckboxByPosition: Invalid number of coordinates")},
    });
}

TEST(PositionCommands, CountCoordinatesWhereTheCommandCounts) {
    ExpectFailures({
        {L"Window.SetText.Position c t 10,20,110 5 x",
         Refused("ExecuteWindowSetTextPosition: Invalid number of coordinates")},
        {L"Window.ClickButton.Position c t 10,20,110 5",
         Refused("ExecuteWindowClickButtonPosition: Invalid number of coordinates")},
        {L"Window.ClickButton.Position c t 10,20,110,45,7 5",
         Refused("ExecuteWindowClickButtonPosition: Invalid number of coordinates")},
        {L"Window.ClearText.Position c t 1 5",
         Refused("ExecuteWindowClearTextPosition: Invalid number of coordinates")},
        {L"Window.SelectRadio.ByPosition c t , 5", Refused("ExecuteRadioByPosition: Invalid number of coordinates")},
        {L"Window.Move c t 100,200,300 800,600", Refused("ExecuteWindowMove: Invalid number of coordinates")},
        {L"Window.Move c t 100,200 800", Refused("ExecuteWindowMove: Invalid number of dimensions")},
        {L"Window.Move c t 1,2 3,4,5", Refused("ExecuteWindowMove: Invalid number of dimensions")},
        {L"Window.Move c t 100 800", Refused("ExecuteWindowMove: Invalid number of coordinates")},
        // The dropdown commands count nothing; too few fail without a word.
        {L"Window.SelectDropdown.ByPosition.Value c t 10,20,110 5 x", {}},
        {L"Window.SelectDropdown.ByPosition.Index c t 10 5 x", {}},
    });
}

TEST(PositionCommands, ReadCoordinatesInOrderAndReportTheFirstBadOne) {
    ExpectFailures({
        {L"Window.ClickButton.Position c t a,b,c,d x", Unreadable("leftX: a")},
        {L"Window.ClickButton.Position c t 10,,110,45 x", Unreadable("topY: ")},
        {L"Window.ClickButton.Position c t 10,20,x,45 x", Unreadable("rightX: x")},
        {L"Window.ClickButton.Position c t 10,20,110,x x", Unreadable("bottomY: x")},
        {L"Window.ClickButton.Position c t 10,20,110,45 x", Unreadable("tolerance: x")},
        {L"Window.SetText.Position c t 1,2,3,x 5 text", Unreadable("bottomY: x")},
        {L"Window.ClearText.Position c t 1,2,3,x 5", Unreadable("bottomY: x")},
        {L"Window.SelectRadio.ByPosition c t 1,2,3,x 5", Unreadable("bottomY: x")},
        {L"Window.SetCheckbox.ByPosition c t 1,2,3,x 5 1", Unreadable("bottomY: x")},
        {L"Window.SelectDropdown.ByPosition.Value c t 1,2,3,x 5 y", Unreadable("bottomY: x")},
        {L"Window.SelectDropdown.ByPosition.Index c t 1,2,3,x 5 1", Unreadable("bottomY: x")},
        {L"Window.SelectDropdown.ByPosition.Index c t 10,20,110,45 5 x", Unreadable("index: x")},
        {L"Window.SetCheckbox.ByPosition c t 10,20,110,45 5 x", Unreadable("state: x")},
        {L"Window.Move c t a,b c,d", Unreadable("X position: a")},
        {L"Window.Move c t 1,b c,d", Unreadable("Y position: b")},
        {L"Window.Move c t 1,2 c,d", Unreadable("width: c")},
        {L"Window.Move c t 1,2 3,d", Unreadable("height: d")},
    });
}

TEST(PositionCommands, AcceptATrailingCommaAndAFifthDropdownNumber) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    const std::wstring place = RectangleArgument(RelativeRectOf(target.Control(51)));
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.SelectDropdown.ByPosition.Value", place + L",7 0 Gamma")));
    EXPECT_EQ(2, SelectionOf(target.Control(51)));
    const std::wstring button = RectangleArgument(RelativeRectOf(target.Control(21)));
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.ClickButton.Position", button + L", 0")));
}

TEST(PositionCommands, FailByTimeoutWithANegativeTolerance) {
    const PracticeWindow target(kPlainClass);
    const std::wstring place = RectangleArgument(RelativeRectOf(target.Control(21)));
    const LogCapture log;
    EXPECT_EQ(0, ExecuteCommand(target.BriefLine(L"Window.ClickButton.Position", place + L" -1")));
    EXPECT_GE(log.MessagesFrom("Window::FindControlByPosition: Position search failed:").size(), 1U);
}

TEST(PositionCommands, AControlThatMovesIntoPlaceIsFoundByPosition) {
    PracticeWindow target(kPlainClass);
    const std::wstring place = RectangleArgument(RelativeRectOf(target.Control(15)));
    target.Do(L"move 15 5,5,10,10");
    target.DoAfter(350, L"move 15 90,120,170,22");
    const LogCapture log;
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.ClearText.Position", place + L" 0 20000")));
    EXPECT_EQ(L"", TextOf(target.Control(15)));
}

}  // namespace
}  // namespace dialwright::testing
