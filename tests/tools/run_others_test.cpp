#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/text_encoding.h"
#include "proven_lines.h"
#include "run_program.h"
#include "run_tool.h"
#include "support/child_process.h"
#include "support/other_program.h"
#include "support/practice_window.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

// What inspect writes of programs that nobody here wrote goes into a script, the script into run, and the effect is
// seen from outside.
namespace dialwright::testing {
namespace {

class RunOnOthers : public ::testing::Test {
protected:
    void RunLines(const std::vector<std::wstring>& lines) const {
        std::string script;
        for (const std::wstring& line : lines) script += ToUtf8(line) + "\r\n";
        WriteFile(folder.File(L"script.txt"), script);
        const Ended ended = RunTool({L"run", L"--work-folder", folder.File(L"work"), folder.File(L"script.txt")});
        EXPECT_EQ(0U, ended.code) << ended.Text();
    }

    [[nodiscard]] static std::wstring WithText(std::wstring line, const std::wstring& text) {
        return line.replace(line.find(L"TEXT"), 4, text);
    }

    const TemporaryFolder folder;
};

TEST_F(RunOnOthers, TypesIntoNotepadAndClosesIt) {
    const std::wstring path = folder.File(UniqueTitle() + L".txt");
    WriteFile(path, "");
    const OtherProgram notepad(L"notepad.exe \"" + path + L"\"");
    const HWND window = notepad.WaitForWindow(L"Notepad");
    ASSERT_NE(nullptr, window);
    // Its title is another one until the file is loaded.
    const std::wstring name = path.substr(path.rfind(L'\\') + 1);
    ASSERT_TRUE(WaitUntil([&] { return TextOf(window).find(name) != std::wstring::npos; }));
    const HWND edit = ::GetWindow(window, GW_CHILD);
    RunLines({WithText(LineFor(window, ::GetDlgCtrlID(edit), L"path"), L"Ada")});
    EXPECT_EQ(L"Ada", TextOf(edit));
    ::SendMessageW(edit, EM_SETMODIFY, FALSE, 0);  // else it asks whether to save
    RunLines({WindowLine(window, L"Window.Close")});
    EXPECT_TRUE(notepad.HasEnded());
}

TEST_F(RunOnOthers, MaximizesAndClosesTheRegistryEditor) {
    const OtherProgram editor(L"regedit.exe");
    const HWND window = editor.WaitForWindow(L"RegEdit_RegEdit");
    ASSERT_NE(nullptr, window);
    RunLines({WindowLine(window, L"Window.Maximize")});
    EXPECT_TRUE(::IsZoomed(window));
    RunLines({WindowLine(window, L"Window.Restore"), WindowLine(window, L"Window.Close")});
    EXPECT_TRUE(editor.HasEnded());
}

TEST_F(RunOnOthers, LeavesTheSettingsOfThePlatform) {
    const OtherProgram settings(L"winecfg.exe");
    const HWND window = settings.WaitForWindow(kDialogClass);
    ASSERT_NE(nullptr, window);
    RunLines({LineFor(window, IDCANCEL, L"rectangle")});
    EXPECT_TRUE(settings.HasEnded());
}

TEST_F(RunOnOthers, FillsInAndLeavesAnInstaller) {
    if (std::wstring(L"" PRACTICE_SETUP).empty()) GTEST_SKIP() << "no makensis here";
    constexpr int kFolderField = 1019;
    const OtherProgram setup(L"\"" + ProgramFolder() + L"" PRACTICE_SETUP "\"");
    const HWND window = setup.WaitForWindow(kDialogClass);
    ASSERT_NE(nullptr, window);
    HWND field = nullptr;
    ASSERT_TRUE(WaitUntil([&] {
        const HWND page = ::FindWindowExW(window, nullptr, kDialogClass, nullptr);
        field = ::GetDlgItem(page, kFolderField);
        return field != nullptr && ::IsWindowVisible(field);
    }));
    std::wstring clear = LineFor(window, kFolderField);
    clear = L"Window.ClearText" + clear.substr(std::wstring(L"Window.SetText").size());
    clear.erase(clear.find(L" \"TEXT\""), 7);
    RunLines({clear, WithText(LineFor(window, kFolderField), L"C:\\practice run")});
    EXPECT_EQ(L"C:\\practice run", TextOf(field));
    RunLines({LineFor(window, IDCANCEL, L"path")});
    EXPECT_TRUE(setup.HasEnded());
}

}  // namespace
}  // namespace dialwright::testing
