#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "check/source_text.h"
#include "evidence.h"
#include "input.h"
#include "interrupt.h"
#include "junit.h"
#include "platform/dpi.h"
#include "platform/text_encoding.h"
#include "printable.h"
#include "progress_line.h"
#include "run/own_files.h"
#include "run/runner.h"
#include "run_formats.h"
#include "run_options.h"
#include "run_plan.h"
#include "subcommand.h"

namespace dialwright::tools {
namespace {

int ShowPlan(const RunOptions& options, const std::vector<PlannedFile>& files, const Redactor& redactor) {
    RunReport report;
    for (const PlannedFile& file : files) {
        report.files.push_back(ReportOf(file, LineStatus::Planned, redactor));
        if (options.json) continue;
        for (const LineReport& line : report.files.back().lines) WriteOutput(FormatLine(line));
    }
    if (options.json) WriteOutput(FormatRunAsJson(report));
    return kDone;
}

OnModal ModalPolicy(const std::string& name) {
    if (name == "wait") return OnModal::Wait;
    return name == "fail" ? OnModal::Fail : OnModal::Continue;
}

bool Annotates(const RunOptions& options) {
    if (options.annotate != "auto") return options.annotate == "github";
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing changes the environment
    const char* const runsThere = std::getenv("GITHUB_ACTIONS");
    return runsThere != nullptr && std::string(runsThere) == "true";
}

int ExitCodeOf(RunEnd end) {
    switch (end) {
        case RunEnd::LineFailed: return kFound;
        case RunEnd::NoAnswer: return kWatchdog;
        case RunEnd::WorkerEnded: return kInternal;
        case RunEnd::Interrupted: return kInterrupted;
        case RunEnd::Done: break;
    }
    return kDone;
}

/// Writes what was asked for. Returns the exit code, which a report that cannot be written may change.
int WriteReports(const RunOptions& options, RunReport& report, int exitCode) {
    report.exitCode = exitCode;
    if (options.json) WriteOutput(FormatRunAsJson(report));
    std::fputs(FormatSum(report).c_str(), stderr);
    if (options.junitFile.empty() || WriteWholeFile(options.junitFile, FormatRunAsJUnit(report))) return exitCode;
    std::fprintf(stderr, "dialwright: %s cannot be written\n", options.junitFile.c_str());
    return exitCode == kDone ? kEnvironment : exitCode;
}

int Complain(const std::runtime_error& error, int exitCode) {
    std::fprintf(stderr, "dialwright: %s\n", error.what());
    return exitCode;
}

/// A run with all that hears of it.
class Session {
public:
    /// Throws std::runtime_error where the worker cannot be started.
    Session(const RunOptions& runOptions, const RunPlan& runPlan, bool annotatesLines)
        : options(runOptions), plan(runPlan), annotates(annotatesLines), runner(Settings(), runPlan.redactor) {}

    int Run() {
        const int exitCode = RunAll();
        return WriteReports(options, runner.Report(), exitCode);
    }

private:
    int RunAll() {
        try {
            LaunchProgram();
            RunEnd end = RunEnd::Done;
            for (std::size_t i = 0; i < options.repeat && end == RunEnd::Done; ++i) end = runner.Run(plan.files);
            return ExitCodeOf(end);
        } catch (const std::runtime_error& error) {
            runner.SkipAll(plan.files);
            return Complain(error, kEnvironment);
        }
    }

    void LaunchProgram() {
        if (options.launch.empty()) return;
        const auto [program, arguments] = SplitProgram(Wide(options.launch));
        if (runner.Launch(program, arguments) == 0) {
            throw std::runtime_error("launch_failed: " + ToUtf8(program) + " cannot be started");
        }
    }

    RunnerSettings Settings() {
        RunnerSettings settings;
        settings.host = HostProgram();
        settings.library = LibraryFile();
        settings.workFolder = options.workFolder.empty() ? UsersHostFolder() : FilePath(options.workFolder);
        settings.keepGoing = options.keepGoing;
        settings.lines.onModal = ModalPolicy(options.onModal);
        if (options.lineTimeoutMs > 0) settings.lines.limit = std::chrono::milliseconds(options.lineTimeoutMs);
        settings.lines.isInterrupted = [this] { return interrupt.ComesWithin(0); };
        settings.lines.waiting = [this](std::chrono::milliseconds waited) { progress.Show(current, waited); };
        settings.lineBegins = [this](const LineReport& line) {
            current = Printable(line.file) + ":" + std::to_string(line.line) + "  " + Printable(line.text);
        };
        settings.lineEnded = [this](const LineReport& line) { Hear(line); };
        settings.saveEvidence = [this](const LineReport& line, const LineResult& result,
                                       const std::vector<HWND>& controlsWithSecrets) {
            return SaveEvidence({.folder = FilePath(options.evidenceFolder), .kinds = options.onFailure}, line, result,
                                plan.redactor, controlsWithSecrets);
        };
        return settings;
    }

    void Hear(const LineReport& line) {
        progress.Wipe();
        if (!options.json) WriteOutput(FormatLine(line));
        if (!annotates) return;
        const std::string annotation = FormatLineForGithub(line);
        // GitHub reads both streams; JSON must stay alone on its own.
        if (options.json) {
            std::fputs(annotation.c_str(), stderr);
        } else {
            WriteOutput(annotation);
        }
    }

    const RunOptions& options;
    const RunPlan& plan;
    bool annotates;
    Interrupt interrupt;
    ProgressLine progress;
    /// What the progress tells of.
    std::string current;
    Runner runner;
};

/// Where not even the worker can be started: nothing was carried out.
int ReportNothing(const RunOptions& options, const RunPlan& plan) {
    RunReport report;
    for (const PlannedFile& file : plan.files) {
        report.files.push_back(ReportOf(file, LineStatus::Skipped, plan.redactor));
    }
    return WriteReports(options, report, kEnvironment);
}

/// The report of an earlier run would pass for one of this run, which may end without any.
void RemoveOldReport(const RunOptions& options) {
    std::error_code failed;
    if (!options.junitFile.empty()) std::filesystem::remove(FilePath(options.junitFile), failed);
}

int Run(const RunOptions& options) {
    const bool annotates = Annotates(options);
    RemoveOldReport(options);
    RunPlan plan;
    try {
        plan = MakePlan(options, annotates);
    } catch (const Refused& refused) {
        return Complain(refused, kUsage);
    }
    if (options.dryRun) return ShowPlan(options, plan.files, plan.redactor);
    RequestPerMonitorDpiAwareness();
    std::optional<Session> session;
    try {
        session.emplace(options, plan, annotates);
    } catch (const std::runtime_error& error) {
        (void)Complain(error, kEnvironment);
        return ReportNothing(options, plan);
    }
    return session->Run();
}

}  // namespace

Action DefineRun(CLI::App& command) {
    const auto options = AddRunOptions(command);
    return [options] { return Run(*options); };
}

}  // namespace dialwright::tools
