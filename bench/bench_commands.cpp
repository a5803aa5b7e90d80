// What a command on an open window of another process costs, and what its platform calls, its messages and its bytes on
// standard output cost by themselves.

#include <functional>
#include <string>

#include "arguments.h"
#include "bare_commands.h"
#include "dialwright/dialwright.h"
#include "redirected_output.h"
#include "replay.h"
#include "target_names.h"
#include "target_process.h"
#include "turns.h"

using namespace dialwright;

namespace {

struct Case {
    const char* row;
    std::wstring command;
    std::function<bool(const bench::BareTarget&)> bare;
    int controlId;
};

struct Run {
    const bench::TargetProcess& target;
    std::wstring title;
    std::string output;
    bench::Report& report;
};

std::wstring Line(const std::wstring& name, const std::wstring& title, int controlId, const std::wstring& rest = {}) {
    return name + L" " + bench::kTargetClass + L" \"" + title + L"\" " + std::to_wstring(controlId) + rest;
}

void Carry(const std::wstring& command) { bench::Require(::ExecuteCommand(command.c_str()) == 1, "a command fails"); }

/// Both sides write as many messages of each kind.
void Measure(const Run& run, const Case& one, int pairs) {
    const std::size_t before = bench::BytesWritten();
    Carry(one.command);
    run.target.Settle();
    const bench::Replay replay(run.output, before);
    const bench::BareTarget target = {
        .className = bench::kTargetClass, .title = run.title.c_str(), .controlId = one.controlId};
    const auto bare = [&] {
        bench::Require(one.bare(target), "a bare call fails");
        replay.Write();
    };
    run.report.Add(one.row, bench::TakeTurns(pairs, [&] { Carry(one.command); }, bare, [&] { run.target.Settle(); }));
}

int MeasureCommands(const Run& run, int pairs) {
    const auto line = [&](const wchar_t* name, int controlId, const wchar_t* rest) {
        return Line(name, run.title, controlId, rest);
    };
    const std::wstring item = bench::kItem;
    const Case cases[] = {
        {"command_click", line(L"Window.ClickButton", bench::kButtonId, L""), &bench::BareClick, bench::kButtonId},
        {"command_clear", line(L"Window.ClearText", bench::kEditId, L""), &bench::BareClear, bench::kEditId},
        {"command_select", line(L"Window.SelectDropdown.Value", bench::kComboId, L" \"Debit card\""),
         [&](const bench::BareTarget& target) { return bench::BareSelect(target, item.c_str()); }, bench::kComboId},
        {"command_check", line(L"Window.SetCheckbox", bench::kCheckId, L" 1"),
         [](const bench::BareTarget& target) { return bench::BareCheck(target, 1); }, bench::kCheckId},
    };
    for (const Case& one : cases) Measure(run, one, pairs);
    // The command that shows the bytes, and one of each side that counts for nothing.
    return static_cast<int>(std::size(cases)) * (2 * pairs + 3);
}

int MeasureTyping(const Run& run, int pairs, int characters) {
    const HWND edit = ::GetDlgItem(bench::TargetProcess::Find(bench::kControlsWindow), bench::kEditId);
    const std::wstring text(static_cast<std::size_t>(characters), L'x');
    const std::wstring command = Line(L"Window.SetText", run.title, bench::kEditId, L" " + text);
    const auto type = [&] {
        for (const wchar_t unit : text) ::SendMessageW(edit, WM_CHAR, unit, 0);
    };
    const auto emptyAgain = [&] {
        run.target.Settle();
        bench::Require(::SendMessageW(edit, WM_GETTEXTLENGTH, 0, 0) == characters, "not all characters have arrived");
        ::SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
        run.target.Settle();
    };
    run.report.AddPairs("typing", bench::TakeTurns(pairs, [&] { Carry(command); }, type, emptyAgain));
    return pairs + 1;
}

}  // namespace

int main(int count, char** values) {
    const bench::Arguments arguments(
        count, values,
        "usage: bench_commands --pairs N --typing-pairs N --characters N --folder FOLDER\n\n"
        "Carries out commands and their bare calls in turns, with standard output in output.txt in the folder, whose\n"
        "name ends in a backslash. Prints one line of JSON.\n",
        {"--pairs", "--typing-pairs", "--characters", "--folder"});
    bench::Report report;
    {
        const std::string output = arguments.Text("--folder") + "output.txt";
        const bench::RedirectedOutput redirected(output);
        bench::Require(redirected.IsThere(), "standard output cannot be redirected");
        const bench::TargetProcess target({});
        const Run run = {target, bench::TargetProcess::Title(bench::kControlsWindow), output, report};
        const int commands = MeasureCommands(run, arguments.Number("--pairs"));
        report.SetWritten(commands +
                          MeasureTyping(run, arguments.Number("--typing-pairs"), arguments.Number("--characters")));
    }
    report.Print();
    return 0;
}
