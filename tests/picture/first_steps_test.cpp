#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "check/source_text.h"
#include "support/practice_window.h"
#include "support/temporary_folder.h"
#include "support/windows_of_others.h"
#include "tools/run_tool.h"

#include <shellapi.h>

// A newcomer's first ten minutes, as the README tells them. On a screen, as a page with a picture is among them.
namespace dialwright::testing {
namespace {

struct Block {
    /// What stands behind the fence: a file's name, "sh", or nothing.
    std::string name;
    std::string text;
};

std::vector<Block> BlocksOfReadme() {
    const std::string readme = ReadFile(L"" README);
    const std::size_t begin = readme.find("## The first ten minutes");
    const std::string section = readme.substr(begin, readme.find("\n## ", begin + 1) - begin);
    const std::regex fenced("```([a-z.]*)\n([^`]*)```");
    std::vector<Block> blocks;
    for (std::sregex_iterator found(section.begin(), section.end(), fenced), end; found != end; ++found) {
        blocks.push_back({.name = (*found)[1], .text = (*found)[2]});
    }
    return blocks;
}

std::vector<std::wstring> SplitArguments(const std::wstring& line) {
    int count = 0;
    wchar_t** const values = ::CommandLineToArgvW(line.c_str(), &count);
    std::vector<std::wstring> arguments(values, values + count);
    ::LocalFree(static_cast<void*>(values));
    return arguments;
}

/// Works in another folder for as long as it lives.
class InFolder {
public:
    explicit InFolder(const std::wstring& folder) : before(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~InFolder() { std::filesystem::current_path(before); }
    InFolder(const InFolder&) = delete;
    InFolder& operator=(const InFolder&) = delete;

private:
    std::filesystem::path before;
};

/// Runs the command lines of a block; each must end well.
int RunCommands(const std::string& text) {
    int count = 0;
    const std::regex command("dialwright ([^\n]*)\n");
    for (std::sregex_iterator found(text.begin(), text.end(), command), end; found != end; ++found) {
        const std::string arguments = (*found)[1];
        const Ended ended = RunTool(SplitArguments(tools::Wide(arguments)));
        EXPECT_EQ(0U, ended.code) << arguments << "\n" << ended.Text();
        ++count;
    }
    return count;
}

TEST(ReadmesFirstTenMinutes, WorkAsTheyStand) {
    const PracticeWindow target(kDialogClass, {}, L"Dialwright practice");
    const TemporaryFolder folder;
    const InFolder inFolder(folder.Path());
    int commands = 0;
    for (const Block& block : BlocksOfReadme()) {
        if (block.name == "sh") commands += RunCommands(block.text);
        if (block.name.ends_with(".txt")) WriteFile(folder.File(tools::Wide(block.name)), block.text);
    }
    EXPECT_EQ(6, commands);
    EXPECT_EQ(L"Ada Lovelace", TextOf(target.Control(12)));
    EXPECT_EQ(L"correct horse", TextOf(target.Control(14)));
    EXPECT_EQ(1, CheckStateOf(target.Control(31)));
    EXPECT_EQ(1, SelectionOf(target.Control(51)));
    EXPECT_NE(std::string::npos, ReadFile(folder.File(L"practice.html")).find("Dialwright practice"));
    EXPECT_NE(std::string::npos, ReadFile(folder.File(L"report.xml")).find("tests=\"4\" failures=\"0\""));
}

}  // namespace
}  // namespace dialwright::testing
