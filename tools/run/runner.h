#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "run/line_runner.h"
#include "run/plan.h"
#include "run/report.h"

namespace dialwright::tools {

/// What the end of a run means to whoever started it.
enum class RunEnd : std::uint8_t { Done, LineFailed, NoAnswer, WorkerEnded, Interrupted };

struct RunnerSettings {
    /// dialwright-host.exe and Dialwright.dll.
    std::filesystem::path host;
    std::filesystem::path library;
    /// Where workers have their folders; empty: the worker runs where its program is.
    std::filesystem::path workFolder;
    /// A file whose line fails ends, and the next one begins.
    bool keepGoing = false;
    LineRunner::Settings lines;
    /// Called as each line begins, and as it ends.
    std::function<void(const LineReport&)> lineBegins;
    std::function<void(const LineReport&)> lineEnded;
    /// Called for a line that failed, while the target is as the line left it; returns the files that it wrote.
    std::function<std::vector<std::string>(const LineReport&, const LineResult&,
                                           const std::vector<HWND>& controlsWithSecrets)>
        saveEvidence;
};

/// A report of lines that have not been run.
[[nodiscard]] FileReport ReportOf(const PlannedFile& file, LineStatus status, const Redactor& redactor);

/// Carries out planned scripts in one worker after another.
class Runner {
public:
    /// Starts the first worker; throws as Worker does.
    Runner(RunnerSettings runnerSettings, const Redactor& wordsToHide);

    /// Starts a program; its process ID, or 0 when it cannot be started.
    [[nodiscard]] DWORD Launch(const std::wstring& program, const std::wstring& arguments);

    /// Runs one file after another, up to the first line that fails unless told to keep going.
    [[nodiscard]] RunEnd Run(const std::vector<PlannedFile>& files);

    /// Puts all files into a report that holds none yet, with their lines skipped.
    void SkipAll(const std::vector<PlannedFile>& files);

    [[nodiscard]] RunReport& Report() { return report; }

private:
    /// Whether all its lines were done.
    [[nodiscard]] bool RunFile(const PlannedFile& file, FileReport& fileReport);
    /// Whether the next line may run.
    [[nodiscard]] bool RunLine(const PlannedLine& line, LineReport& lineReport);
    void Describe(const PlannedLine& line, LineResult&& result, LineReport& lineReport) const;

    RunnerSettings settings;
    const Redactor& redactor;
    HostPlace place;
    /// Null where the next line wants a new one.
    std::unique_ptr<Worker> worker;
    RunReport report;
    std::vector<HWND> controlsWithSecrets;
    RunEnd end = RunEnd::Done;
};

}  // namespace dialwright::tools
