#include <gtest/gtest.h>

#include <array>
#include <string>

#include "proven_lines.h"
#include "support/child_process.h"
#include "support/other_program.h"
#include "support/practice_window.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

#include <prsht.h>

// Every line that dialwright.exe writes, carried out on our own target and on programs that nobody here wrote.
namespace dialwright::testing {
namespace {

constexpr std::array kWays = {L"id", L"path", L"rectangle"};

/// Anywhere within the window.
bool IsShown(HWND window, int id) {
    for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (::GetDlgCtrlID(child) == id && ::IsWindowVisible(child)) return true;
        if (IsShown(child, id)) return true;
    }
    return false;
}

class ReadyLines : public ::testing::TestWithParam<const wchar_t*> {};

TEST_P(ReadyLines, MoveTheVeryControlsOfThePracticeTarget) {
    const PracticeWindow target(GetParam());
    for (const wchar_t* const way : kWays) EXPECT_EQ(26, ProveLines(target.Handle(), way)) << way;
}

TEST_P(ReadyLines, MoveTheVeryWindow) {
    const PracticeWindow target(GetParam());
    ProveWindowLines(target.Handle());
}

INSTANTIATE_TEST_SUITE_P(At, ReadyLines, ::testing::Values(kDialogClass, kPlainClass),
                         [](const auto& info) { return std::string(info.index == 0 ? "ADialog" : "AnotherWindow"); });

/// Made now: Notepad asks about a file that is not there.
std::wstring EmptyFile(const std::wstring& path) {
    WriteFile(path, "");
    return path;
}

/// With an empty file of its own.
class OpenNotepad {
public:
    /// Once its title is the one that it keeps; null when that does not come.
    [[nodiscard]] HWND Window() const {
        const HWND window = program.WaitForWindow(L"Notepad");
        const auto isLoaded = [&] {
            std::array<wchar_t, 256> title{};
            ::GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
            return std::wstring_view(title.data()).find(name) != std::wstring_view::npos;
        };
        return WaitUntil(isLoaded) ? window : nullptr;
    }
    [[nodiscard]] bool HasEnded() const { return program.HasEnded(); }

private:
    const TemporaryFolder folder;
    const std::wstring name = UniqueTitle();
    const OtherProgram program{L"notepad.exe \"" + EmptyFile(folder.File(name + L".txt")) + L"\""};
};

TEST(ReadyLinesOfOthers, TypeIntoNotepad) {
    const OpenNotepad notepad;
    const HWND window = notepad.Window();
    ASSERT_NE(nullptr, window);
    for (const wchar_t* const way : kWays) EXPECT_EQ(2, ProveLines(window, way)) << way;
}

TEST(ReadyLinesOfOthers, MoveAndCloseNotepad) {
    const OpenNotepad notepad;
    const HWND window = notepad.Window();
    ASSERT_NE(nullptr, window);
    ProveWindowLines(window);
    EXPECT_TRUE(notepad.HasEnded());
}

/// The command of the first item whose text begins so; 0 when there is none.
UINT CommandIn(HMENU menu, const std::wstring& beginning) {
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        if (const HMENU below = ::GetSubMenu(menu, i)) {
            if (const UINT found = CommandIn(below, beginning)) return found;
            continue;
        }
        std::array<wchar_t, 64> text{};
        ::GetMenuStringW(menu, static_cast<UINT>(i), text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
        if (std::wstring(text.data()).starts_with(beginning)) return ::GetMenuItemID(menu, i);
    }
    return 0;
}

struct MenuSearch {
    std::wstring beginning;
    UINT found;
};

BOOL CALLBACK VisitMenu(HMODULE file, const wchar_t*, wchar_t* name, LONG_PTR parameter) {
    auto& search = *reinterpret_cast<MenuSearch*>(parameter);
    const HMENU menu = ::LoadMenuW(file, name);
    search.found = CommandIn(menu, search.beginning);
    ::DestroyMenu(menu);
    return search.found == 0 ? TRUE : FALSE;
}

/// A program's menu cannot be read from another process; its file can.
UINT MenuCommandOf(const wchar_t* program, const std::wstring& beginning) {
    MenuSearch search{.beginning = beginning, .found = 0};
    const HMODULE file = ::LoadLibraryExW(program, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ::EnumResourceNamesW(file, RT_MENU, &VisitMenu, reinterpret_cast<LONG_PTR>(&search));
    ::FreeLibrary(file);
    return search.found;
}

TEST(ReadyLinesOfOthers, FillInAndLeaveTheSearchOfTheRegistryEditor) {
    const OtherProgram editor(L"regedit.exe");
    const HWND window = editor.WaitForWindow(L"RegEdit_RegEdit");
    ASSERT_NE(nullptr, window);
    const UINT find = MenuCommandOf(L"C:\\windows\\regedit.exe", L"&Find");
    ASSERT_NE(0U, find);
    ::PostMessageW(window, WM_COMMAND, find, 0);
    const HWND dialog = editor.WaitForWindow(kDialogClass);
    ASSERT_NE(nullptr, dialog);
    // Two lines for the field, one for each of four check boxes.
    for (const wchar_t* const way : kWays) EXPECT_EQ(6, ProveLines(dialog, way)) << way;
    EXPECT_EQ(1, Execute(LineFor(dialog, IDCANCEL)));
    EXPECT_TRUE(WaitUntil([&] { return ::IsWindow(dialog) == FALSE; }));
}

TEST(ReadyLinesOfOthers, SelectAndCheckAndLeaveInTheSettingsOfThePlatform) {
    const OtherProgram settings(L"winecfg.exe");
    const HWND window = settings.WaitForWindow(kDialogClass);
    ASSERT_NE(nullptr, window);
    // A timer mends what was typed into it.
    constexpr int kResolutionField = 1108;
    int proven = 0;
    for (const WPARAM page : {0U, 2U}) {
        ::SendMessageW(window, PSM_SETCURSEL, page, 0);
        for (const wchar_t* const way : kWays) proven += ProveLines(window, way, kResolutionField);
    }
    EXPECT_TRUE(IsShown(window, kResolutionField));
    EXPECT_LE(15, proven);
    EXPECT_EQ(1, Execute(LineFor(window, IDCANCEL, L"rectangle")));
    EXPECT_TRUE(settings.HasEnded());
}

TEST(ReadyLinesOfOthers, LeadThroughAnInstaller) {
    if (std::wstring(L"" PRACTICE_SETUP).empty()) GTEST_SKIP() << "no makensis here";
    constexpr int kFolderField = 1019;
    constexpr int kAcceptBox = 1034;
    const OtherProgram setup(L"\"" + ProgramFolder() + L"" PRACTICE_SETUP "\"");
    const HWND window = setup.WaitForWindow(kDialogClass);
    ASSERT_NE(nullptr, window);
    ASSERT_TRUE(WaitUntil([&] { return IsShown(window, kFolderField); }));
    for (const wchar_t* const way : kWays) EXPECT_EQ(2, ProveLines(window, way)) << way;

    std::wstring line = LineFor(window, kFolderField);
    EXPECT_EQ(1, Execute(line.replace(line.find(L"TEXT"), 4, L"C:\\practice")));
    ASSERT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(::GetDlgItem(window, IDOK)) != FALSE; }));
    // Its second click comes to a page that does not let it through.
    EXPECT_EQ(1, Execute(LineFor(window, IDOK)));
    ASSERT_TRUE(WaitUntil([&] { return IsShown(window, kAcceptBox); }));
    for (const wchar_t* const way : kWays) EXPECT_EQ(1, ProveLines(window, way)) << way;

    EXPECT_EQ(1, Execute(LineFor(window, IDCANCEL, L"path")));
    EXPECT_TRUE(setup.HasEnded());
}

}  // namespace
}  // namespace dialwright::testing
