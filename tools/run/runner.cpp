#include "run/runner.h"

#include <algorithm>
#include <utility>

#include "platform/text_encoding.h"
#include "run/suggestion.h"

namespace dialwright::tools {
namespace {

std::string Utf8Of(const std::filesystem::path& path) { return ToUtf8(path.wstring()); }

RunEnd EndOf(Ending ending) {
    switch (ending) {
        case Ending::NoAnswer: return RunEnd::NoAnswer;
        case Ending::WorkerEnded: return RunEnd::WorkerEnded;
        case Ending::Interrupted: return RunEnd::Interrupted;
        case Ending::Done:
        case Ending::Failed:
        case Ending::TimedOut:
        case Ending::DialogOpened: break;
    }
    return RunEnd::LineFailed;
}

bool NeedsNewWorker(Ending ending) { return ending != Ending::Done && ending != Ending::Failed; }

}  // namespace

FileReport ReportOf(const PlannedFile& file, LineStatus status, const Redactor& redactor) {
    FileReport report{.file = file.name, .lines = {}};
    for (const PlannedLine& planned : file.lines) {
        LineReport& line = report.lines.emplace_back();
        line.file = file.name;
        line.line = planned.number;
        line.text = redactor.Clean(planned.shown);
        line.status = status;
    }
    return report;
}

Runner::Runner(RunnerSettings runnerSettings, const Redactor& wordsToHide)
    : settings(std::move(runnerSettings)),
      redactor(wordsToHide),
      place(settings.host, settings.workFolder),
      worker(std::make_unique<Worker>(place, settings.library)) {
    report.traceFolder = Utf8Of(place.TraceFolder());
    report.traceIsOwn = place.IsOwn();
}

DWORD Runner::Launch(const std::wstring& program, const std::wstring& arguments) {
    worker->Send({.kind = RequestKind::Launch, .first = program, .second = arguments});
    while (!worker->HasEnded()) {
        const auto line = worker->NextLine(INFINITE);
        const auto answer = line ? ReadAnswer(worker->Word(), *line) : std::nullopt;
        if (answer) return answer->result == 1 ? answer->value : 0;
    }
    return 0;
}

RunEnd Runner::Run(const std::vector<PlannedFile>& files) {
    // All of them first: what is never reached is in the report too.
    const std::size_t first = report.files.size();
    for (const PlannedFile& file : files) report.files.push_back(ReportOf(file, LineStatus::Skipped, redactor));
    bool goesOn = true;
    for (std::size_t i = 0; i < files.size() && goesOn; ++i) {
        const bool allDone = RunFile(files[i], report.files[first + i]);
        goesOn = (allDone || settings.keepGoing) && end != RunEnd::Interrupted;
    }
    return end;
}

void Runner::SkipAll(const std::vector<PlannedFile>& files) {
    if (!report.files.empty()) return;
    for (const PlannedFile& file : files) report.files.push_back(ReportOf(file, LineStatus::Skipped, redactor));
}

bool Runner::RunFile(const PlannedFile& file, FileReport& fileReport) {
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        if (settings.lines.isInterrupted && settings.lines.isInterrupted()) {
            end = RunEnd::Interrupted;
            return false;
        }
        settings.lineBegins(fileReport.lines[i]);
        const bool goesOn = RunLine(file.lines[i], fileReport.lines[i]);
        settings.lineEnded(fileReport.lines[i]);
        if (!goesOn) return false;
    }
    return true;
}

bool Runner::RunLine(const PlannedLine& line, LineReport& lineReport) {
    if (worker == nullptr) worker = std::make_unique<Worker>(place, settings.library);
    LineResult result = LineRunner(settings.lines).Run(*worker, line.text);
    const Ending ending = result.ending;
    const bool failed = !result.reason.code.empty();
    if (!line.secrets.empty()) controlsWithSecrets.push_back(result.control);
    Describe(line, std::move(result), lineReport);
    // A call that lived on would post its second click when the dialog has gone, and open it again.
    if (NeedsNewWorker(ending)) worker.reset();
    if (failed) end = (std::max)(end, EndOf(ending));
    return !failed;
}

void Runner::Describe(const PlannedLine& line, LineResult&& result, LineReport& lineReport) const {
    const bool failed = !result.reason.code.empty();
    lineReport.status = failed ? LineStatus::Failed : LineStatus::Ok;
    lineReport.milliseconds = result.milliseconds;
    for (const LogMessage& message : result.messages) {
        // The library's own copy of the line; ours is masked where it is not.
        const bool isAnnouncement = message.tag == "DialogScriptManager::ExecuteScript";
        if (!isAnnouncement) lineReport.messages.push_back(redactor.Clean(message.tag + ": " + message.text));
    }
    if (result.ending == Ending::DialogOpened && !failed) {
        lineReport.note = "opened \"" + redactor.Clean(result.dialog) + "\"";
    }
    if (!failed) return;
    lineReport.code = result.reason.code;
    lineReport.reason = redactor.Clean(result.reason.sentence);
    lineReport.suggestion =
        redactor.Clean(Suggest(ReadCommandLine(line.text), result.reason, result.window, result.control));
    if (settings.saveEvidence) lineReport.files = settings.saveEvidence(lineReport, result, controlsWithSecrets);
}

}  // namespace dialwright::tools
