// Tells whether the library and the programs beside this one work on this machine, and writes it down for others.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <system_error>

#include "dialwright/input.h"
#include "doctor/library_file.h"
#include "platform/text_encoding.h"
#include "run/own_files.h"
#include "verify/also.h"
#include "verify/child_program.h"
#include "verify/leaving_host.h"
#include "verify/options.h"
#include "verify/report.h"

namespace dialwright::verify {
namespace {

namespace fs = std::filesystem;

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kCannotRun = 3;

/// A folder for this run, gone with it.
class WorkFolder {
public:
    WorkFolder() : path(fs::temp_directory_path() / ("dialwright-verify-" + std::to_string(::GetCurrentProcessId()))) {
        fs::create_directories(path);
    }
    ~WorkFolder() {
        constexpr int kTries = 50;
        std::error_code failed;
        // The system lets go of a program that was ended a moment later.
        for (int i = 0; i < kTries && fs::exists(path, failed); ++i) {
            fs::remove_all(path, failed);
            if (failed) ::Sleep(100);
        }
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    [[nodiscard]] const fs::path& Path() const { return path; }

private:
    fs::path path;
};

/// The first that can be written. It is emptied at once, so that an old report is never taken for ours.
std::optional<std::string> ChooseReport(const std::vector<std::string>& reports) {
    for (const std::string& report : reports) {
        if (tools::WriteWholeFile(report, "")) return report;
    }
    return std::nullopt;
}

tools::Json AskDoctor(const Setting& setting, const Mask& mask) {
    constexpr DWORD kEndMs = 60000;
    try {
        const Output output = RunToEnd({.program = setting.Tool(), .arguments = {L"doctor", L"--json"}}, kEndMs);
        tools::Json doctor = tools::Json::parse(output.text);
        for (tools::Json& row : doctor["checks"]) {
            row["found"] = mask(row["found"]);
            row["advice"] = mask(row["advice"]);
        }
        return doctor;
    } catch (const std::exception&) {
        return nullptr;  // what is wrong with it, the checks tell
    }
}

bool IsWanted(const Check& check, const Options& options) {
    return options.only.empty() || std::ranges::find(options.only, check.name) != options.only.end();
}

Run LookAtAll(const Options& options, const Setting& setting, const Mask& mask) {
    Run run{.architecture = std::string(NameOf(tools::ReadProgramFile(setting.Program().wstring()).architecture)),
            .machine = ReadMachine(setting, mask),
            .quick = options.quick};
    tools::WriteOutput(Headline(run));
    for (const Check& check : Checks()) {
        if (!IsWanted(check, options)) continue;
        std::fprintf(stderr, "%s: %s\n", check.name, check.asks);
        Setting own = setting;
        own.work = setting.work / check.name;
        fs::create_directories(own.work);
        run.checks.push_back(RunCheck(check, own, options.limit));
        tools::WriteOutput(LineOf(run.checks.back(), mask));
    }
    run.doctor = AskDoctor(setting, mask);
    return run;
}

int WriteReport(const Options& options) {
    const auto report = ChooseReport(options.reports);
    if (!report && !options.reports.empty()) {
        std::fprintf(stderr, "dialwright-verify: the report cannot be written\n");
        return kCannotRun;
    }
    const WorkFolder work;
    const Setting setting{.folder = tools::OwnProgram().parent_path(), .work = work.Path(), .quick = options.quick};
    const Mask mask(setting.folder, setting.work);
    Findings findings{.isWhole = options.IsWhole()};
    findings.runs.push_back(ToJson(LookAtAll(options, setting, mask), mask));
    AddOther(options, setting, mask, findings);
    const tools::Json json = ReportOf(findings);
    for (const std::string& note : findings.notes) tools::WriteOutput(note + "\n");
    tools::WriteOutput(SumText(json));
    if (report && !tools::WriteWholeFile(*report, tools::JsonText(json))) {
        std::fprintf(stderr, "dialwright-verify: the report cannot be written\n");
        return kCannotRun;
    }
    if (report) std::fprintf(stderr, "The report is in %s\n", report->c_str());
    return HasFailed(json) ? kFailed : kDone;
}

int DoAsTold(const Options& options) {
    const Setting setting{
        .folder = tools::FilePath(options.folder), .work = tools::FilePath(options.checkWork), .quick = options.quick};
    if (!options.check.empty()) return CarryOutCheck(*FindCheck(options.check), setting);
    if (!options.leave.empty()) return LogAndLeave(setting, options.leave);
    if (options.crash) LogAndCrash(setting);
    return WriteReport(options);
}

}  // namespace
}  // namespace dialwright::verify

int main() {
    using namespace dialwright::verify;
    try {
        const ReadOptions read = ReadCommandLine();
        return read.exitCode ? *read.exitCode : DoAsTold(read.options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "dialwright-verify: %s\n", error.what());
        return kCannotRun;
    }
}
