#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "look/control_tree.h"
#include "look/ready_commands.h"
#include "look/window_list.h"
#include "script/dialog_script_manager.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"
#include "window/window.h"

namespace dialwright::tools {
namespace {

using testing::kDialogClass;
using testing::kPlainClass;
using testing::LogCapture;
using testing::PracticeWindow;

const ControlInfo& ById(const std::vector<ControlInfo>& controls, HWND handle) {
    const auto found = std::ranges::find(controls, handle, &ControlInfo::handle);
    if (found == controls.end()) throw std::runtime_error("the control was not read");
    return *found;
}

class Look : public ::testing::TestWithParam<const wchar_t*> {
protected:
    const LogCapture quiet;
    PracticeWindow target{GetParam()};
    const std::vector<ControlInfo> controls = ReadControls(target.Handle());
};

TEST_P(Look, NamesControlsAsTheLibraryFindsThem) {
    const Window window(GetParam(), target.Title(), 5000, false);
    ASSERT_EQ(target.Handle(), window.hwndWindow);
    ASSERT_GT(controls.size(), 10U);
    for (const ControlInfo& control : controls) {
        EXPECT_EQ(control.handle, window.FindControlByHierarchy(control.path));
        EXPECT_EQ(control.idIsOurs, window.GetControlHandle(control.id) == control.handle) << control.id;
        const RECT local = Window::GetLocalCoordinates(control.handle);
        EXPECT_EQ((Rectangle{.left = local.left, .top = local.top, .right = local.right, .bottom = local.bottom}),
                  control.rectangle);
    }
}

TEST_P(Look, TellsTheToleranceWithWhichTheLibraryFindsAControlByItsPlace) {
    const Window window(GetParam(), target.Title(), 5000, false);
    int narrow = 0;
    for (const ControlInfo& control : controls) {
        const auto& [left, top, right, bottom] = control.rectangle;
        const int tolerance = control.tolerance.value_or(-1);
        EXPECT_EQ(control.handle, window.FindControlByPosition(left, top, right, bottom, tolerance));
        if (tolerance < 8) ++narrow;
    }
    EXPECT_EQ(0, narrow);
}

TEST_P(Look, TellsANarrowToleranceWhereControlsAreClose) {
    target.Do(L"create edit 301 300,240,60,20 0 first");
    target.Do(L"create edit 302 302,240,60,20 0 second");
    target.Do(L"create edit 303 300,240,60,20 0 third");
    const std::vector<ControlInfo> now = ReadControls(target.Handle());
    const ControlInfo& second = ById(now, target.Control(302));
    EXPECT_EQ(1, second.tolerance);
    EXPECT_EQ(std::nullopt, ById(now, target.Control(303)).tolerance);
    const auto& [left, top, right, bottom] = second.rectangle;
    const Window window(GetParam(), target.Title(), 5000, false);
    EXPECT_EQ(second.handle, window.FindControlByPosition(left, top, right, bottom, 1));
    EXPECT_EQ(target.Control(301), window.FindControlByPosition(left, top, right, bottom, 2));
    const WindowInfo info = ReadWindow(target.Handle());
    const auto verb = [&](HWND control) {
        const std::wstring line = ReadyCommands(info, ById(now, control), NamedBy::Rectangle).at(0);
        return line.substr(0, line.find(L' '));
    };
    EXPECT_EQ(L"Window.SetText.Position", verb(second.handle));
    EXPECT_EQ(L"Window.SetText.Path", verb(target.Control(303)));
}

TEST_P(Look, TellsKindsStatesAndTexts) {
    EXPECT_EQ(ControlKind::Edit, ById(controls, target.Control(15)).kind);
    EXPECT_EQ(L"Hello", ById(controls, target.Control(15)).text);
    EXPECT_EQ(ControlKind::PushButton, ById(controls, target.Control(21)).kind);
    EXPECT_EQ(ControlKind::CheckBox, ById(controls, target.Control(31)).kind);
    EXPECT_EQ(ControlKind::RadioButton, ById(controls, target.Control(41)).kind);
    EXPECT_EQ(ControlKind::GroupBox, ById(controls, target.Control(45)).kind);
    EXPECT_EQ(ControlKind::Dropdown, ById(controls, target.Control(51)).kind);
    EXPECT_FALSE(ById(controls, target.Control(34)).enabled);
    EXPECT_FALSE(ById(controls, target.Control(35)).visible);
}

TEST_P(Look, NeverReadsAPasswordField) {
    EXPECT_EQ(1, DialogScriptManager().ExecuteCommand(target.Line(L"Window.SetText", L"14 \"s3cret\" 5000").c_str()));
    const std::vector<ControlInfo> now = ReadControls(target.Handle());
    EXPECT_EQ(ControlKind::Password, ById(now, target.Control(14)).kind);
    EXPECT_EQ(L"", ById(now, target.Control(14)).text);
}

TEST_P(Look, WritesALineThatPressesTheVeryButton) {
    const WindowInfo window = ReadWindow(target.Handle());
    const auto isPressed = [](const std::string& event) { return event.starts_with("sent 22 BM_CLICK"); };
    for (const NamedBy way : {NamedBy::Id, NamedBy::Path, NamedBy::Rectangle}) {
        (void)target.TakeEvents();
        const std::wstring line = ReadyCommands(window, ById(controls, target.Control(22)), way).at(0);
        EXPECT_EQ(1, DialogScriptManager().ExecuteCommand(line.c_str()));
        EXPECT_TRUE(std::ranges::any_of(target.TakeEvents(), isPressed)) << static_cast<int>(way);
    }
}

INSTANTIATE_TEST_SUITE_P(At, Look, ::testing::Values(kDialogClass, kPlainClass),
                         [](const auto& info) { return std::string(info.index == 0 ? "ADialog" : "AnotherWindow"); });

TEST(WindowList, HasTheWindowsInTheLibrarysOrder) {
    const LogCapture quiet;
    // Other tests have windows of the same class, which come and go.
    const std::wstring title = testing::UniqueTitle();
    const PracticeWindow first(kPlainClass, {}, title + L" 1");
    const PracticeWindow second(kPlainClass, {}, title + L" 2");
    const std::vector<WindowInfo> windows = ListTopLevelWindows();
    const WindowMatcher matcher({.className = kPlainClass, .title = title + L".*", .literal = false});
    const auto taken = std::ranges::find_if(windows, [&](const WindowInfo& window) { return matcher.Takes(window); });
    ASSERT_NE(windows.end(), taken);
    EXPECT_EQ(Window(kPlainClass, title + L".*", 1000, true).hwndWindow, taken->handle);
}

TEST(WindowList, TellsWhoseWindowItIs) {
    const PracticeWindow target(kPlainClass);
    const WindowInfo info = ReadWindow(target.Handle());
    EXPECT_EQ(L"practice_target.exe", info.program);
    EXPECT_EQ(target.Title(), info.title);
    EXPECT_EQ(kPlainClass, info.className);
    EXPECT_TRUE(info.visible);
    EXPECT_EQ(nullptr, ReadWindow(reinterpret_cast<HWND>(std::uintptr_t{0xDEAD})).handle);
}

}  // namespace
}  // namespace dialwright::tools
