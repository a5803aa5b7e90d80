#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/text_encoding.h"
#include "run_tool.h"
#include "script/dialog_script_manager.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

#include <nlohmann/json.hpp>

namespace dialwright::testing {
namespace {

class CheckProgram : public ::testing::Test {
protected:
    [[nodiscard]] std::wstring Script(const std::string& text) const {
        WriteFile(folder.File(L"script.txt"), text);
        return folder.File(L"script.txt");
    }

    const TemporaryFolder folder;
};

TEST_F(CheckProgram, EndsWith0WhereThereIsNothingToSay) {
    const Ended ended = RunTool({L"check", Script("Window.Close c t 5000\n")});
    EXPECT_EQ(0U, ended.code);
    EXPECT_EQ("", ended.Text());
}

TEST_F(CheckProgram, SaysFilePlaceAndCode) {
    const std::wstring path = Script("Window.Close c t 5000\nWindow.Clsoe c t\n");
    const Ended ended = RunTool({L"check", path});
    EXPECT_EQ(1U, ended.code);
    EXPECT_EQ((std::vector<std::string>{ToUtf8(path) +
                                        ":2:1: error DW102: unknown command Window.Clsoe; did you mean Window.Close?"}),
              ended.lines);
}

TEST_F(CheckProgram, LeavesOutWhatIsDisabled) {
    const std::wstring path = Script("# why\nWindow.Close c .* 5000\nWindow.SetCheckbox c t 12abc 1 5000\n");
    const auto codeOf = [&](const std::vector<std::wstring>& options) {
        std::vector<std::wstring> words = {L"check"};
        words.insert(words.end(), options.begin(), options.end());
        words.push_back(path);
        words.push_back(path);
        return RunTool(words).code;
    };
    EXPECT_EQ(1U, codeOf({}));
    EXPECT_EQ(1U, codeOf({L"--disable", L"DW390"}));
    EXPECT_EQ(0U, codeOf({L"--disable", L"DW390", L"--disable", L"DW306"}));
    EXPECT_EQ(2U, codeOf({L"--disable", L"DW999"}));
}

TEST_F(CheckProgram, PrintsTheScriptAsTheLibraryTakesIt) {
    const Ended ended = RunTool({L"check", L"--emit", Script("# why\nWindow.Close c t 5000\n")});
    EXPECT_EQ(0U, ended.code);
    EXPECT_EQ((std::vector<std::string>{"", "Window.Close c t 5000"}), ended.lines);
}

TEST_F(CheckProgram, TakesFileNamesInAnyAlphabet) {
    const std::wstring path = folder.File(L"caf\x00E9 \x65E5\x672C.txt");
    WriteFile(path, "Window.Close c");
    const Ended ended = RunTool({L"check", path});
    EXPECT_EQ(1U, ended.code);
    ASSERT_EQ(1U, ended.lines.size());
    EXPECT_TRUE(ended.lines[0].starts_with(ToUtf8(path) + ":1:1: error DW103: ")) << ended.lines[0];
}

TEST_F(CheckProgram, ReadsStandardInput) {
    const Ended ended = RunTool({L"check", L"-"}, "Window.Close c t soon");
    EXPECT_EQ(1U, ended.code);
    ASSERT_EQ(1U, ended.lines.size());
    EXPECT_TRUE(ended.lines[0].starts_with("<stdin>:1:18: error DW204: ")) << ended.lines[0];
}

TEST_F(CheckProgram, PrintsJson) {
    const auto json = nlohmann::json::parse(RunTool({L"check", L"--format", L"json", Script("Window.Close c")}).Text());
    EXPECT_EQ(1, json.at("schema"));
    const auto& finding = json.at("files").at(0).at("findings").at(0);
    EXPECT_EQ("DW103", finding.at("code"));
    EXPECT_EQ("error", finding.at("severity"));
    EXPECT_EQ(1, finding.at("line"));
}

TEST_F(CheckProgram, KnowsTheCheckBoxesOfInspectedWindows) {
    const PracticeWindow target;
    const PracticeWindow other(kPlainClass);
    const auto inspected = [&](const PracticeWindow& window, const wchar_t* windowClass, const wchar_t* file) {
        WriteFile(folder.File(file), RunTool({L"inspect", L"--json", windowClass, window.Title()}).Text());
        return folder.File(file);
    };
    const std::wstring dialog = inspected(target, kDialogClass, L"dialog.json");
    const std::wstring plain = inspected(other, kPlainClass, L"plain.json");
    const std::wstring path = Script(ToUtf8(target.Line(L"Window.ClickButton", L"21 5000\n")) +
                                     ToUtf8(target.Line(L"Window.ClickButton", L"31 5000\n")) +
                                     ToUtf8(target.Line(L"Window.ClickButton", L"64 5000\n")) +
                                     ToUtf8(other.Line(L"Window.ClickButton", L"64 5000\n")));
    EXPECT_EQ(0U, RunTool({L"check", path}).code);
    const Ended ended = RunTool({L"check", L"--inspect", dialog, L"--inspect", plain, path});
    EXPECT_EQ(1U, ended.code);
    // In a dialog no ID reaches the box within panels.
    ASSERT_EQ(2U, ended.lines.size()) << ended.Text();
    EXPECT_NE(std::string::npos, ended.lines[0].find(":2:")) << ended.lines[0];
    EXPECT_NE(std::string::npos, ended.lines[1].find(":4:")) << ended.lines[1];
    EXPECT_TRUE(
        ended.lines[0].ends_with(" warning DW305: a click on a check box leaves it as it was; use Window.SetCheckbox"))
        << ended.lines[0];
}

TEST_F(CheckProgram, RefusesAnInspectionThatIsNone) {
    const std::wstring path = Script("Window.Close c t 5000\n");
    for (const char* text : {"", "{}", "[1]", R"({"schema": 1, "window": 3, "controls": []})",
                             R"({"schema": 2, "window": {"class": "c", "title": "t"}, "controls": []})"}) {
        WriteFile(folder.File(L"x.json"), text);
        const Ended ended = RunTool({L"check", L"--inspect", folder.File(L"x.json"), path});
        EXPECT_EQ(2U, ended.code) << text;
        EXPECT_NE(std::string::npos, ended.Text().find("x.json is not what inspect --json prints")) << ended.Text();
    }
    EXPECT_EQ(2U, RunTool({L"check", L"--inspect", folder.File(L"nowhere.json"), path}).code);
}

TEST_F(CheckProgram, NamesFilesInSarifAsUris) {
    const std::wstring path = folder.File(L"a b%.txt");
    WriteFile(path, "Window.Close c");
    const auto json = nlohmann::json::parse(RunTool({L"check", L"--format", L"sarif", path}).Text());
    const auto& place = json.at("runs").at(0).at("results").at(0).at("locations").at(0).at("physicalLocation");
    const std::string uri = place.at("artifactLocation").at("uri");
    EXPECT_TRUE(uri.starts_with("file:///C:/")) << uri;
    EXPECT_TRUE(uri.ends_with("/a%20b%25.txt")) << uri;
}

TEST_F(CheckProgram, RefusesWhatItCannotRead) {
    EXPECT_EQ(2U, RunTool({L"check", folder.File(L"nowhere.txt")}).code);
    EXPECT_EQ(2U, RunTool({L"check"}).code);
    EXPECT_EQ(2U, RunTool({L"check", L"--format", L"poem", Script("")}).code);
    EXPECT_EQ(2U, RunTool({}).code);
    EXPECT_EQ(0U, RunTool({L"--help"}).code);
}

TEST(MatchProgram, TellsWhichWindowACommandTakes) {
    const PracticeWindow target(kPlainClass);
    const Ended taken = RunTool({L"match", kPlainClass, target.Title()});
    EXPECT_EQ(0U, taken.code);
    ASSERT_EQ(1U, taken.lines.size());
    EXPECT_TRUE(taken.lines[0].starts_with("taken   0x" + Hex(target.Handle()) + "  PracticeTarget  "));
    EXPECT_EQ(1U, RunTool({L"match", kPlainClass, L"no such title"}).code);
    EXPECT_EQ(2U, RunTool({L"match", L"(", L"x"}).code);
    const PracticeWindow second(kPlainClass);
    EXPECT_EQ(0U, RunTool({L"match", kPlainClass, L".*"}).code);
    EXPECT_EQ(1U, RunTool({L"match", L"--unique", kPlainClass, L".*"}).code);
    EXPECT_EQ(0U, RunTool({L"match", L"--unique", L"--literal", kPlainClass, target.Title()}).code);
}

TEST(WindowsProgram, ListsEveryWindow) {
    const PracticeWindow target(kPlainClass);
    const auto json = nlohmann::json::parse(RunTool({L"windows", L"--json"}).Text());
    bool found = false;
    for (const auto& window : json.at("windows")) {
        if (window.at("handle") != Hex(target.Handle())) continue;
        found = true;
        EXPECT_EQ("PracticeTarget", window.at("class"));
        EXPECT_EQ(ToUtf8(target.Title()), window.at("title").get<std::string>());
        EXPECT_EQ("practice_target.exe", window.at("program"));
    }
    EXPECT_TRUE(found);
}

TEST(InspectProgram, WritesCommandsThatWork) {
    const PracticeWindow target;
    const auto json = nlohmann::json::parse(RunTool({L"inspect", L"--json", kDialogClass, target.Title()}).Text());
    const LogCapture quiet;
    int executed = 0;
    for (const auto& control : json.at("controls")) {
        if (control.at("kind") != "checkbox" || !control.at("enabled") || !control.at("visible")) continue;
        const std::string line = control.at("commands").at(0);
        EXPECT_EQ(1, DialogScriptManager().ExecuteCommand(std::wstring(line.begin(), line.end()).c_str())) << line;
        EXPECT_EQ(1, CheckStateOf(target.Control(control.at("id"))));
        ++executed;
    }
    EXPECT_GE(executed, 3);
}

TEST(InspectProgram, TakesAHandleAndSaysWhenThereIsNoWindow) {
    const PracticeWindow target;
    const std::string handle = Hex(target.Handle());
    EXPECT_EQ(0U, RunTool({L"inspect", L"--handle", L"0x" + std::wstring(handle.begin(), handle.end())}).code);
    EXPECT_EQ(1U, RunTool({L"inspect", L"--handle", L"DEAD"}).code);
    EXPECT_EQ(2U, RunTool({L"inspect", L"--handle", L"window"}).code);
    EXPECT_EQ(1U, RunTool({L"inspect", L"NoSuchClass", L"x"}).code);
    EXPECT_EQ(2U, RunTool({L"inspect"}).code);
}

TEST(InspectProgram, SaysWhenThereIsNoPictureAndShowsTheTextAllTheSame) {
    const TemporaryFolder folder;
    PracticeWindow target;
    target.Do(L"window 6");
    ASSERT_TRUE(WaitUntil([&] { return ::IsIconic(target.Handle()) != FALSE; }));
    const Ended ended = RunTool({L"inspect", kDialogClass, target.Title(), L"--picture", folder.File(L"x.png")});
    EXPECT_EQ(1U, ended.code);
    EXPECT_NE(std::string::npos, ended.Text().find("dialwright: there is no picture: the window is minimized"));
    EXPECT_NE(std::string::npos, ended.Text().find("[12] 12  checkbox  ID 31"));
    EXPECT_FALSE(FileExists(folder.File(L"x.png")));
}

TEST(InspectProgram, SaysWhenThePageCannotBeWritten) {
    const TemporaryFolder folder;
    const PracticeWindow target;
    const std::wstring nowhere = folder.File(L"nowhere\\page.html");
    const Ended ended = RunTool({L"inspect", kDialogClass, target.Title(), L"--html", nowhere});
    EXPECT_EQ(2U, ended.code);
    EXPECT_NE(std::string::npos, ended.Text().find("dialwright: " + ToUtf8(nowhere) + " cannot be written"));
}

TEST(InspectProgram, NumbersTheControlsOnlyForAPicture) {
    const PracticeWindow target;
    EXPECT_EQ(std::string::npos, RunTool({L"inspect", kDialogClass, target.Title()}).Text().find("[12]"));
    const auto json = nlohmann::json::parse(RunTool({L"inspect", L"--json", kDialogClass, target.Title()}).Text());
    EXPECT_EQ(12, json.at("controls").at(11).at("number"));
}

}  // namespace
}  // namespace dialwright::testing
