#include "check/check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace dialwright::tools {
namespace {

using Codes = std::vector<std::string>;

Codes CodesOf(const std::string& script) {
    Codes codes;
    for (const Finding& finding : CheckScript(ReadSource(script))) codes.emplace_back(finding.code);
    return codes;
}

/// "code line:column+length" of each finding.
std::vector<std::string> PlacesOf(const std::string& script) {
    std::vector<std::string> places;
    for (const Finding& finding : CheckScript(ReadSource(script))) {
        places.push_back(std::string(finding.code) + " " + std::to_string(finding.line) + ":" +
                         std::to_string(finding.column) + "+" + std::to_string(finding.length));
    }
    return places;
}

TEST(CheckScript, FindsNothingInASoundScript) {
    EXPECT_EQ((Codes{}), CodesOf("Window.SetText \"#32770\" \"Sign in\" 12 \"Ada Lovelace\" 5000\n"
                                 "\n"
                                 "Window.ClickButton.NonRegex Notepad \"Save As (1)\" 1 5000\r\n"
                                 "Window.Close Notepad \".*Save As \\\\(1\\\\)\" 5000\n"));
}

TEST(CheckScript, TellsWhatTheLibraryRefuses) {
    EXPECT_EQ((Codes{"DW101"}), CodesOf(""));
    EXPECT_EQ((Codes{"DW101"}), CodesOf(" \n\t\r\n"));
    EXPECT_EQ((Codes{"DW102"}), CodesOf("Window.Polish c t"));
    EXPECT_EQ((Codes{"DW103"}), CodesOf("Window.Close c"));
    EXPECT_EQ((Codes{"DW103"}), CodesOf("Window.Close c t 100 more"));
    EXPECT_EQ((Codes{"DW104"}), CodesOf("Window.Close \"\" t"));
    EXPECT_EQ((Codes{"DW105"}), CodesOf("\v\f"));
}

TEST(CheckScript, TellsEveryFindingWithItsPlace) {
    EXPECT_EQ((std::vector<std::string>{"DW102 1:1+13", "DW103 2:1+12", "DW104 4:17+2"}),
              PlacesOf("Window.Polish c t\nWindow.Close c\n\n  Window.Close  \"\" t\n"));
    EXPECT_EQ((std::vector<std::string>{"DW201 1:25+3", "DW204 1:29+2"}), PlacesOf("Window.ClickButton c t  abc xx"));
}

TEST(CheckScript, KnowsTheNearestName) {
    const auto findings = CheckScript(ReadSource("window.settext c t 1 x 5000"));
    ASSERT_EQ(1U, findings.size());
    EXPECT_EQ(L"unknown command window.settext; did you mean Window.SetText?", findings[0].text);
    const auto strange = CheckScript(ReadSource("Elephant c t"));
    ASSERT_EQ(1U, strange.size());
    EXPECT_EQ(L"unknown command Elephant", strange[0].text);
}

struct Row {
    const char* line;
    Codes expected;
};

TEST(CheckScript, TellsWhatMustFailWhenItRuns) {
    const Row rows[] = {
        {"Window.ClickButton c t x1 5000", {"DW201"}},
        {"Window.ClickButton c t 99999999999 5000", {"DW201"}},
        {"Window.ClickButton.Position c t 1,2,3 3 5000", {"DW202"}},
        {"Window.ClickButton.Position c t 1,2,3,4,5 3 5000", {"DW202", "DW309"}},
        {"Window.SelectDropdown.ByPosition.Index c t 1,2,3,4,5 3 0 5000", {"DW309"}},
        {"Window.SelectDropdown.ByPosition.Value c t 1,2,3 3 x 5000", {"DW202"}},
        {"Window.ClickButton.Position c t 1,2,3,x 3 5000", {"DW201"}},
        {"Window.Move c t 1,2 3 5000", {"DW202"}},
        {"Window.SetCheckbox c t 1 2 5000", {"DW203"}},
        {"Window.SetCheckbox c t 1 on 5000", {"DW201"}},
        {"Window.Close c t soon", {"DW204"}},
        {"Window.Close ( t 5000", {"DW205"}},
        {"Window.Close c *x 5000", {"DW205", "DW304"}},
        {"Window.Close.NonRegex ( *x 5000", {}},
        {"Window.ClickButton.Path c t 2.0 5000", {"DW206"}},
        {"Window.ClickButton.Path c t 2..1 5000", {"DW206"}},
        {"Window.ClickButton.Path c t 2.1. 5000", {}},
        {"Window.ClickButton.Position c t 1,2,3,4 -1 5000", {"DW207"}},
        {"Window.SelectDropdown.Index c t 1 -1 5000", {"DW208"}},
    };
    for (const Row& row : rows) EXPECT_EQ(row.expected, CodesOf(row.line)) << row.line;
}

TEST(CheckScript, WarnsOfTheSharpEdges) {
    const Row rows[] = {
        {"Window.SetText c t 1 4711", {"DW301"}},
        {"Window.SetText c t 1 \"12 monkeys\"", {"DW301"}},
        {"Window.SetText c t 1 4711 5000", {}},
        {" Window.SetText c t 1 x 5000", {"DW302"}},
        {" Window.Close c t 5000", {}},
        {"Window.SetText c t 1 correct horse", {"DW204", "DW303"}},
        {"\"Window.SetText\" c t 1 x 5000", {"DW308"}},
        {"Window.Close c \"Save As (1)\" 5000", {"DW304"}},
        {"Window.Close c \"Save As \\\\(1\\\\)\" 5000", {}},
        {"Window.Close c \".*(1)\" 5000", {}},
        {"Window.ClickButton c t 12abc 5000", {"DW306"}},
        {"Window.ClickButton c t 12 5000ms", {"DW306"}},
        {"Window.Close c t 0", {"DW307"}},
        {"Window.Close.NonRegex c .*Notepad 5000", {"DW310"}},
        {"# a comment\nWindow.Close c t 5000", {"DW390"}},
    };
    for (const Row& row : rows) EXPECT_EQ(row.expected, CodesOf(row.line)) << row.line;
}

/// A dialog with a check box, a radio button and a push button, the latter in a panel; and the box once more, where IDs
/// do not reach.
KnownWindow SignIn() {
    const auto at = [](int left) { return Rectangle{.left = left, .top = 10, .right = left + 50, .bottom = 30}; };
    KnownWindow window{.className = L"#32770", .title = L"Sign in (1)", .controls = {}};
    window.controls = {
        {.path = L"1", .id = 31, .idFindsIt = true, .rectangle = at(0), .kind = KnownKind::CheckBox},
        {.path = L"2", .id = 41, .idFindsIt = true, .rectangle = at(100), .kind = KnownKind::RadioButton},
        {.path = L"3", .id = 0, .idFindsIt = true, .rectangle = at(200), .kind = KnownKind::Other},
        {.path = L"3.1", .id = 1, .idFindsIt = false, .rectangle = at(203), .kind = KnownKind::CheckBox},
        {.path = L"4", .id = 1, .idFindsIt = true, .rectangle = at(300), .kind = KnownKind::Other}};
    return window;
}

TEST(CheckScript, WarnsOfClicksOnKnownCheckBoxesAndRadioButtons) {
    const std::vector<KnownWindow> known = {{.className = L"Notepad", .title = L"Untitled", .controls = {}}, SignIn()};
    const std::string window = R"w( #32770 "sign in \\(1\\)" )w";
    const struct {
        std::string line;
        const wchar_t* expected;
    } rows[] = {
        {"Window.ClickButton" + window + "31 5000", L"box leaves it as it was; use Window.SetCheckbox"},
        {"Window.ClickButton" + window + "31", L"box leaves it as it was; use Window.SetCheckbox"},
        {"Window.ClickButton.NonRegex #32770 Sign 31 5000", L"box leaves it as it was; use Window.SetCheckbox"},
        {"Window.ClickButton" + window + "41 5000", L"radio button acts twice; use Window.SelectRadio"},
        {"Window.ClickButton.Path" + window + "3.1 5000", L"use Window.SetCheckbox.ByPath"},
        {"Window.ClickButton.Path" + window + "3.1. 5000", L"use Window.SetCheckbox.ByPath"},
        {"Window.ClickButton.Position" + window + "101,10,151,30 1 5000", L"use Window.SelectRadio.ByPosition"},
        {"Window.ClickButton.Position" + window + "203,10,253,30 2 5000", L"use Window.SetCheckbox.ByPosition"},
        // The library would take the one before, which is within the tolerance too.
        {"Window.ClickButton.Position" + window + "203,10,253,30 3 5000", nullptr},
        {"Window.ClickButton.Position" + window + "101,10,151,30 0 5000", nullptr},
        {"Window.ClickButton" + window + "1 5000", nullptr},
        {"Window.ClickButton" + window + "99 5000", nullptr},
        {"Window.ClickButton.NonRegex #32770 sign 31 5000", nullptr},
        {"Window.ClickButton #32770 \"Sign in\" 31 5000", nullptr},
        {"Window.ClickButton Button \".*\" 31 5000", nullptr},
        {"Window.SetCheckbox" + window + "31 1 5000", nullptr},
    };
    for (const auto& row : rows) {
        const auto findings = CheckScript(ReadSource(row.line), known);
        EXPECT_EQ(row.expected == nullptr ? 0U : 1U, findings.size()) << row.line;
        if (row.expected == nullptr || findings.empty()) continue;
        EXPECT_EQ("DW305", findings[0].code) << row.line;
        EXPECT_TRUE(findings[0].text.ends_with(row.expected)) << row.line;
        EXPECT_EQ(Codes{}, CodesOf(row.line)) << row.line;
    }
}

TEST(CheckScript, FindsTheSameErrorsWhateverItKnows) {
    const std::vector<KnownWindow> known = {SignIn()};
    EXPECT_EQ(1U, CheckScript(ReadSource("Window.ClickButton ( \".*\" 31 5000"), known).size());
    EXPECT_EQ(1U, CheckScript(ReadSource("Window.ClickButton .* .* x 5000"), known).size());
    EXPECT_EQ(1U, CheckScript(ReadSource("Window.ClickButton.Path .* .* 0 5000"), known).size());
    EXPECT_EQ(1U, CheckScript(ReadSource("Window.ClickButton.Position .* .* 1,2 3 5000"), known).size());
    EXPECT_EQ(1U, CheckScript(ReadSource("Window.ClickButton.Position .* .* 0,10,50,30 -1 5000"), known).size());
}

TEST(CheckScript, NamesEveryRuleThatItReports) {
    const std::vector<KnownWindow> known = {SignIn()};
    for (const char* script :
         {"", "Window.SetText c t 1 correct horse", "# x\nWindow.Close ( (1) 0", "Window.ClickButton .* .* 31 5000"}) {
        for (const Finding& finding : CheckScript(ReadSource(script), known)) {
            EXPECT_NE(AllRules().end(), std::ranges::find(AllRules(), finding.code, &Rule::code)) << finding.code;
        }
    }
    EXPECT_TRUE(std::ranges::is_sorted(AllRules(), {}, &Rule::code));
}

TEST(CheckDocs, ListEveryRuleAndNoOther) {
    std::ifstream file(TOOL_DOCS, std::ios::binary);
    const std::string docs((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::size_t rows = 0;
    for (std::size_t at = 0; (at = docs.find("\n| DW", at)) != std::string::npos; ++at) ++rows;
    EXPECT_EQ(AllRules().size(), rows);
    for (const Rule& rule : AllRules()) {
        EXPECT_NE(std::string::npos, docs.find("\n| " + std::string(rule.code) + " |")) << rule.code;
    }
}

TEST(ReadSource, TakesByteOrderMarksAndEveryLineEnd) {
    const SourceText source = ReadSource(
        "\xEF\xBB\xBF"
        "one\r\ntwo\n\nthree");
    ASSERT_EQ(4U, source.lines.size());
    EXPECT_EQ(L"one\r", source.lines[0].text);
    EXPECT_EQ(L"three", source.lines[3].text);
    EXPECT_EQ(4U, source.lines[3].number);
    EXPECT_EQ(L"one\r\ntwo\n\nthree\n", PureScript(source));
}

TEST(ReadSource, ReadsUtf8AndReplacesWhatIsNone) {
    EXPECT_EQ(L"\x65E5\xD83D\xDE00", ReadSource("\xE6\x97\xA5\xF0\x9F\x98\x80").lines[0].text);
    for (const char* bad : {"\x80", "\xC0", "\xC3", "\xE6\x97", "\xFF"}) {
        const SourceText source = ReadSource(std::string("a") + bad);
        EXPECT_TRUE(source.hadInvalidBytes);
        EXPECT_EQ(L'\xFFFD', source.lines[0].text[1]);
    }
    EXPECT_TRUE(ReadSource("\xED\xA0\x80").hadInvalidBytes);
    EXPECT_TRUE(ReadSource("\xE0\x80\x80").hadInvalidBytes);
}

TEST(PureScript, LeavesCommentsOutAndKeepsTheLines) {
    const SourceText source = ReadSource("# one\nWindow.Close c t\n  # two\n");
    EXPECT_EQ(L"\nWindow.Close c t\n\n", PureScript(source));
}

}  // namespace
}  // namespace dialwright::tools
