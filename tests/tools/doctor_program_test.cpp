#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/text_encoding.h"
#include "run_tool.h"
#include "support/child_process.h"
#include "support/practice_window.h"
#include "support/temporary_folder.h"

#include <nlohmann/json.hpp>

namespace dialwright::testing {
namespace {

using Json = nlohmann::json;

/// A copy of the program in a folder of its own.
class DoctorProgram : public ::testing::Test {
protected:
    void SetUp() override { Copy(L"dialwright.exe"); }

    void Copy(const wchar_t* name) const {
        ASSERT_TRUE(::CopyFileW((ProgramFolder() + name).c_str(), folder.File(name).c_str(), TRUE));
    }

    [[nodiscard]] Ended Doctor(std::vector<std::wstring> options) const {
        options.insert(options.begin(), L"doctor");
        return RunOther(folder.File(L"dialwright.exe"), options);
    }

    /// The row of this name, and the exit code.
    [[nodiscard]] Json Row(const std::string& name, DWORD code, std::vector<std::wstring> options = {}) const {
        options.emplace_back(L"--json");
        const Ended ended = Doctor(options);
        EXPECT_EQ(code, ended.code);
        const Json json = Json::parse(ended.Text());
        EXPECT_EQ(1, json.at("schema"));
        for (const Json& row : json.at("checks")) {
            if (row.at("name") == name) return row;
        }
        ADD_FAILURE() << "no row " << name;
        return {};
    }

    const TemporaryFolder folder;
};

TEST_F(DoctorProgram, FindsNothingInTheFolderOfTheBuild) {
    const Ended ended = RunTool({L"doctor"});
    EXPECT_EQ(0U, ended.code) << ended.Text();
    EXPECT_EQ(7U, ended.lines.size());
    for (const std::string& line : ended.lines) EXPECT_TRUE(line.starts_with("ok  ")) << line;
}

TEST_F(DoctorProgram, LooksForTheLibraryBesideItself) {
    EXPECT_EQ("blocked", Row("library", 3).at("state"));
    EXPECT_EQ("ok", Row("library", 0, {L"--library", ProgramFolder() + L"Dialwright.dll"}).at("state"));
    Copy(L"Dialwright.dll");
    EXPECT_EQ("ok", Row("library", 0).at("state"));
    std::string bytes = ReadFile(folder.File(L"Dialwright.dll"));
    bytes.replace(bytes.find(std::string("PE\0\0", 4)) + 4, 2, "\x4C\x01");
    WriteFile(folder.File(L"Dialwright.dll"), bytes);
    const Json forX86 = Row("library", 3);
    EXPECT_TRUE(forX86.at("found").get<std::string>().ends_with("Dialwright.dll is for x86"));
    EXPECT_EQ(3U, Doctor({}).code);
}

TEST_F(DoctorProgram, TriesTheTraceFolderOfAWorkerAndLeavesNothingThere) {
    Copy(L"Dialwright.dll");
    const std::vector<std::wstring> options = {L"--work-folder", folder.File(L"work")};
    EXPECT_EQ("ok", Row("trace folder", 0, options).at("state"));
    EXPECT_FALSE(FileExists(folder.File(L"work")));
    WriteFile(folder.File(L"work"), "a file is in the way");
    const Json row = Row("trace folder", 1, options);
    EXPECT_EQ("warning", row.at("state"));
    EXPECT_EQ(ToUtf8(folder.File(L"work\\1\\logs\\trace\\")) + " cannot be written",
              row.at("found").get<std::string>());
}

TEST_F(DoctorProgram, LooksAtTheTarget) {
    Copy(L"Dialwright.dll");
    const PracticeWindow target;
    EXPECT_EQ("ok", Row("elevation", 0, {L"--target", kDialogClass, target.Title()}).at("state"));
    const Json missing = Row("elevation", 1, {L"--target", kDialogClass, L"no such title"});
    EXPECT_EQ("warning", missing.at("state"));
    EXPECT_EQ("dialwright windows lists all windows", missing.at("advice"));
    EXPECT_EQ(2U, Doctor({L"--target", kDialogClass}).code);
    EXPECT_EQ(2U, Doctor({L"--target", L"(", L"x"}).code);
}

TEST_F(DoctorProgram, TellsItsVersionAndTheLibrarys) {
    const Ended alone = RunOther(folder.File(L"dialwright.exe"), {L"--version"});
    EXPECT_EQ(0U, alone.code);
    ASSERT_EQ(2U, alone.lines.size());
    EXPECT_TRUE(alone.lines[0].starts_with("dialwright " DIALWRIGHT_VERSION " ")) << alone.lines[0];
    EXPECT_EQ("Dialwright.dll not found", alone.lines[1]);
    const Ended both = RunTool({L"--version"});
    ASSERT_EQ(2U, both.lines.size());
    EXPECT_EQ("Dialwright.dll" + both.lines[0].substr(std::string("dialwright").size()), both.lines[1]);
}

}  // namespace
}  // namespace dialwright::testing
