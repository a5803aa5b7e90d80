#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "language/commands.h"

namespace dialwright {
namespace {

TEST(CommandTable, Holds27NamesWithTheirTokenCounts) {
    const std::map<std::wstring_view, std::uint64_t> expected = {
        {L"Window.SetText", 5},
        {L"Window.SetText.Path", 5},
        {L"Window.SetText.Position", 6},
        {L"Window.ClickButton", 4},
        {L"Window.ClickButton.Path", 4},
        {L"Window.ClickButton.Position", 5},
        {L"Window.SelectDropdown.Value", 5},
        {L"Window.SelectDropdown.Index", 5},
        {L"Window.SelectDropdown.ByPath.Value", 5},
        {L"Window.SelectDropdown.ByPath.Index", 5},
        {L"Window.SelectDropdown.ByPosition.Value", 6},
        {L"Window.SelectDropdown.ByPosition.Index", 6},
        {L"Window.ClearText", 4},
        {L"Window.ClearText.Path", 4},
        {L"Window.ClearText.Position", 5},
        {L"Window.Move", 5},
        {L"Window.BringToFront", 3},
        {L"Window.Minimize", 3},
        {L"Window.Maximize", 3},
        {L"Window.Restore", 3},
        {L"Window.Close", 3},
        {L"Window.SelectRadio", 4},
        {L"Window.SelectRadio.ByPath", 4},
        {L"Window.SelectRadio.ByPosition", 5},
        {L"Window.SetCheckbox", 5},
        {L"Window.SetCheckbox.ByPath", 5},
        {L"Window.SetCheckbox.ByPosition", 6},
    };
    std::map<std::wstring_view, std::uint64_t> actual;
    for (const CommandSpec& spec : kCommands) {
        actual[spec.name] = spec.minTokens;
        EXPECT_EQ(spec.minTokens + 1, spec.MaxTokens());
        EXPECT_EQ(spec.minTokens - 3, spec.Arguments().size());
    }
    EXPECT_EQ(expected, actual);
    EXPECT_EQ(27U, kCommands.size());
}

TEST(StripNonRegexSuffix, RemovesTheSuffixOfALongerName) {
    struct Row {
        const wchar_t* name;
        const wchar_t* stripped;
        bool useRegex;
    };
    const Row rows[] = {
        {L"Window.Close", L"Window.Close", true},
        {L"Window.Close.NonRegex", L"Window.Close", false},
        {L"x.NonRegex", L"x", false},
        {L".NonRegex", L".NonRegex", true},
        {L"Window.Close.nonregex", L"Window.Close.nonregex", true},
        {L"Window.Close.NonRegex.NonRegex", L"Window.Close.NonRegex", false},
        {L"", L"", true},
    };
    for (const Row& row : rows) {
        bool useRegex = !row.useRegex;
        EXPECT_EQ(row.stripped, StripNonRegexSuffix(row.name, &useRegex));
        EXPECT_EQ(row.useRegex, useRegex);
    }
}

const char* ShownAs(ArgumentKind kind) {
    switch (kind) {
        case ArgumentKind::ControlId: return "control ID";
        case ArgumentKind::ControlPath: return "path";
        case ArgumentKind::Rectangle: return "rectangle";
        case ArgumentKind::Tolerance: return "tolerance";
        case ArgumentKind::Text: return "text";
        case ArgumentKind::ItemText: return "item text";
        case ArgumentKind::DropdownIndex: return "index";
        case ArgumentKind::CheckState: return "state";
        case ArgumentKind::Position: return "position";
        case ArgumentKind::Size: return "size";
    }
    return "";
}

/// The first two cells of a row "| `Name` | arguments | ..." become "Name: arguments".
std::vector<std::string> DocumentedCommands(std::istream& docs) {
    std::vector<std::string> commands;
    for (std::string line; std::getline(docs, line);) {
        if (!line.starts_with("| `Window.")) continue;
        const std::size_t nameEnd = line.find('`', 3);
        const std::size_t argumentsBegin = line.find("| ", nameEnd) + 2;
        const std::size_t argumentsEnd = line.find(" |", argumentsBegin);
        commands.push_back(line.substr(3, nameEnd - 3) + ": " +
                           line.substr(argumentsBegin, argumentsEnd - argumentsBegin));
    }
    return commands;
}

TEST(CommandTable, IsTheOneInTheDocs) {
    std::ifstream docs(COMMAND_DOCS);
    ASSERT_TRUE(docs.is_open()) << COMMAND_DOCS;
    std::vector<std::string> expected;
    for (const CommandSpec& spec : kCommands) {
        const std::string row(spec.name.begin(), spec.name.end());
        std::string arguments;
        for (const ArgumentKind kind : spec.Arguments()) {
            arguments += (arguments.empty() ? "" : ", ") + std::string(ShownAs(kind));
        }
        expected.push_back(row + ": " + (arguments.empty() ? "none" : arguments));
    }
    EXPECT_EQ(expected, DocumentedCommands(docs));
}

}  // namespace
}  // namespace dialwright
