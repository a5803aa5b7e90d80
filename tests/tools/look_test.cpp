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

/// The first ready line of a control, with its placeholder filled in.
std::wstring FirstLine(const WindowInfo& window, const ControlInfo& control) {
    std::wstring line = ReadyCommands(window, control).at(0);
    const std::size_t placeholder = line.find(L"TEXT");
    if (placeholder != std::wstring::npos) line.replace(placeholder, 4, L"typed");
    return line;
}

TEST_P(Look, WritesLinesThatMoveTheVeryControl) {
    const WindowInfo window = ReadWindow(target.Handle());
    int proven = 0;
    for (const ControlInfo& control : controls) {
        if (ReadyCommands(window, control).empty() || !control.enabled || !control.visible) continue;
        if (control.kind == ControlKind::PushButton) continue;  // pressed in a test of its own
        ASSERT_EQ(1, DialogScriptManager().ExecuteCommand(FirstLine(window, control).c_str())) << control.id;
        if (control.kind == ControlKind::Edit) {
            EXPECT_NE(std::wstring::npos, testing::TextOf(control.handle).find(L"typed")) << control.id;
        } else if (control.kind == ControlKind::CheckBox || control.kind == ControlKind::RadioButton) {
            EXPECT_EQ(1, testing::CheckStateOf(control.handle)) << control.id;
        } else if (control.kind == ControlKind::Dropdown) {
            EXPECT_EQ(0, testing::SelectionOf(control.handle)) << control.id;
        }
        ++proven;
    }
    EXPECT_GT(proven, 8);
}

TEST_P(Look, WritesALineThatPressesTheVeryButton) {
    const WindowInfo window = ReadWindow(target.Handle());
    (void)target.TakeEvents();
    EXPECT_EQ(1, DialogScriptManager().ExecuteCommand(FirstLine(window, ById(controls, target.Control(22))).c_str()));
    const auto events = target.TakeEvents();
    EXPECT_TRUE(
        std::ranges::any_of(events, [](const std::string& event) { return event.starts_with("sent 22 BM_CLICK"); }));
}

INSTANTIATE_TEST_SUITE_P(At, Look, ::testing::Values(kDialogClass, kPlainClass),
                         [](const auto& info) { return std::string(info.index == 0 ? "ADialog" : "AnotherWindow"); });

TEST(WindowList, HasTheWindowsInTheLibrarysOrder) {
    const LogCapture quiet;
    const PracticeWindow first(kPlainClass);
    const PracticeWindow second(kPlainClass);
    const std::vector<WindowInfo> windows = ListTopLevelWindows();
    const WindowMatcher matcher({.className = kPlainClass, .title = L".*", .literal = false});
    const auto taken = std::ranges::find_if(windows, [&](const WindowInfo& window) { return matcher.Takes(window); });
    ASSERT_NE(windows.end(), taken);
    EXPECT_EQ(Window(kPlainClass, L".*", 1000, true).hwndWindow, taken->handle);
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
