// What the language costs: a script that is checked, by itself and by many threads, and a line that is refused.

#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "arguments.h"
#include "language/splitting.h"
#include "language/tokenizer.h"
#include "redirected_output.h"
#include "script/dialog_script_manager.h"
#include "target_process.h"
#include "trace/logger.h"
#include "trace/trace.h"
#include "turns.h"

using namespace dialwright;

namespace {

constexpr const wchar_t* kLines[] = {
    L"Window.SetText \"#32770\" \"Sign in\" 1001 \"Ada Lovelace\" 5000\n",
    L"Window.SetText \"#32770\" \"Sign in\" 1002 \"a secret of hers\" 5000\n",
    L"Window.SelectDropdown.Value \"#32770\" \"Sign in\" 1003 \"Debit card\" 5000\n",
    L"Window.SetCheckbox \"#32770\" \"Sign in\" 1004 1 5000\n",
    L"Window.ClickButton \"#32770\" \"Sign in\" 1 5000\n",
};
constexpr const wchar_t* kRefused = L"Window.Polish Notepad";

std::wstring Script(int lines) {
    std::wstring script;
    for (int i = 0; i < lines; ++i) script += kLines[static_cast<std::size_t>(i) % std::size(kLines)];
    return script;
}

void Validate(const std::wstring& script) {
    bench::Require(DialogScriptManager().ValidateScript(script.c_str()) == 1, "the script is refused");
}

/// As often as a check does: once more for the log where a text is masked.
template <class Tokenize>
void TokenizeAll(const std::wstring& script, Tokenize tokenize) {
    std::size_t tokens = 0;
    for (const std::wstring& line : SplitScriptLines(script)) {
        tokens += tokenize(line);
        if (line.starts_with(L"Window.SetText")) tokens += tokenize(line);
    }
    bench::Require(tokens != 0, "the script has no tokens");
}

std::size_t TokensOf(const std::wstring& line) { return TokenizeCommand(line).size(); }

/// The plainest use of the standard library for it.
std::size_t PlainTokensOf(const std::wstring& line) {
    const std::wregex expression(LR"re(\"((?:[^\"\\]|\\.)*)\"|(\S+))re");
    std::vector<std::wstring> tokens;
    for (std::wsregex_iterator match(line.begin(), line.end(), expression), end; match != end; ++match) {
        tokens.push_back((*match)[1].matched ? (*match)[1].str() : (*match)[2].str());
    }
    return tokens.size();
}

void MeasureScript(bench::Report& report, int lines, int pairs) {
    const std::wstring script = Script(lines);
    report.Add("script", bench::TakeTurns(pairs, [&] { Validate(script); }, [&] { TokenizeAll(script, &TokensOf); }));
    report.Add(
        "tokens",
        bench::TakeTurns(pairs, [&] { TokenizeAll(script, &TokensOf); }, [&] { TokenizeAll(script, &PlainTokensOf); }));
}

/// The same call, and its parts by themselves.
void MeasureRefusal(bench::Report& report, int calls) {
    const std::wstring line = kRefused;
    report.Add("refused", bench::MicrosecondsOf(calls, [&] {
                   bench::Require(DialogScriptManager().ValidateCommand(line.c_str()) == 0, "the line is taken");
               }));
    report.Add("refused_table", bench::MicrosecondsOf(calls, [] { const DialogScriptManager manager; }));
    report.Add("refused_compile",
               bench::MicrosecondsOf(calls, [] { bench::Require(TokenizeCommand(L"").empty(), "token"); }));
    report.Add("refused_tokens", bench::MicrosecondsOf(calls, [&] { bench::Require(TokensOf(line) == 2, "tokens"); }));
    report.Add("refused_log", bench::MicrosecondsOf(calls, [] {
                   TraceLog("DialogScriptManager::ValidateCommand", LOG_ERROR, "Unknown command: %ls",
                            L"Window.Polish");
               }));
}

void MeasureThreads(bench::Report& report, int lines, int threadCount) {
    const std::wstring script = Script(lines);
    const bench::Stopwatch watch;
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) threads.emplace_back([&] { Validate(script); });
    for (std::thread& thread : threads) thread.join();
    report.Add("threads", watch.Seconds() * 1e6);
}

void Measure(bench::Report& report, const bench::Arguments& arguments) {
    const std::string what = arguments.Text("--measure");
    const int lines = arguments.Number("--lines");
    const int times = arguments.Number("--times");
    if (what == "script") {
        MeasureScript(report, lines, times);
    } else if (what == "refused") {
        MeasureRefusal(report, times);
    } else if (what == "threads") {
        MeasureThreads(report, lines, times);
    } else {
        arguments.Refuse("--measure does not know " + what);
    }
}

}  // namespace

int main(int count, char** values) {
    const bench::Arguments arguments(
        count, values,
        "usage: bench_script --measure script|refused|threads --lines N --times N --folder FOLDER\n\n"
        "Checks a script of so many lines in so many turns with its tokenizing, or a line that is refused so many\n"
        "times, or the script by so many threads. Logs into the folder, whose name ends in a backslash. Prints one\n"
        "line of JSON.\n",
        {"--measure", "--lines", "--times", "--folder"});
    const std::string folder = arguments.Text("--folder");
    bench::Report report;
    {
        const bench::RedirectedOutput redirected(folder + "output.txt");
        bench::Require(redirected.IsThere() && TraceStart(folder.c_str(), "trace.log", "Dialwright") != 0,
                       "the log cannot be opened");
        Measure(report, arguments);
        TraceStop();
    }
    report.Print();
    return 0;
}
