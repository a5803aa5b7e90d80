#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/text_encoding.h"
#include "run_program.h"
#include "run_tool.h"
#include "support/child_process.h"
#include "support/practice_window.h"
#include "support/soak.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

#include <tlhelp32.h>

namespace dialwright::testing {
namespace {

/// Until it is killed, however long the programs take to start.
constexpr const wchar_t* kHangs = L"hang 600000";

TEST_F(RunProgram, GoesOnWhereAClickOpensADialog) {
    const std::wstring path =
        Script(Line(L"Window.ClickButton", L"23 5000") + "Window.ClickButton #32770 \"Question of " +
               ToUtf8(target.Title()) + "\" 1 5000\n" + Line(L"Window.SetText", L"12 \"after it\" 5000"));
    const Ended ended = Run({path});
    EXPECT_EQ(0U, ended.code) << ended.Text();
    EXPECT_TRUE(Holds(ended, ":1  ok (opened \"Question of " + ToUtf8(target.Title()) + "\")  ")) << ended.Text();
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
    target.DoAfter(1, kHangs);
    ASSERT_EQ("hanging", target.Process().ReadLine(kPatienceMs));
    const Ended ended = Run({L"--line-timeout", L"1500", L"-c", target.BriefLine(L"Window.SetText", L"12 hello")});
    EXPECT_EQ(4U, ended.code);
    EXPECT_TRUE(Holds(ended, "target_hung: the target did not answer; the text may be typed in part")) << ended.Text();
    target.Process().Kill();
}

TEST_F(RunProgram, TakesNoDialogForItsOwnThatWasThereBefore) {
    ::PostMessageW(target.Control(23), BM_CLICK, 0, 0);
    ASSERT_TRUE(WaitUntil([&] { return ::GetLastActivePopup(target.Handle()) != target.Handle(); }));
    target.DoAfter(1, kHangs);
    ASSERT_TRUE(WaitUntil([&] { return target.Process().ReadLine(kPatienceMs) == "hanging"; }));
    const Ended ended = Run({L"--line-timeout", L"1500", L"-c", target.BriefLine(L"Window.ClickButton", L"21")});
    EXPECT_EQ(4U, ended.code) << ended.Text();
    EXPECT_FALSE(Holds(ended, "opened")) << ended.Text();
    target.Process().Kill();
}

TEST_F(RunProgram, TellsAtTheLimitHowFarTheLineHasCome) {
    const Ended searching = Run({L"--line-timeout", L"200", L"-c", L"Window.Close NoSuchClass none 60000"});
    EXPECT_EQ(1U, searching.code);
    EXPECT_TRUE(Holds(searching, "window_not_found: ")) << searching.Text();
    const std::wstring text(4000, L'x');
    const Ended typing =
        Run({L"--line-timeout", L"800", L"-c", target.Line(L"Window.SetText", L"13 \"" + text + L"\" 60000")});
    EXPECT_EQ(4U, typing.code);
    EXPECT_TRUE(Holds(typing, "line_timeout: ")) << typing.Text();
}

TEST_F(RunProgram, TellsThatTheWindowClosedMeanwhile) {
    ChildProcess process(L"dialwright.exe",
                         {L"run", Script(Line(L"Window.SetCheckbox", L"31 1 60000") +
                                         Line(L"Window.ClearText", L"4711 " + std::to_wstring(Patient(3000))))});
    // Only then is the next line's search certain to begin soon, however long the programs took to start.
    ASSERT_TRUE(WaitUntil([&] { return CheckStateOf(target.Control(31)) == BST_CHECKED; }));
    target.DoAfter(Patient(1000), L"close");
    std::string said;
    while (const auto line = process.ReadLine(kPatienceMs)) said += *line + "\n";
    EXPECT_EQ(1U, process.WaitForExit(kPatienceMs).value_or(99));
    EXPECT_NE(std::string::npos, said.find("window_gone: ")) << said;
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

TEST_F(RunProgram, EndsWith3WithoutTheLibraryOrTheWorker) {
    const auto copy = [&](const wchar_t* name) {
        ASSERT_TRUE(::CopyFileW((ProgramFolder() + name).c_str(), folder.File(name).c_str(), TRUE));
    };
    const std::vector<std::wstring> arguments = {L"run", L"--work-folder", folder.File(L"work"), L"-c",
                                                 L"Window.Close c t 100"};
    copy(L"dialwright.exe");
    const Ended alone = RunOther(folder.File(L"dialwright.exe"), arguments);
    EXPECT_EQ(3U, alone.code);
    EXPECT_TRUE(Holds(alone, "dialwright-host.exe cannot be started: error 2")) << alone.Text();
    copy(L"dialwright-host.exe");
    const Ended without = RunOther(folder.File(L"dialwright.exe"), arguments);
    EXPECT_EQ(3U, without.code);
    EXPECT_TRUE(Holds(without, "Dialwright.dll cannot be loaded: error 126")) << without.Text();
}

TEST_F(RunProgram, EndsWith130WhenItIsInterrupted) {
    ChildProcess process(L"interrupt_host.exe", {ProgramFolder() + L"dialwright.exe", L"run",
                                                 Script(Line(L"Window.ClearText", L"15 5000") +
                                                        Line(L"Window.SelectDropdown.Value", L"51 Omega 60000"))});
    const auto first = process.ReadLine(kPatienceMs);
    ASSERT_TRUE(first && first->find(":1  ok  ") != std::string::npos) << first.value_or("nothing");
    // In the middle of a line, not between two.
    const auto isLookedFor = [](const std::string& event) { return event.starts_with("sent 51 CB_FINDSTRINGEXACT"); };
    ASSERT_TRUE(WaitUntil([&] { return std::ranges::any_of(target.TakeEvents(), isLookedFor); }));
    process.WriteLine("now");
    EXPECT_EQ(130U, process.WaitForExit(kPatienceMs));
    const auto second = process.ReadLine(kPatienceMs);
    EXPECT_TRUE(second && second->find(":2  FAIL  ") != std::string::npos) << second.value_or("nothing");
}

/// The workers that this process has started, whether it still runs or not. By their name: the parent of a process that
/// lives long may have ended, and its ID may be another's now.
std::vector<DWORD> WorkersOf(DWORD parent) {
    std::vector<DWORD> workers;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more; more = ::Process32NextW(snapshot, &entry)) {
        const bool isWorker = std::wstring(entry.szExeFile) == L"dialwright-host.exe";
        if (isWorker && entry.th32ParentProcessID == parent) workers.push_back(entry.th32ProcessID);
    }
    ::CloseHandle(snapshot);
    return workers;
}

void KillProcess(DWORD processId) {
    const HANDLE process = ::OpenProcess(PROCESS_TERMINATE, FALSE, processId);
    ::TerminateProcess(process, 1);
    ::CloseHandle(process);
}

/// Runs whose workers have their places below a folder of this test alone.
class RunInItsFolder : public RunProgram {
protected:
    [[nodiscard]] std::vector<std::wstring> Clearing() const {
        return {L"--json", L"--work-folder", folder.File(L"work"), L"-c", target.Line(L"Window.ClearText", L"15 5000")};
    }

