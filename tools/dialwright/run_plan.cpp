#include "run_plan.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

#include "check/check.h"
#include "check/source_text.h"
#include "check_formats.h"
#include "input.h"
#include "platform/windows.h"
#include "printable.h"

namespace dialwright::tools {
namespace {

struct Script {
    std::string name;
    SourceText source;
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
    if (std::ranges::count(options.files, "-") > 1) throw Refused("standard input can be read once only");
    for (const std::string& file : options.files) {
        scripts.push_back({.name = file == "-" ? "<stdin>" : file, .source = ReadSource(ReadOrRefuse(file))});
    }
    if (scripts.empty()) throw Refused("run wants a script, - or -c; see dialwright run --help");
    const bool partly = options.range.from > 1 || options.range.to != LineRange().to;
    if (partly && scripts.size() > 1) throw Refused("--from and --to are for one script alone");
    return scripts;
}

/// Prints what check finds, but for warnings; throws where that must fail.
void CheckFirst(const std::vector<Script>& scripts, bool annotates) {
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
    if (annotates) std::fputs(FormatFindings("github", files).c_str(), stderr);
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

void HideSecrets(const SecretValues& values, Redactor& redactor) {
    for (const auto& [name, value] : values) {
        redactor.Hide(value);
        if (value.size() >= kLeastHiddenUnits) continue;
        std::fprintf(stderr,
                     "dialwright: warning: the value of %s has fewer than %zu characters and is not looked for\n",
                     Printable(name).c_str(), kLeastHiddenUnits);
    }
}

void Complain(const std::vector<PlanProblem>& problems) {
    for (const PlanProblem& problem : problems) {
        std::fprintf(stderr, "%s:%zu:%zu: error: %s\n", problem.file.c_str(), problem.line, problem.column,
                     Printable(problem.text).c_str());
    }
    if (!problems.empty()) throw Refused("nothing was carried out");
}

bool HoldsNothing(const std::vector<PlannedFile>& files) {
    return std::ranges::all_of(files, [](const PlannedFile& file) { return file.lines.empty(); });
}

}  // namespace

RunPlan MakePlan(const RunOptions& options, bool annotates) {
    const std::vector<Script> scripts = ReadScripts(options);
    if (!options.noCheck) CheckFirst(scripts, annotates);
    const SecretSources secrets = ReadSecretSources(options);
    RunPlan plan;
    // Also what no line types: it may stand in a window all the same.
    HideSecrets(secrets.secrets, plan.redactor);
    std::vector<PlanProblem> problems;
    for (const Script& script : scripts) {
        plan.files.push_back(PlanScript(script.name, script.source, options.range, secrets, problems));
    }
    Complain(problems);
    if (HoldsNothing(plan.files)) throw Refused("there is no line to carry out");
    for (const PlannedFile& file : plan.files) {
        for (const PlannedLine& line : file.lines) {
            for (const std::wstring& value : line.secrets) plan.redactor.Hide(value);
            if (!line.variable.empty()) ::SetEnvironmentVariableW(line.variable.c_str(), nullptr);
        }
    }
    return plan;
}

}  // namespace dialwright::tools
