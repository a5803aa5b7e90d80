#include "check_formats.h"

#include <functional>
#include <map>
#include <string_view>

#include "check/check.h"
#include "github.h"
#include "json_text.h"
#include "printable.h"

namespace dialwright::tools {
namespace {

using Files = std::vector<CheckedFile>;

const char* LevelName(const Finding& finding) { return finding.Level() == Severity::Error ? "error" : "warning"; }

std::string AsText(const Files& files) {
    std::string text;
    for (const CheckedFile& file : files) {
        for (const Finding& finding : file.findings) {
            text += file.file + ":" + std::to_string(finding.line) + ":" + std::to_string(finding.column) + ": " +
                    LevelName(finding) + " " + std::string(finding.code) + ": " + Printable(finding.text) + "\n";
        }
    }
    return text;
}

std::string AsGithub(const Files& files) {
    std::string text;
    for (const CheckedFile& file : files) {
        for (const Finding& finding : file.findings) {
            text += GithubAnnotation({.level = LevelName(finding),
                                      .file = file.file,
                                      .line = finding.line,
                                      .column = finding.column,
                                      .title = std::string(finding.code),
                                      .text = Printable(finding.text)});
        }
    }
    return text;
}

std::string AsJson(const Files& files) {
    Json all = {{"schema", 1}, {"files", Json::array()}};
    for (const CheckedFile& file : files) {
        Json findings = Json::array();
        for (const Finding& finding : file.findings) {
            findings.push_back({{"code", finding.code},
                                {"severity", LevelName(finding)},
                                {"line", finding.line},
                                {"column", finding.column},
                                {"length", finding.length},
                                {"text", Printable(finding.text)}});
        }
        all["files"].push_back({{"file", file.file}, {"findings", findings}});
    }
    return JsonText(all);
}

Json SarifRules() {
    Json rules = Json::array();
    for (const Rule& rule : AllRules()) {
        rules.push_back({{"id", rule.code}, {"name", rule.name}, {"shortDescription", {{"text", rule.summary}}}});
    }
    return rules;
}

/// A path as a URI: its separators, and what a URI keeps for itself, written so; the rest stays as it is in UTF-8.
std::string UriOf(const std::string& file) {
    const bool hasDrive = file.size() > 2 && file[1] == ':';
    std::string uri = hasDrive ? "file:///" : "";
    for (const char c : Printable(file)) {
        constexpr std::string_view kReserved = " %#?[]<>\"^`{|}";
        if (c == '\\') {
            uri.push_back('/');
        } else if (kReserved.find(c) != std::string_view::npos) {
            constexpr std::string_view kHex = "0123456789ABCDEF";
            const auto byte = static_cast<unsigned char>(c);
            uri += {'%', kHex[byte >> 4U], kHex[byte & 0xFU]};
        } else {
            uri.push_back(c);
        }
    }
    return uri;
}

Json SarifResult(const CheckedFile& file, const Finding& finding) {
    const Json region = {
        {"startLine", finding.line}, {"startColumn", finding.column}, {"endColumn", finding.column + finding.length}};
    return {{"ruleId", finding.code},
            {"level", LevelName(finding)},
            {"message", {{"text", Printable(finding.text)}}},
            {"locations", Json::array({{{"physicalLocation",
                                         {{"artifactLocation", {{"uri", UriOf(file.file)}}}, {"region", region}}}}})}};
}

std::string AsSarif(const Files& files) {
    Json results = Json::array();
    for (const CheckedFile& file : files) {
        for (const Finding& finding : file.findings) results.push_back(SarifResult(file, finding));
    }
    const Json driver = {{"name", "dialwright"}, {"version", DIALWRIGHT_VERSION}, {"rules", SarifRules()}};
    const Json run = {{"tool", {{"driver", driver}}}, {"columnKind", "utf16CodeUnits"}, {"results", results}};
    return JsonText({{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                     {"version", "2.1.0"},
                     {"runs", Json::array({run})}});
}

}  // namespace

std::string FormatFindings(const std::string& format, const std::vector<CheckedFile>& files) {
    static const std::map<std::string, std::function<std::string(const Files&)>> kFormats = {
        {"text", &AsText}, {"github", &AsGithub}, {"json", &AsJson}, {"sarif", &AsSarif}};
    return kFormats.at(format)(files);
}

}  // namespace dialwright::tools
