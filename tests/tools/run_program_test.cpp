#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/text_encoding.h"
#include "run_tool.h"
#include "support/child_process.h"
#include "support/practice_window.h"
#include "support/soak.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

#include <nlohmann/json.hpp>

namespace dialwright::testing {
namespace {

using Json = nlohmann::json;

bool Holds(const Ended& ended, const std::string& text) { return ended.Text().find(text) != std::string::npos; }

std::string TextOfFile(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Runs scripts on a practice window of its own.
class RunProgram : public ::testing::Test {
protected:
    [[nodiscard]] std::wstring Script(const std::string& text, const std::wstring& name = L"script.txt") const {
        WriteFile(folder.File(name), text);
        return folder.File(name);
    }

    /// A line for the target, in UTF-8.
    [[nodiscard]] std::string Line(const std::wstring& name, const std::wstring& rest) const {
        return ToUtf8(target.Line(name, rest)) + "\n";
    }

    /// Quietly: --annotate none, so that the tests run the same under GitHub.
    [[nodiscard]] static Ended Run(std::vector<std::wstring> arguments, const std::string& input = "") {
        arguments.insert(arguments.begin(), L"run");
        arguments.emplace_back(L"--annotate");
        arguments.emplace_back(L"none");
        return RunTool(arguments, input);
    }

    /// The only JSON document among the lines, which also hold the sum from standard error.
    [[nodiscard]] static Json JsonOf(const Ended& ended) {
        const std::string text = ended.Text();
        const std::size_t end = text.rfind("\n}");
        return Json::parse(text.substr(text.find('{'), end + 2 - text.find('{')));
    }

    const TemporaryFolder folder;
    PracticeWindow target{kPlainClass};
};

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
    const std::string failing = Line(L"Window.ClickButton", L"4711 300");
    const Json report = JsonOf(Run({L"--json", Script(failing + Line(L"Window.ClearText", L"15 5000"))}));
    EXPECT_EQ(1, report.at("exitCode"));
    const Json& lines = report.at("files").at(0).at("lines");
    EXPECT_EQ("failed", lines.at(0).at("status"));
    EXPECT_EQ("control_not_found", lines.at(0).at("code"));
    EXPECT_EQ("no control in the window has the ID 4711", lines.at(0).at("reason"));
    EXPECT_TRUE(lines.at(0).at("suggestion").get<std::string>().starts_with("IDs that exist: "));
    EXPECT_GE(lines.at(0).at("milliseconds"), 300);
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
        {L"Window.SetCheckbox", L"34 1 200", "control_disabled", "more time"},
        {L"Window.SetCheckbox", L"21 1 200", "wrong_control_kind", ""},
        {L"Window.SetCheckbox.ByPath", L"99 1 200", "control_not_found", "paths that exist: 1, 2"},
        {L"Window.ClickButton.Position", L"12,178,88,201 0 200", "control_not_found", "lies at "},
        {L"Window.SelectDropdown.Value", L"51 Omega 200", "item_not_found", "items: \"Alpha\", \"Beta\""},
        {L"Window.SelectDropdown.Index", L"15 0 200", "item_not_found", "of the class Edit"},
        {L"Window.ClearText", L"4711 200", "control_not_found", "IDs that exist"},
    };
    for (const FailingLine& row : rows) {
        const Json report = JsonOf(Run({L"--json", L"-c", target.Line(row.name, row.rest)}));
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

TEST_F(RunProgram, GoesOnWhereAClickOpensADialog) {
    const std::wstring path =
        Script(Line(L"Window.ClickButton", L"23 5000") + "Window.ClickButton #32770 \"Practice question\" 1 5000\n" +
               Line(L"Window.SetText", L"12 \"after it\" 5000"));
    const Ended ended = Run({path});
    EXPECT_EQ(0U, ended.code) << ended.Text();
    EXPECT_TRUE(Holds(ended, ":1  ok (opened \"Practice question\")  ")) << ended.Text();
    EXPECT_EQ(L"after it", TextOf(target.Control(12)));
    // The click that opened the dialog has not opened it again.
    EXPECT_TRUE(::IsWindowEnabled(target.Handle()));
}

TEST_F(RunProgram, CanFailWhereAClickOpensADialog) {
    const Ended ended = Run({L"--on-modal", L"fail", L"-c", target.Line(L"Window.ClickButton", L"23 5000")});
    EXPECT_EQ(1U, ended.code);
    EXPECT_TRUE(Holds(ended, "dialog_opened: ")) << ended.Text();
    ::PostMessageW(::GetLastActivePopup(target.Handle()), WM_COMMAND, IDOK, 0);
}

TEST_F(RunProgram, CanWaitUntilSomebodyAnswersTheDialog) {
    ChildProcess process(L"dialwright.exe",
                         {L"run", L"--on-modal", L"wait", L"-c", target.Line(L"Window.ClickButton", L"23 5000")});
    // The sent click opens it, and the posted one once more.
    for (int answers = 0; answers < 2; ++answers) {
        HWND question = nullptr;
        ASSERT_TRUE(WaitUntil([&] {
            question = ::GetLastActivePopup(target.Handle());
            return question != target.Handle();
        }));
        constexpr DWORD kLongerThanADialogIsWatched = 900;
        EXPECT_FALSE(answers == 0 && process.WaitForExit(kLongerThanADialogIsWatched));
        ::PostMessageW(question, WM_COMMAND, IDOK, 0);
        ASSERT_TRUE(WaitUntil([&] { return !::IsWindow(question); }));
    }
    EXPECT_EQ(0U, process.WaitForExit(kPatienceMs));
}

TEST_F(RunProgram, EndsALineWhoseTargetHangs) {
    target.DoAfter(1, L"hang 4000");
    ASSERT_EQ("hanging", target.Process().ReadLine(kPatienceMs));
    const Ended ended = Run({L"--line-timeout", L"700", L"-c", target.Line(L"Window.SetText", L"12 hello 300")});
    EXPECT_EQ(4U, ended.code);
    EXPECT_TRUE(Holds(ended, "target_hung: the target did not answer; the text may be typed in part")) << ended.Text();
}

TEST_F(RunProgram, TellsThatTheWindowClosedMeanwhile) {
    target.DoAfter(400, L"close");
    const Ended ended = Run({L"-c", target.Line(L"Window.ClearText", L"4711 1500")});
    EXPECT_EQ(1U, ended.code);
    EXPECT_TRUE(Holds(ended, "window_gone: ")) << ended.Text();
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
    const Ended ended = RunTool({L"run", L"--annotate", L"github", Script(Line(L"Window.ClearText", L"4711 100"))});
    EXPECT_TRUE(Holds(ended, "script.txt,line=1,title=control_not_found::Window.ClearText ")) << ended.Text();
}

TEST_F(RunProgram, LaunchesAProgramThatOutlivesIt) {
    const std::wstring title = UniqueTitle();
    const std::wstring program =
        L"\"" + ProgramFolder() + L"practice_target.exe\" --class PracticeTarget --title \"" + title + L"\"";
    const Ended ended =
        RunTool({L"run", L"--launch", program, L"-c", L"Window.ClearText PracticeTarget \"" + title + L"\" 15 10000"});
    EXPECT_EQ(0U, ended.code) << ended.Text();
    const HWND window = ::FindWindowW(L"PracticeTarget", title.c_str());
    ASSERT_NE(nullptr, window);
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(window); }));
}

