#include "verify/check_runner.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <sstream>

#include "verify/child_program.h"
#include "verify/own_trace.h"
#include "verify/program_copy.h"

namespace dialwright::verify {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kTraceLines = 60;

std::vector<std::string> LastLines(std::vector<std::string> lines) {
    if (lines.size() > kTraceLines) lines.erase(lines.begin(), lines.end() - kTraceLines);
    return lines;
}

std::string Hex(DWORD code) {
    std::ostringstream text;
    text << "0x" << std::hex << code;
    return text.str();
}

/// What has to be said of the end of the process; empty where it came in order.
std::string AbnormalEnd(ChildProgram& process, unsigned seconds, const std::string& unfinished) {
    const std::string in = unfinished.empty() ? "" : ", in \"" + unfinished + "\"";
    const auto code = process.WaitForEnd(0);
    if (!code) return "it did not end within " + std::to_string(seconds) + " s" + in;
    return *code == 0 ? "" : "its process ended with " + Hex(*code) + in;
}

/// Every step counts: one that failed fails the check, and one that passed keeps it from having been skipped.
void Judge(CheckReport& report, const std::string& abnormalEnd) {
    const auto find = [&](Result result) {
        return std::ranges::find_if(report.steps, [=](const Step& step) { return step.verdict.result == result; });
    };
    const auto failed = find(Result::Failed);
    if (!abnormalEnd.empty()) {
        report.why = abnormalEnd;
    } else if (failed != report.steps.end()) {
        report.why = failed->name + ": " + failed->verdict.found;
    } else if (report.steps.empty()) {
        report.why = "it has looked at nothing";
    } else if (find(Result::Passed) == report.steps.end()) {
        report.result = Result::Skipped;
        report.why = report.steps.front().verdict.found;
    } else {
        report.result = Result::Passed;
    }
}

std::unique_ptr<ChildProgram> Start(const fs::path& program, const Check& check, const Setting& setting) {
    const std::string name = check.name;
    std::vector<std::wstring> arguments = {L"--check",      std::wstring(name.begin(), name.end()),
                                           L"--folder",     setting.folder.wstring(),
                                           L"--check-work", setting.work.wstring()};
    if (setting.quick) arguments.emplace_back(L"--quick");
    return std::make_unique<ChildProgram>(ChildStart{.program = program, .arguments = arguments});
}

}  // namespace

CheckReport RunCheck(const Check& check, const Setting& setting, std::optional<unsigned> limit) {
    const unsigned seconds = limit.value_or(check.seconds);
    CheckReport report{.name = check.name};
    const auto begin = std::chrono::steady_clock::now();
    fs::path program = CopyProgram(setting.Program(), setting.work);
    std::unique_ptr<ChildProgram> process;
    try {
        process = Start(program, check, setting);
    } catch (const StartError&) {
        // A system that runs nothing from the user's folders.
        program = setting.Program();
        process = Start(program, check, setting);
    }
    (void)process->WaitForEnd(seconds * 1000);
    JournalContent content = ReadJournal(setting.JournalFile());
    const std::string abnormalEnd = AbnormalEnd(*process, seconds, content.unfinished);
    process.reset();
    report.milliseconds = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
    report.steps = std::move(content.steps);
    Judge(report, abnormalEnd);
    if (report.result == Result::Failed) report.trace = LastLines(ReadTrace(program));
    return report;
}

int CarryOutCheck(const Check& check, const Setting& setting) {
    // A crash is to end the process, not to ask somebody.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    Journal journal(setting.JournalFile());
    try {
        check.run(setting, journal);
    } catch (const std::exception& error) {
        journal.Do("set up", [&]() -> Verdict { return Failed(error.what()); });
    }
    return 0;
}

}  // namespace dialwright::verify