    [[nodiscard]] std::string TraceFolder(int place) const {
        return ToUtf8(folder.File(L"work\\" + std::to_wstring(place) + L"\\logs\\trace"));
    }
};

/// A run that waits for a window that never comes.
class RunThatWaits : public RunInItsFolder {
protected:
    RunThatWaits() {
        EXPECT_TRUE(WaitUntil([&] { return !Workers().empty(); }));
        // Its first line has come out, so that the second one is on its way.
        const auto line = process.ReadLine(kPatienceMs);
        EXPECT_TRUE(line && line->find(":1  ok  ") != std::string::npos) << line.value_or("nothing");
    }

    /// Nobody is to wait until its line gives up.
    ~RunThatWaits() override { process.Kill(); }

    [[nodiscard]] std::vector<DWORD> Workers() const { return WorkersOf(process.Id()); }

    ChildProcess process{L"dialwright.exe",
                         {L"run", L"--work-folder", folder.File(L"work"),
                          Script(Line(L"Window.ClearText", L"15 5000") + "Window.Close NoSuchClass none 60000\n")}};
};

TEST_F(RunThatWaits, TellsThatTheWorkerHasEnded) {
    KillProcess(Workers().at(0));
    const auto line = process.ReadLine(kPatienceMs);
    EXPECT_TRUE(line && line->find(":2  FAIL  ") != std::string::npos) << line.value_or("nothing");
    const auto reason = process.ReadLine(kPatienceMs);
    EXPECT_TRUE(reason && reason->find("worker_ended: ") != std::string::npos) << reason.value_or("nothing");
    EXPECT_EQ(5U, process.WaitForExit(kPatienceMs));
}

TEST_F(RunThatWaits, LeavesNoWorkerBehindWhenItIsKilled) {
    process.Kill();
    EXPECT_TRUE(WaitUntil([&] { return Workers().empty(); }));
}

TEST_F(RunThatWaits, LeavesTheSecondFolderToEachRunBesideIt) {
    for (int run = 0; run < 2; ++run) {
        const Json report = JsonOf(Run(Clearing()));
        EXPECT_EQ(TraceFolder(2), report.at("traceFolder").get<std::string>());
        EXPECT_FALSE(report.at("traceMayBeMissing"));
    }
}

TEST_F(RunInItsFolder, LeavesAPlaceToAnotherProgramThatRunsThere) {
    const std::wstring program = folder.File(L"work\\1\\dialwright-host.exe");
    std::filesystem::create_directories(std::filesystem::path(program).parent_path());
    std::filesystem::copy_file(ProgramFolder() + L"practice_target.exe", program);
    ChildProcess other(program, {L"--commands"});
    ASSERT_TRUE(other.ReadLine(kPatienceMs));
    EXPECT_EQ(TraceFolder(2), JsonOf(Run(Clearing())).at("traceFolder").get<std::string>());
}

TEST_F(RunInItsFolder, ReplacesAnOlderProgramAndLeavesItsOtherNamesAlone) {
    std::filesystem::create_directories(folder.File(L"work\\1"));
    const std::wstring older = folder.File(L"older.exe");
    WriteFile(older, "an older version");
    std::filesystem::create_hard_link(older, folder.File(L"work\\1\\dialwright-host.exe"));
    EXPECT_EQ(TraceFolder(1), JsonOf(Run(Clearing())).at("traceFolder").get<std::string>());
    EXPECT_EQ(16U, std::filesystem::file_size(older));
}

TEST_F(RunProgram, EndsWith130AlsoBetweenQuickLines) {
    std::string text;
    for (int i = 0; i < 20000; ++i) text += Line(L"Window.SetCheckbox", L"31 1 5000");
    ChildProcess process(L"interrupt_host.exe",
                         {ProgramFolder() + L"dialwright.exe", L"run", L"--no-check", Script(text)});
    const auto first = process.ReadLine(kPatienceMs);
    ASSERT_TRUE(first && first->find(":1  ok  ") != std::string::npos) << first.value_or("nothing");
    process.WriteLine("now");
    EXPECT_EQ(130U, process.WaitForExit(kPatienceMs));
}

TEST_F(RunProgram, TakesThousandsOfLines) {
    const int count = Rounds(1000, 10000);
    std::string text = "\xEF\xBB\xBF";
    for (int i = 0; i < count; ++i) text += Line(L"Window.SetCheckbox", L"31 1 5000");
    const Ended ended = Run({Script(text)});
    EXPECT_EQ(0U, ended.code);
    const auto isDone = [](const std::string& line) { return line.find("  ok  ") != std::string::npos; };
    EXPECT_EQ(count, std::ranges::count_if(ended.lines, isDone));
}

TEST_F(RunProgram, PlansTenThousandLines) {
    std::string text;
    for (int i = 0; i < 10000; ++i) text += Line(L"Window.SetCheckbox", L"31 1 5000");
    EXPECT_EQ(10000U, Run({L"--dry-run", Script(text)}).lines.size());
}

}  // namespace
}  // namespace dialwright::testing
