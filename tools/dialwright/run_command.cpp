#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "check/check.h"
#include "check/source_text.h"
#include "check_formats.h"
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
#include "subcommand.h"

namespace dialwright::tools {
namespace {

struct Script {
    std::string name;
    SourceText source;
};

/// Ends the command before anything was carried out.
struct Refused : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string ReadOrRefuse(const std::string& file) {
    auto bytes = ReadInput(file);
    if (!bytes) throw Refused(file + " cannot be read");
    return std::move(*bytes);
}

std::vector<Script> ReadScripts(const RunOptions& options) {
    std::vector<Script> scripts;
    if (!options.lines.empty()) {
        std::string text;
        for (const std::string& line : options.lines) text += line + "\n";
        scripts.push_back({.name = "<command>", .source = ReadSource(text)});
    }
    for (const std::string& file : options.files) {
        scripts.push_back({.name = file == "-" ? "<stdin>" : file, .source = ReadSource(ReadOrRefuse(file))});
    }
    if (scripts.empty()) throw Refused("run wants a script, - or -c; see dialwright run --help");
    const bool partly = options.range.from > 1 || options.range.to != LineRange().to;
    if (partly && scripts.size() > 1) throw Refused("--from and --to are for one script alone");
    return scripts;
}

/// Prints what check finds, but for warnings; throws where that must fail.
void CheckFirst(const std::vector<Script>& scripts) {
    std::vector<CheckedFile> files;
    bool found = false;
    for (const Script& script : scripts) {
        CheckedFile checked{.file = script.name, .findings = CheckScript(script.source)};
        std::erase_if(checked.findings, [](const Finding& finding) { return finding.Level() != Severity::Error; });
        found = found || !checked.findings.empty();
        files.push_back(std::move(checked));
    }
    if (!found) return;
    std::fputs(FormatFindings("text", files).c_str(), stderr);
    throw Refused("nothing was carried out; --no-check runs the script all the same");
}

SecretSources ReadSecretSources(const RunOptions& options) {
    SecretSources sources;
    if (options.secretFile.empty()) return sources;
    try {
        sources.secrets = ReadSecretValues(ReadOrRefuse(options.secretFile));
    } catch (const Refused&) {
        throw;
    } catch (const std::runtime_error& error) {
        throw Refused(options.secretFile + ": " + error.what());
    }
    return sources;
}

std::vector<PlannedFile> Plan(const RunOptions& options, const std::vector<Script>& scripts, Redactor& redactor) {
    const SecretSources secrets = ReadSecretSources(options);
    // Also what no line types: it may stand in a window all the same.
    for (const auto& [name, value] : secrets.secrets) redactor.Hide(value);
    std::vector<PlanProblem> problems;
    std::vector<PlannedFile> files;
    for (const Script& script : scripts) {
        files.push_back(PlanScript(script.name, script.source, options.range, secrets, problems));
        for (const PlannedLine& line : files.back().lines) {
            for (const std::wstring& value : line.secrets) redactor.Hide(value);
        }
    }
    for (const PlanProblem& problem : problems) {
        std::fprintf(stderr, "%s:%zu:%zu: error: %s\n", problem.file.c_str(), problem.line, problem.column,
                     Printable(problem.text).c_str());
    }
    if (!problems.empty()) throw Refused("nothing was carried out");
    return files;
}

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

/// A run with all that hears of it.
class Session {
public:
    Session(const RunOptions& runOptions, const Redactor& wordsToHide)
        : options(runOptions), annotates(Annotates(runOptions)), runner(Settings(wordsToHide), wordsToHide) {}

    int Run(const std::vector<PlannedFile>& files) {
        if (!options.launch.empty()) LaunchProgram();
        try {
            RunEnd end = RunEnd::Done;
            for (std::size_t round = 0; round < options.repeat && end == RunEnd::Done; ++round) end = runner.Run(files);
            return Finish(ExitCodeOf(end));
        } catch (const std::runtime_error& error) {  // no other worker could be had; what has run is reported
            std::fprintf(stderr, "dialwright: %s\n", error.what());
            return Finish(kEnvironment);
        }
    }

private:
    RunnerSettings Settings(const Redactor& redactor) {
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
        settings.saveEvidence = [this, &redactor](const LineReport& line, const LineResult& result,
                                                  const std::vector<HWND>& controlsWithSecrets) {
            return SaveEvidence({.folder = FilePath(options.evidenceFolder), .kinds = options.onFailure}, line, result,
                                redactor, controlsWithSecrets);
        };
        return settings;
    }

    void LaunchProgram() {
        const auto [program, arguments] = SplitProgram(Wide(options.launch));
        if (runner.Launch(program, arguments) == 0) {
            throw std::runtime_error(ToUtf8(program) + " cannot be started");
        }
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

    int Finish(int exitCode) {
        RunReport& report = runner.Report();
        report.exitCode = exitCode;
        if (options.json) WriteOutput(FormatRunAsJson(report));
        std::fputs(FormatSum(report).c_str(), stderr);
        if (options.junitFile.empty()) return exitCode;
        if (WriteWholeFile(options.junitFile, FormatRunAsJUnit(report))) return exitCode;
        std::fprintf(stderr, "dialwright: %s cannot be written\n", options.junitFile.c_str());
        return exitCode == kDone ? kEnvironment : exitCode;
    }

    const RunOptions& options;
    bool annotates;
    Interrupt interrupt;
    ProgressLine progress;
    /// What the progress tells of.
    std::string current;
    Runner runner;
};

int Run(const RunOptions& options) {
    Redactor redactor;
    std::vector<PlannedFile> files;
    try {
        const std::vector<Script> scripts = ReadScripts(options);
        if (!options.noCheck) CheckFirst(scripts);
        files = Plan(options, scripts, redactor);
    } catch (const Refused& refused) {
        std::fprintf(stderr, "dialwright: %s\n", refused.what());
        return kUsage;
    }
    if (options.dryRun) return ShowPlan(options, files, redactor);
    RequestPerMonitorDpiAwareness();
    try {
        return Session(options, redactor).Run(files);
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "dialwright: %s\n", error.what());
        return kEnvironment;
    }
}

}  // namespace

Action DefineRun(CLI::App& command) {
    const auto options = AddRunOptions(command);
    return [options] { return Run(*options); };
}

}  // namespace dialwright::tools
