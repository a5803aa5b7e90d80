#include "verify/report.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>

#include <dialwright/dialwright.h>

namespace dialwright::verify {
namespace {

using tools::Json;

double Rounded(double milliseconds) { return static_cast<double>(static_cast<long long>(milliseconds * 10)) / 10; }

Json ToJson(const Step& step, const Mask& mask) {
    return {{"name", mask(step.name)},
            {"result", NameOf(step.verdict.result)},
            {"milliseconds", Rounded(step.milliseconds)},
            {"found", mask(step.verdict.found)}};
}

Json ToJson(const CheckReport& check, const Mask& mask) {
    Json steps = Json::array();
    for (const Step& step : check.steps) steps.push_back(ToJson(step, mask));
    Json trace = Json::array();
    for (const std::string& line : check.trace) trace.push_back(mask(line));
    return {{"name", check.name},     {"result", NameOf(check.result)},
            {"why", mask(check.why)}, {"milliseconds", Rounded(check.milliseconds)},
            {"steps", steps},         {"trace", trace}};
}

std::string TimeNow() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm utc{};
    ::gmtime_s(&utc, &now);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text.data();
}

int CountOf(const Json& runs, const char* result) {
    int count = 0;
    for (const Json& run : runs) {
        for (const Json& check : run["checks"]) count += check["result"] == result ? 1 : 0;
    }
    return count;
}

/// A report of Wine must never be taken for one of Windows, nor half a report for a whole one.
std::string Meaning(const Json& runs, bool isWhole, int failed) {
    std::string platforms;
    bool isWindows = true;
    for (const Json& run : runs) {
        platforms += (platforms.empty() ? "" : " and ") + run["architecture"].get<std::string>();
        isWindows = isWindows && run["machine"]["isWindows"].get<bool>();
    }
    const std::string where = platforms + " on " + runs.front()["platform"].get<std::string>();
    std::string text = failed == 0 ? "no failure: " + where : "something failed: " + where;
    if (!isWhole) text += "; not all was looked at";
    if (!isWindows) text += "; it says nothing of real Windows";
    return text;
}

}  // namespace

Json ToJson(const Run& run, const Mask& mask) {
    Json checks = Json::array();
    for (const CheckReport& check : run.checks) checks.push_back(ToJson(check, mask));
    return {{"architecture", run.architecture},
            {"version", DIALWRIGHT_VERSION_STRING},
            {"platform", run.machine.platform},
            {"quick", run.quick},
            {"machine", run.machine.json},
            {"checks", checks},
            {"doctor", run.doctor}};
}

std::string Headline(const Run& run) {
    return "Dialwright " DIALWRIGHT_VERSION_STRING " " + run.architecture + " on " + run.machine.platform + "\n";
}

std::string LineOf(const CheckReport& check, const Mask& mask) {
    constexpr int kPassedWidth = 7;
    std::array<char, 64> begin{};
    std::snprintf(begin.data(), begin.size(), "%-*s  %-9s  %7.1f s  ", kPassedWidth,
                  check.result == Result::Failed ? "FAILED" : NameOf(check.result), check.name.c_str(),
                  check.milliseconds / 1000);
    std::string text = begin.data();
    int skipped = 0;
    for (const Step& step : check.steps) skipped += step.verdict.result == Result::Skipped ? 1 : 0;
    text += std::to_string(check.steps.size()) + " steps";
    if (skipped > 0) text += ", " + std::to_string(skipped) + " skipped";
    if (!check.why.empty()) text += "; " + mask(check.why);
    return text + "\n";
}

Json ReportOf(const Findings& findings) {
    const int failed = CountOf(findings.runs, "failed") + findings.broken;
    const Json summary = {{"passed", CountOf(findings.runs, "passed")},
                          {"failed", failed},
                          {"skipped", CountOf(findings.runs, "skipped")},
                          {"whole", findings.isWhole},
                          {"meaning", Meaning(findings.runs, findings.isWhole, failed)}};
    return {
        {"schema", 1}, {"made", TimeNow()}, {"runs", findings.runs}, {"notes", findings.notes}, {"summary", summary}};
}

std::string SumText(const Json& report) {
    const Json& sum = report["summary"];
    return std::to_string(sum["passed"].get<int>()) + " passed, " + std::to_string(sum["failed"].get<int>()) +
           " failed, " + std::to_string(sum["skipped"].get<int>()) + " skipped; " + sum["meaning"].get<std::string>() +
           "\n";
}

bool HasFailed(const Json& report) { return report["summary"]["failed"] != 0; }

}  // namespace dialwright::verify
