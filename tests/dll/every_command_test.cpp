#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "language/commands.h"
#include "library.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

// Each of the 27 commands through the export: its messages in their order, its effect seen from outside, and what it
// does without its window or its control.
namespace dialwright::testing {
namespace {

using Events = std::vector<std::string>;

constexpr int kEdit = 12;
constexpr int kGreeting = 15;
constexpr int kButton = 21;
constexpr int kCheck = 31;
constexpr int kRadio = 41;
constexpr int kDropdown = 51;

std::wstring Id(int id) { return std::to_wstring(id); }

/// A little off on every edge, with a tolerance that allows it.
std::wstring PositionOf(const PracticeWindow& target, int id) {
    const Rectangle place = RelativeRectOf(target.Control(id));
    return RectangleArgument({place.left - 2, place.top + 2, place.right + 2, place.bottom - 2}) + L" 3";
}

std::string ClickPoint(const PracticeWindow& target, int id) {
    RECT client{};
    ::GetClientRect(target.Control(id), &client);
    return std::to_string(client.right / 2) + "," + std::to_string(client.bottom / 2);
}

Events Clicked(const PracticeWindow& target, int id) {
    const std::string beginning = "posted " + std::to_string(id) + " WM_LBUTTON";
    return {beginning + "DOWN " + ClickPoint(target, id) + " keys 1",
            beginning + "UP " + ClickPoint(target, id) + " keys 0"};
}

Events Typed(const PracticeWindow& target) {
    Events events = {"sent 12 WM_CHAR U+0061", "sent 12 WM_CHAR U+0020", "sent 12 WM_CHAR U+3042",
                     "posted window WM_COMMAND 12 EN_CHANGE"};
    for (std::string& event : Clicked(target, kEdit)) events.push_back(std::move(event));
    return events;
}

Events Pressed(const PracticeWindow& target) {
    Events events = {"sent 21 BM_CLICK"};
    for (std::string& event : Clicked(target, kButton)) events.push_back(std::move(event));
    return events;
}

Events Cleared(const PracticeWindow&) { return {"sent 15 WM_SETTEXT", "posted window WM_COMMAND 15 EN_CHANGE"}; }

Events SelectedByValue(const PracticeWindow&) { return {"sent 51 CB_FINDSTRINGEXACT -1", "sent 51 CB_SETCURSEL 1"}; }

Events SelectedByIndex(const PracticeWindow&) { return {"sent 51 CB_GETCOUNT", "sent 51 CB_SETCURSEL 1"}; }

Events Checked(const PracticeWindow&) { return {"sent 31 BM_SETCHECK 1", "sent 31 BM_GETCHECK"}; }

Events RadioSet(const PracticeWindow&) { return {"sent 41 BM_SETCHECK 1", "sent 41 BM_GETCHECK"}; }

Events Nothing(const PracticeWindow&) { return {}; }

Events AskedToClose(const PracticeWindow&) { return {"posted window WM_CLOSE"}; }

bool HasText(const PracticeWindow& t) { return TextOf(t.Control(kEdit)) == L"a \x3042"; }
bool HasNoGreeting(const PracticeWindow& t) { return TextOf(t.Control(kGreeting)).empty(); }
bool Always(const PracticeWindow&) { return true; }
bool HasBeta(const PracticeWindow& t) { return SelectionOf(t.Control(kDropdown)) == 1; }
bool HasCheck(const PracticeWindow& t) { return CheckStateOf(t.Control(kCheck)) == 1; }
bool HasRadio(const PracticeWindow& t) { return CheckStateOf(t.Control(kRadio)) == 1; }
bool HasMoved(const PracticeWindow& t) { return ScreenRectOf(t.Handle()) == Rectangle{60, 70, 610, 470}; }
bool IsMinimized(const PracticeWindow& t) { return ::IsIconic(t.Handle()) != FALSE; }
bool IsMaximized(const PracticeWindow& t) { return ::IsZoomed(t.Handle()) != FALSE; }
bool IsNormal(const PracticeWindow& t) { return !IsMinimized(t) && !IsMaximized(t); }

/// How a command names its control, and what follows.
using Arguments = std::function<std::wstring(const PracticeWindow&)>;

Arguments ById(int id, const std::wstring& rest = L"") {
    return [=](const PracticeWindow&) { return Id(id) + rest; };
}

Arguments ByPath(const std::wstring& path, const std::wstring& rest = L"") {
    return [=](const PracticeWindow&) { return path + rest; };
}

Arguments AtPosition(int id, const std::wstring& rest = L"") {
    return [=](const PracticeWindow& target) { return PositionOf(target, id) + rest; };
}

Arguments Own(const std::wstring& rest) {
    return [=](const PracticeWindow&) { return rest; };
}

struct CommandCase {
    std::wstring name;
    Arguments arguments;
    Events (*events)(const PracticeWindow&);
    bool (*effect)(const PracticeWindow&);
    std::wstring missing;     // arguments that name no control; empty where a command has none
    std::string lastMessage;  // of an attempt without a control; of a missing window where there is none
};

const std::wstring kText = L" \"a \x3042\"";
const std::wstring kNoId = L"4711";
const std::wstring kNoPath = L"99";
const std::wstring kNowhere = L"5000,5000,5001,5001 0";

const std::string kNoChild = "Window::FindChildControl: Child control not found - ID: 4711";
const std::string kPathFailed =
    "Window::FindControlByHierarchy: Failed to find child window at segment: 99 in hierarchy path: 99";
const std::string kPositionFailed = "Window::FindControlByPosition: Position search failed:";
const std::string kNoEdit = "Window::SetTextHelper: SetTextHelper - Null control handle";
const std::string kNoButton = "Window::ClickHelper: ClickHelper - Null button handle";
const std::string kNoCheckbox = "Window::SetCheckState: Checkbox control not found";
const std::string kNoRadio = "Window::SetCheckState: Radio button control not found";

std::string NoWindow(const std::string& name) { return "Window::" + name + ": " + name + ": No valid window handle"; }

std::vector<CommandCase> Cases() {
    return {
        {L"Window.SetText", ById(kEdit, kText), Typed, HasText, kNoId + kText, kNoEdit},
        {L"Window.SetText.Path", ByPath(L"2", kText), Typed, HasText, kNoPath + kText, kNoEdit},
        {L"Window.SetText.Position", AtPosition(kEdit, kText), Typed, HasText, kNowhere + kText, kNoEdit},
        {L"Window.ClickButton", ById(kButton), Pressed, Always, kNoId, kNoButton},
        {L"Window.ClickButton.Path", ByPath(L"9"), Pressed, Always, kNoPath, kNoButton},
        {L"Window.ClickButton.Position", AtPosition(kButton), Pressed, Always, kNowhere, kNoButton},
        {L"Window.SelectDropdown.Value", ById(kDropdown, L" beta"), SelectedByValue, HasBeta, kNoId + L" x", kNoChild},
        {L"Window.SelectDropdown.Index", ById(kDropdown, L" 1"), SelectedByIndex, HasBeta, kNoId + L" 1", kNoChild},
        {L"Window.SelectDropdown.ByPath.Value", ByPath(L"20", L" Beta"), SelectedByValue, HasBeta, kNoPath + L" x",
         kPathFailed},
        {L"Window.SelectDropdown.ByPath.Index", ByPath(L"20", L" 1"), SelectedByIndex, HasBeta, kNoPath + L" 1",
         kPathFailed},
        {L"Window.SelectDropdown.ByPosition.Value", AtPosition(kDropdown, L" Beta"), SelectedByValue, HasBeta,
         kNowhere + L" x", kPositionFailed},
        {L"Window.SelectDropdown.ByPosition.Index", AtPosition(kDropdown, L" 1"), SelectedByIndex, HasBeta,
         kNowhere + L" 1", kPositionFailed},
        {L"Window.ClearText", ById(kGreeting), Cleared, HasNoGreeting, kNoId, kNoChild},
        {L"Window.ClearText.Path", ByPath(L"8"), Cleared, HasNoGreeting, kNoPath, kPathFailed},
        {L"Window.ClearText.Position", AtPosition(kGreeting), Cleared, HasNoGreeting, kNowhere, kPositionFailed},
        {L"Window.Move", Own(L"60,70 550,400"), Nothing, HasMoved, L"", NoWindow("MoveWindow")},
        {L"Window.BringToFront", Own(L""), Nothing, IsNormal, L"", NoWindow("BringToFront")},
        {L"Window.Minimize", Own(L""), Nothing, IsMinimized, L"", NoWindow("MinimizeWindow")},
        {L"Window.Maximize", Own(L""), Nothing, IsMaximized, L"", NoWindow("MaximizeWindow")},
        {L"Window.Restore", Own(L""), Nothing, IsNormal, L"", NoWindow("RestoreWindow")},
        {L"Window.Close", Own(L""), AskedToClose, Always, L"", NoWindow("CloseWindow")},
        {L"Window.SelectRadio", ById(kRadio), RadioSet, HasRadio, kNoId, kNoRadio},
        {L"Window.SelectRadio.ByPath", ByPath(L"18"), RadioSet, HasRadio, kNoPath, kNoRadio},
        {L"Window.SelectRadio.ByPosition", AtPosition(kRadio), RadioSet, HasRadio, kNowhere, kNoRadio},
        {L"Window.SetCheckbox", ById(kCheck, L" 1"), Checked, HasCheck, kNoId + L" 1", kNoCheckbox},
        {L"Window.SetCheckbox.ByPath", ByPath(L"12", L" 1"), Checked, HasCheck, kNoPath + L" 1", kNoCheckbox},
        {L"Window.SetCheckbox.ByPosition", AtPosition(kCheck, L" 1"), Checked, HasCheck, kNowhere + L" 1", kNoCheckbox},
    };
}

class EveryCommand : public ::testing::TestWithParam<CommandCase> {
protected:
    /// Runs the command on a target of its own and looks at what it did.
    static void ExpectDone(const std::wstring& suffix, const std::wstring& timeout) {
        const CommandCase& command = GetParam();
        PracticeWindow target(kPlainClass, {L"--refuse-close"});
        if (command.name == L"Window.Restore") target.Do(L"window 3");
        // Who is in the foreground is looked at in a test that runs alone; here the window must come back.
        if (command.name == L"Window.BringToFront") target.Do(L"window 6");
        (void)target.TakeEvents();
        const LogCapture log;
        const std::wstring line = target.Line(command.name + suffix, command.arguments(target));
        EXPECT_EQ(1, ExecuteCommand(line + timeout));
        EXPECT_EQ(command.events(target), target.TakeEvents());
        EXPECT_TRUE(WaitUntil([&] { return command.effect(target); }));
        const std::string search = suffix.empty() ? "\nRegex:    Yes\n" : "\nRegex:    No\n";
        EXPECT_NE(std::string::npos, log.Messages().front().find(search));
        const std::string shownTimeout = timeout.empty() ? "\nTimeout:  10000ms\n" : "\nTimeout:  20000ms\n";
        EXPECT_NE(std::string::npos, log.Messages().front().find(shownTimeout));
    }
};

TEST_P(EveryCommand, ActsOnItsControl) { ExpectDone(L"", L""); }

TEST_P(EveryCommand, ActsWithLiteralCriteria) { ExpectDone(L".NonRegex", L""); }

TEST_P(EveryCommand, TakesATimeout) { ExpectDone(L"", L" 20000"); }

TEST_P(EveryCommand, FailsWithoutItsWindow) {
    const CommandCase& command = GetParam();
    const std::wstring ownArguments = command.missing.empty() && command.name == L"Window.Move" ? L" 1,2 3,4" : L"";
    const LogCapture log;
    EXPECT_EQ(0, ExecuteCommand(command.name + L" NoSuchClass \"no such title\" " + command.missing + ownArguments +
                                L" 150"));
    const auto messages = log.Messages();
    ASSERT_EQ(command.missing.empty() ? 3U : 2U, messages.size());
    EXPECT_EQ("Window::Window: Window search failed after 150ms", messages[1]);
    if (command.missing.empty()) {
        EXPECT_EQ(command.lastMessage, messages[2]);
    }
}

TEST_P(EveryCommand, FailsWithoutItsControl) {
    const CommandCase& command = GetParam();
    if (command.missing.empty()) return;  // a command for the window itself
    PracticeWindow target(kPlainClass);
    const LogCapture log;
    EXPECT_EQ(0, ExecuteCommand(target.BriefLine(command.name, command.missing)));
    EXPECT_EQ(Events{}, target.TakeEvents());
    EXPECT_TRUE(log.Messages().back().starts_with(command.lastMessage)) << log.Messages().back();
}

INSTANTIATE_TEST_SUITE_P(Commands, EveryCommand, ::testing::ValuesIn(Cases()), [](const auto& info) {
    std::string name;
    for (const wchar_t c : info.param.name) {
        if (c != L'.') name.push_back(static_cast<char>(c));
    }
    return name;
});

TEST(EveryCommandCase, CoversTheWholeTableInItsOrder) {
    std::vector<std::wstring> covered;
    for (const CommandCase& command : Cases()) covered.push_back(command.name);
    std::vector<std::wstring> table;
    for (const CommandSpec& spec : kCommands) table.emplace_back(spec.name);
    EXPECT_EQ(table, covered);
}

}  // namespace
}  // namespace dialwright::testing
