#include "verify/also.h"

#include "check/source_text.h"
#include "dialwright/input.h"
#include "platform/text_encoding.h"
#include "verify/child_program.h"

namespace dialwright::verify {
namespace {

/// More than all of its checks together may take.
constexpr DWORD kLimitMs = 30 * 60 * 1000;

std::vector<std::wstring> ArgumentsFor(const Options& options, const std::filesystem::path& report) {
    std::vector<std::wstring> arguments = {L"--json", report.wstring()};
    for (const std::string& name : options.only) arguments.insert(arguments.end(), {L"--only", tools::Wide(name)});
    if (options.quick) arguments.emplace_back(L"--quick");
    if (options.limit) arguments.insert(arguments.end(), {L"--limit", std::to_wstring(*options.limit)});
    return arguments;
}

void Take(const std::filesystem::path& report, Findings& findings) {
    const auto text = tools::ReadInput(ToUtf8(report.wstring()));
    tools::Json other = tools::Json::parse(text.value_or(""), nullptr, false);
    if (other.is_discarded()) {
        findings.notes.emplace_back("the program of --also wrote no report");
        ++findings.broken;
        return;
    }
    for (tools::Json& run : other["runs"]) findings.runs.push_back(std::move(run));
}

}  // namespace

void AddOther(const Options& options, const Setting& setting, const Mask& mask, Findings& findings) {
    if (options.also.empty()) return;
    const std::filesystem::path report = setting.work / "also.json";
    try {
        ChildProgram other({.program = tools::FilePath(options.also), .arguments = ArgumentsFor(options, report)});
        while (const auto line = other.ReadLine(kLimitMs)) tools::WriteOutput(*line + "\n");
        (void)other.WaitForEnd(kLimitMs);
        Take(report, findings);
    } catch (const StartError& error) {
        // Windows 10 on ARM64 emulates no x64.
        findings.notes.push_back(mask(error.what()));
        findings.isWhole = false;
    }
}

}  // namespace dialwright::verify
