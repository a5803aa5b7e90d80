#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/text_encoding.h"
#include "run_program.h"
#include "run_tool.h"
#include "support/practice_window.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

namespace dialwright::testing {
namespace {

TEST_F(RunProgram, CarriesLinesOutAndTellsOfEach) {
    const std::wstring path =
        Script("# greet\n" + Line(L"Window.ClearText", L"15 5000") + "\r\n" +
               Line(L"Window.SetText", L"15 \"Ada Lovelace\" 5000") + Line(L"Window.SetCheckbox", L"31 1 5000"));
    const Ended ended = Run({path});
    EXPECT_EQ(0U, ended.code) << ended.Text();
    EXPECT_EQ(L"Ada Lovelace", TextOf(target.Control(15)));
    EXPECT_EQ(1, CheckStateOf(target.Control(31)));
    ASSERT_EQ(4U, ended.lines.size()) << ended.Text();
    EXPECT_TRUE(ended.lines[0].starts_with(ToUtf8(path) + ":2  ok  ")) << ended.lines[0];
    EXPECT_TRUE(ended.lines[1].starts_with(ToUtf8(path) + ":4  ok  ")) << ended.lines[1];
    EXPECT_TRUE(ended.lines[1].ends_with(" 15 \"*****\" 5000")) << ended.lines[1];
    EXPECT_FALSE(Holds(ended, "Lovelace"));
    EXPECT_TRUE(ended.lines[3].starts_with("3 done, 0 failed, 0 not run; trace in ")) << ended.lines[3];
}

TEST_F(RunProgram, LeavesATraceOfItsOwn) {
    const Ended ended =
        Run({L"--json", L"--work-folder", folder.File(L"work"), Script(Line(L"Window.ClearText", L"15 5000"))});
    const Json report = JsonOf(ended);
    EXPECT_FALSE(report.at("traceMayBeMissing"));
    EXPECT_EQ(ToUtf8(folder.File(L"work\\1\\logs\\trace")), report.at("traceFolder").get<std::string>());
    const std::string trace = TextOfFile(folder.File(L"work\\1\\logs\\trace\\dialwright-host.exe_1_Dialwright_1.log"));
    EXPECT_NE(std::string::npos, trace.find("Executing command: Window.ClearText"));
    EXPECT_NE(std::string::npos, trace.find("trace stopped"));
}

TEST_F(RunProgram, RunsWhereThePlaceForWorkersCannotBeHad) {
    WriteFile(folder.File(L"work"), "a file where a folder is wanted");
    const Json report = JsonOf(
        Run({L"--json", L"--work-folder", folder.File(L"work"), L"-c", target.Line(L"Window.ClearText", L"15 5000")}));
    EXPECT_TRUE(report.at("traceMayBeMissing"));
    EXPECT_EQ(1, report.at("done"));
}

TEST_F(RunProgram, StopsAtTheFirstLineThatFailsAndSaysWhy) {
    const std::string failing = BriefLine(L"Window.ClickButton", L"4711");
    const Json report = JsonOf(Run({L"--json", Script(failing + Line(L"Window.ClearText", L"15 5000"))}));
    EXPECT_EQ(1, report.at("exitCode"));
    const Json& lines = report.at("files").at(0).at("lines");
    EXPECT_EQ("failed", lines.at(0).at("status"));
    EXPECT_EQ("control_not_found", lines.at(0).at("code"));
    EXPECT_EQ("no control in the window has the ID 4711", lines.at(0).at("reason"));
    EXPECT_TRUE(lines.at(0).at("suggestion").get<std::string>().starts_with("IDs that exist: "));
    EXPECT_GE(lines.at(0).at("milliseconds"), kBriefMs);
    EXPECT_EQ("skipped", lines.at(1).at("status"));
    EXPECT_EQ(L"Hello", TextOf(target.Control(15)));
}

struct FailingLine {
    const wchar_t* name;
    const wchar_t* rest;
    const char* code;
    /// Part of the suggestion.
    const char* suggestion;
};

TEST_F(RunProgram, GivesEachKindOfFailureItsCodeAndASuggestion) {
    const std::vector<FailingLine> rows = {
        {L"Window.SetCheckbox", L"34 1", "control_disabled", "more time"},
        {L"Window.SetCheckbox", L"21 1", "wrong_control_kind", ""},
        {L"Window.SetCheckbox.ByPath", L"99 1", "control_not_found", "paths that exist: 1, 2"},
        {L"Window.ClickButton.Position", L"12,178,88,201 0", "control_not_found", "lies at "},
        {L"Window.SelectDropdown.Value", L"51 Omega", "item_not_found", "items: \"Alpha\", \"Beta\""},
        {L"Window.SelectDropdown.Index", L"15 0", "item_not_found", "of the class Edit"},
        {L"Window.ClearText", L"4711", "control_not_found", "IDs that exist"},
    };
    for (const FailingLine& row : rows) {
        const Json report = JsonOf(Run({L"--json", L"-c", target.BriefLine(row.name, row.rest)}));
        const Json& line = report.at("files").at(0).at("lines").at(0);
        EXPECT_EQ(row.code, line.value("code", "none")) << line;
        EXPECT_NE(std::string::npos, line.value("suggestion", "").find(row.suggestion)) << line;
    }
}

TEST_F(RunProgram, NamesTheNearestWindowOrSaysThatTheTitleIsNoExpression) {
    const std::wstring slip = L"X" + target.Title().substr(1);
    const Ended missed = Run({L"-c", L"Window.Minimize PracticeTarget \"" + slip + L"\" 200"});
    EXPECT_EQ(1U, missed.code);
    EXPECT_TRUE(Holds(missed, "window_not_found: no window matched class and title within 200 ms")) << missed.Text();
    EXPECT_TRUE(Holds(missed, "nearest: PracticeTarget \"" + ToUtf8(target.Title()) + "\"")) << missed.Text();
    target.Do(L"title Save As (1) " + target.Title());
    const Ended literal = Run({L"-c", L"Window.Minimize PracticeTarget \"Save As (1) " + target.Title() + L"\" 200"});
    EXPECT_TRUE(Holds(literal, "would match if the expressions were literal: Window.Minimize.NonRegex"))
        << literal.Text();
    const Ended part = Run({L"-c", L"Window.Minimize PracticeTarget Save 200"});
    EXPECT_TRUE(Holds(part, "an expression must match the whole title: Window.Minimize.NonRegex")) << part.Text();
}

TEST_F(RunProgram, ChecksBeforeItActs) {
    const std::wstring path = Script(Line(L"Window.ClearText", L"15 5000") + "Window.Clsoe c t\n" +
                                     Line(L"Window.SetCheckbox", L"31 2 5000"));
    const Ended ended = Run({path});
    EXPECT_EQ(2U, ended.code);
    EXPECT_TRUE(Holds(ended, ":2:1: error DW102: ")) << ended.Text();
    EXPECT_TRUE(Holds(ended, " error DW203: ")) << ended.Text();
    EXPECT_EQ(L"Hello", TextOf(target.Control(15)));
    const Ended unchecked = Run({L"--no-check", path});
    EXPECT_EQ(1U, unchecked.code);
    EXPECT_TRUE(Holds(unchecked, "invalid_command: no command has the name Window.Clsoe")) << unchecked.Text();
    EXPECT_EQ(L"", TextOf(target.Control(15)));
}

TEST_F(RunProgram, ShowsWhatWouldRun) {
    const Ended ended = Run({L"--dry-run", Script(Line(L"Window.SetText", L"15 secret 5000"))});
    EXPECT_EQ(0U, ended.code);
    EXPECT_TRUE(Holds(ended, ":1  would run  Window.SetText ")) << ended.Text();
    EXPECT_FALSE(Holds(ended, "secret"));
    EXPECT_EQ(L"Hello", TextOf(target.Control(15)));
}

TEST_F(RunProgram, RunsSomeLinesOrEverythingSeveralTimes) {
    const std::wstring path = Script(Line(L"Window.SetText", L"12 a 5000") + Line(L"Window.SetText", L"12 b 5000") +
                                     Line(L"Window.SetText", L"12 c 5000"));
    EXPECT_EQ(0U, Run({L"--from", L"2", L"--to", L"2", path}).code);
    EXPECT_EQ(L"b", TextOf(target.Control(12)));
    EXPECT_EQ(0U, Run({L"--from", L"3", L"--repeat", L"3", path}).code);
    EXPECT_EQ(L"bccc", TextOf(target.Control(12)));
    EXPECT_EQ(2U, Run({L"--from", L"2", path, path}).code);
}

TEST_F(RunProgram, KeepsGoingWithTheNextFile) {
    const std::wstring bad = Script(Line(L"Window.ClearText", L"4711 100") + Line(L"Window.SetText", L"12 no 5000"));
    const std::wstring good = Script(Line(L"Window.SetText", L"12 yes 5000"), L"good.txt");
    EXPECT_EQ(1U, Run({bad, good}).code);
    EXPECT_EQ(L"", TextOf(target.Control(12)));
    EXPECT_EQ(1U, Run({L"--keep-going", bad, good}).code);
    EXPECT_EQ(L"yes", TextOf(target.Control(12)));
}

TEST_F(RunProgram, ReadsStandardInput) {
    EXPECT_EQ(0U, Run({L"-"}, Line(L"Window.SetText", L"12 piped 5000")).code);
    EXPECT_EQ(L"piped", TextOf(target.Control(12)));
}

TEST_F(RunProgram, TypesSecretsAndShowsThemNowhere) {
    const std::wstring secrets = folder.File(L"secrets.txt");
    WriteFile(secrets, "PASSWORD=tr0ub4 \"dor\"\nPIN=4711\n");
    ::SetEnvironmentVariableW(L"DIALWRIGHT_TEST_NAME", L"ad\x00E1 lovelace");
    const std::wstring path = Script(
        Line(L"Window.SetText", L"12 ${secret:PASSWORD} 5000") + Line(L"Window.SetText", L"14 ${secret:PIN}") +
        Line(L"Window.SetText", L"13 ${env:DIALWRIGHT_TEST_NAME} 5000") + Line(L"Window.ClickButton", L"4712 100"));
    const std::vector<std::wstring> arguments = {L"--json",
                                                 L"--secret-file",
                                                 secrets,
                                                 L"--junit",
                                                 folder.File(L"report.xml"),
                                                 L"--on-failure",
                                                 L"tree",
                                                 L"--evidence",
                                                 folder.File(L"evidence"),
                                                 L"--work-folder",
                                                 folder.File(L"work"),
                                                 path};
    const Ended ended = Run(arguments);
    ::SetEnvironmentVariableW(L"DIALWRIGHT_TEST_NAME", nullptr);
    EXPECT_EQ(1U, ended.code) << ended.Text();
    EXPECT_EQ(L"tr0ub4 \"dor\"", TextOf(target.Control(12)));
    EXPECT_EQ(L"4711", TextOf(target.Control(14)));
    EXPECT_EQ(L"ad\x00E1 lovelace", TextOf(target.Control(13)));
    const std::string tree = TextOfFile(folder.File(L"evidence\\script.txt-L4.json"));
    EXPECT_NE(std::string::npos, tree.find("*****"));
    for (const std::string& all :
         {ended.Text(), tree, TextOfFile(folder.File(L"report.xml")),
          TextOfFile(folder.File(L"work\\1\\logs\\trace\\dialwright-host.exe_1_Dialwright_1.log"))}) {
        EXPECT_GT(all.size(), 100U);
        for (const char* const secret : {"tr0ub4", "4711", "lovelace"}) {
            EXPECT_EQ(std::string::npos, all.find(secret)) << secret << " in " << all;
        }
    }
}

TEST_F(RunProgram, RefusesSecretsThatAreNotThere) {
    const Ended ended = Run({L"-c", target.Line(L"Window.SetText", L"12 ${secret:NONE} 5000")});
    EXPECT_EQ(2U, ended.code);
    EXPECT_TRUE(Holds(ended, "error: there is no value for ${secret:NONE}")) << ended.Text();
}

TEST_F(RunProgram, MarksFailuresForGithub) {
    const Ended ended = RunTool({L"run", L"--annotate", L"github", Script(BriefLine(L"Window.ClearText", L"4711"))});
    EXPECT_TRUE(Holds(ended, "script.txt,line=1,title=control_not_found::Window.ClearText ")) << ended.Text();
}

TEST_F(RunProgram, TypesAReplacementForWhatIsNoText) {
    EXPECT_EQ(0U, Run({Script(Line(L"Window.SetText", L"12 \"LONE\" 5000").replace(0, 0, "\xEF\xBB\xBF"))}).code);
    std::string text = Line(L"Window.SetText", L"12 \"LONE\" 5000");
    text.replace(text.find("LONE"), 4, "a\xED\xA0\x80z");  // a lone surrogate
    EXPECT_EQ(0U, Run({Script(text)}).code);
    EXPECT_EQ(L"LONEa\xFFFD\xFFFD\xFFFDz", TextOf(target.Control(12)));
}

TEST_F(RunProgram, HidesAlsoWhatIsTypedInPart) {
    WriteFile(folder.File(L"secrets.txt"), "LONG=" + std::string(1500, 'x') + "\nSHORT=12\n");
    const std::wstring path =
        Script(Line(L"Window.SetText", L"13 ${secret:LONG} 5000") + Line(L"Window.ClickButton", L"4712 100"));
    const Ended ended = Run({L"--secret-file", folder.File(L"secrets.txt"), L"--on-failure", L"tree", L"--evidence",
                             folder.File(L"evidence"), path});
    EXPECT_TRUE(Holds(ended, "the value of SHORT has fewer than 4 characters")) << ended.Text();
    const Json tree = Json::parse(ReadFile(folder.File(L"evidence\\script.txt-L2.json")));
    EXPECT_EQ(std::string::npos, tree.dump().find("xxxx"));
    EXPECT_NE(std::string::npos, tree.dump().find("\"12\""));  // the path and the number of another control
    EXPECT_EQ(1U, Run({L"--on-failure", L"tree", L"--evidence", folder.File(L"evidence"), L"--from", L"2",
                       L"--no-check", Script("#\n" + Line(L"Window.ClickButton", L"4712 100"))})
                      .code);
    EXPECT_TRUE(FileExists(folder.File(L"evidence\\script.txt-L2-2.json")));
}

TEST_F(RunProgram, HidesWhatAControlMadeOfASecret) {
    // A field of one line leaves the tab out, so that the value stands nowhere whole.
    WriteFile(folder.File(L"secrets.txt"), "TAB=se\tcret99\n");
    const std::wstring path =
        Script(Line(L"Window.SetText", L"12 ${secret:TAB} 5000") + Line(L"Window.ClickButton", L"4712 100"));
    EXPECT_EQ(1U, Run({L"--secret-file", folder.File(L"secrets.txt"), L"--on-failure", L"tree", L"--evidence",
                       folder.File(L"evidence"), path})
                      .code);
    EXPECT_NE(std::wstring::npos, TextOf(target.Control(12)).find(L"cret99"));
    const std::string tree = ReadFile(folder.File(L"evidence\\script.txt-L2.json"));
    EXPECT_NE(std::string::npos, tree.find("*****"));
    EXPECT_EQ(std::string::npos, tree.find("cret99"));
}

TEST_F(RunProgram, HandsNoSecretOfTheEnvironmentOn) {
    ::SetEnvironmentVariableW(L"DIALWRIGHT_TEST_NAME", L"ada lovelace");
    const Ended ended = Run({L"--launch", L"cmd.exe /c set>" + folder.File(L"set.txt"), L"-c",
                             target.Line(L"Window.SetText", L"12 ${env:DIALWRIGHT_TEST_NAME} 5000")});
    ::SetEnvironmentVariableW(L"DIALWRIGHT_TEST_NAME", nullptr);
    EXPECT_EQ(0U, ended.code) << ended.Text();
    EXPECT_EQ(L"ada lovelace", TextOf(target.Control(12)));
    ASSERT_TRUE(WaitUntil([&] { return ReadFile(folder.File(L"set.txt")).find("windir") != std::string::npos; }));
    EXPECT_EQ(std::string::npos, ReadFile(folder.File(L"set.txt")).find("lovelace"));
}

TEST_F(RunProgram, LeavesNoReportOfAnEarlierRun) {
    const std::wstring report = folder.File(L"report.xml");
    WriteFile(report, "old");
    EXPECT_EQ(2U, Run({L"--junit", report, L"-c", L"Window.Clsoe c t"}).code);
    EXPECT_FALSE(FileExists(report));
    const Ended ended = Run({L"--json", L"--junit", report, L"--launch", L"no-such-program.exe", L"-c",
                             target.Line(L"Window.ClearText", L"15 5000")});
    EXPECT_EQ(3U, ended.code);
    EXPECT_EQ(1, JsonOf(ended).at("skipped"));
    EXPECT_NE(std::string::npos, ReadFile(report).find("<skipped/>"));
}

TEST_F(RunProgram, RefusesToRunNothing) {
    const std::wstring path = Script(Line(L"Window.ClearText", L"15 5000"));
    EXPECT_EQ(2U, Run({L"--from", L"5", path}).code);
    EXPECT_EQ(2U, Run({L"--from", L"2", L"--to", L"1", path}).code);
    EXPECT_EQ(2U, Run({L"-", L"-"}, Line(L"Window.ClearText", L"15 5000")).code);
    EXPECT_EQ(L"Hello", TextOf(target.Control(15)));
}

TEST_F(RunProgram, RefusesWhatItCannotRead) {
    EXPECT_EQ(2U, Run({folder.File(L"nowhere.txt")}).code);
    EXPECT_EQ(2U, Run({}).code);
    EXPECT_EQ(2U, Run({Script("")}).code);
    EXPECT_EQ(2U, Run({L"--secret-file", folder.File(L"nowhere.txt"), L"-c", L"Window.Close c t"}).code);
    WriteFile(folder.File(L"bad.txt"), "no equals sign\n");
    EXPECT_EQ(2U, Run({L"--secret-file", folder.File(L"bad.txt"), L"-c", L"Window.Close c t"}).code);
}

}  // namespace
}  // namespace dialwright::testing
