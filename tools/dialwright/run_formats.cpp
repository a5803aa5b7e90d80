#include "run_formats.h"

#include <array>
#include <cstdio>

#include "github.h"
#include "json_text.h"
#include "printable.h"

namespace dialwright::tools {
namespace {

const char* NameOf(LineStatus status) {
    switch (status) {
        case LineStatus::Ok: return "ok";
        case LineStatus::Failed: return "failed";
        case LineStatus::Planned: return "planned";
        case LineStatus::Skipped: break;
    }
    return "skipped";
}

std::string MillisecondsText(double milliseconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), milliseconds < 100 ? "%.1f" : "%.0f", milliseconds);
    return text.data();
}

std::string PrintableFile(const LineReport& line) { return Printable(line.file); }

std::string StatusText(const LineReport& line) {
    const std::string time = "  " + MillisecondsText(line.milliseconds) + " ms  ";
    switch (line.status) {
        case LineStatus::Ok: return "ok" + (line.note.empty() ? "" : " (" + Printable(line.note) + ")") + time;
        case LineStatus::Failed: return "FAIL" + time;
        case LineStatus::Planned: return "would run  ";
        case LineStatus::Skipped: break;
    }
    return "not run  ";
}

Json PrintableList(const std::vector<std::string>& texts) {
    Json list = Json::array();
    for (const std::string& text : texts) list.push_back(Printable(text));
    return list;
}

Json ToJson(const LineReport& line) {
    Json json = {{"line", line.line},
                 {"text", Printable(line.text)},
                 {"status", NameOf(line.status)},
                 {"milliseconds", line.milliseconds}};
    if (!line.note.empty()) json["note"] = Printable(line.note);
    if (line.status == LineStatus::Failed) {
        json["code"] = line.code;
        json["reason"] = Printable(line.reason);
        json["suggestion"] = Printable(line.suggestion);
        json["files"] = PrintableList(line.files);
    }
    json["messages"] = PrintableList(line.MessageLines());
    return json;
}

}  // namespace

std::string FormatLine(const LineReport& line) {
    std::string text =
        PrintableFile(line) + ":" + std::to_string(line.line) + "  " + StatusText(line) + Printable(line.text) + "\n";
    if (line.status != LineStatus::Failed) return text;
    text += "    " + line.code + ": " + Printable(line.reason) + "\n";
    if (!line.suggestion.empty()) text += "    " + Printable(line.suggestion) + "\n";
    for (const std::string& file : line.files) text += "    see " + Printable(file) + "\n";
    return text;
}

std::string FormatSum(const RunReport& report) {
    std::string text = std::to_string(report.Count(LineStatus::Ok)) + " done, " +
                       std::to_string(report.Count(LineStatus::Failed)) + " failed, " +
                       std::to_string(report.Count(LineStatus::Skipped)) + " not run; trace in " +
                       Printable(report.traceFolder);
    if (!report.traceIsOwn) text += " (it may be missing there: no folder of its own could be had)";
    return text + "\n";
}

std::string FormatRunAsJson(const RunReport& report) {
    Json files = Json::array();
    for (const FileReport& file : report.files) {
        Json lines = Json::array();
        for (const LineReport& line : file.lines) lines.push_back(ToJson(line));
        files.push_back({{"file", Printable(file.file)}, {"lines", lines}});
    }
    return JsonText({{"schema", 1},
                     {"exitCode", report.exitCode},
                     {"done", report.Count(LineStatus::Ok)},
                     {"failed", report.Count(LineStatus::Failed)},
                     {"skipped", report.Count(LineStatus::Skipped)},
                     {"traceFolder", Printable(report.traceFolder)},
                     {"traceMayBeMissing", !report.traceIsOwn},
                     {"files", files}});
}

std::string FormatLineForGithub(const LineReport& line) {
    if (line.status != LineStatus::Failed) return "";
    return GithubAnnotation({.level = "error",
                             .file = PrintableFile(line),
                             .line = line.line,
                             .title = line.code,
                             .text = Printable(line.text) + ": " + Printable(line.reason)});
}

}  // namespace dialwright::tools