TEST_F(RunProgram, SaysWhereAProgramCannotBeLaunched) {
    EXPECT_EQ(3U, Run({L"--launch", L"no-such-program.exe", L"-c", target.Line(L"Window.ClearText", L"15")}).code);
    EXPECT_EQ(1U, RunTool({L"launch", L"no-such-program.exe"}).code);
}

TEST_F(RunProgram, EndsWith130WhenItIsInterrupted) {
    ChildProcess process(L"interrupt_host.exe",
                         {ProgramFolder() + L"dialwright.exe", L"run",
                          Script(Line(L"Window.ClearText", L"15 5000") + "Window.Close NoSuchClass none 60000\n")});
    const auto first = process.ReadLine(kPatienceMs);
    ASSERT_TRUE(first && first->find(":1  ok  ") != std::string::npos) << first.value_or("nothing");
    process.WriteLine("now");
    EXPECT_EQ(130U, process.WaitForExit(kPatienceMs));
    const auto second = process.ReadLine(kPatienceMs);
    EXPECT_TRUE(second && second->find(":2  FAIL  ") != std::string::npos) << second.value_or("nothing");
}

TEST_F(RunProgram, RefusesWhatItCannotRead) {
    EXPECT_EQ(2U, Run({folder.File(L"nowhere.txt")}).code);
    EXPECT_EQ(2U, Run({}).code);
    EXPECT_EQ(2U, Run({Script("")}).code);
    EXPECT_EQ(2U, Run({L"--secret-file", folder.File(L"nowhere.txt"), L"-c", L"Window.Close c t"}).code);
    WriteFile(folder.File(L"bad.txt"), "no equals sign\n");
    EXPECT_EQ(2U, Run({L"--secret-file", folder.File(L"bad.txt"), L"-c", L"Window.Close c t"}).code);
}

TEST_F(RunProgram, TakesThousandsOfLines) {
    const int count = Rounds(1000, 10000);
    std::string text = "\xEF\xBB\xBF";
    for (int i = 0; i < count; ++i) text += Line(L"Window.SetCheckbox", L"31 1 5000");
    const std::wstring path = Script(text);
    EXPECT_EQ(count, JsonOf(Run({L"--json", path})).at("done"));
}

TEST_F(RunProgram, PlansTenThousandLines) {
    std::string text;
    for (int i = 0; i < 10000; ++i) text += Line(L"Window.SetCheckbox", L"31 1 5000");
    EXPECT_EQ(10000U, Run({L"--dry-run", Script(text)}).lines.size());
}

}  // namespace
}  // namespace dialwright::testing
