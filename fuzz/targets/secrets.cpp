#include "run/secrets.h"

#include <algorithm>

#include "check/source_text.h"
#include "pieces.h"
#include "platform/text_encoding.h"
#include "run/command_line.h"
#include "run/plan.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

using namespace tools;

/// Not a value that our own words hold by chance.
bool IsTelling(const std::wstring& value) { return value.size() >= kLeastHiddenUnits && !Contains(value, L"*"); }

void CheckFilled(const PlannedLine& line) {
    for (const std::wstring& value : line.secrets) {
        const CommandLine read = ReadCommandLine(line.text);
        Require(read.HasText() && read.tokens[read.textToken].text == value, "a filled line types the very value");
        Require(read.HasTimeout(), "a filled line has a timeout, as the log would show a number else");
    }
}

void CheckPlan(const std::string& script, const SecretSources& sources) {
    std::vector<PlanProblem> problems;
    const PlannedFile plan = PlanScript("script", ReadSource(script), {}, sources, problems);
    Redactor redactor;
    for (const auto& [name, value] : sources.secrets) redactor.Hide(value);
    for (const PlannedLine& line : plan.lines) {
        CheckFilled(line);
        for (const std::wstring& value : line.secrets) {
            const bool isWritten = Contains(Wide(script), value);
            Require(isWritten || !IsTelling(value) || !Contains(line.shown, value), "what people see has no value");
        }
    }
    for (const PlanProblem& problem : problems) {
        Require(problem.line >= 1 && problem.column >= 1 && !problem.text.empty(), "a problem has a place and a text");
    }
}

void CheckRedactor(const SecretValues& values, const std::string& text) {
    Redactor redactor;
    for (const auto& [name, value] : values) redactor.Hide(value);
    const std::string clean = redactor.Clean(text);
    const std::string part = redactor.CleanPart(Wide(text));
    for (const auto& [name, value] : values) {
        if (!IsTelling(value)) continue;
        Require(!Contains(clean, ToUtf8(value)), "no text of ours holds a hidden value");
        Require(!Contains(part, ToUtf8(value)), "nor does a part of one");
        const std::string cut = redactor.CleanPart(value.substr(0, value.size() - 1));
        Require(value.size() == kLeastHiddenUnits || !cut.starts_with(ToUtf8(value.substr(0, value.size() - 1))),
                "the beginning of a value is hidden, too");
    }
}

}  // namespace

void Try(Input input) {
    SecretSources sources;
    const std::string file = "A=" + input.Bytes(16) + "\nB_2=" + input.Bytes(16) + "\n" + input.Bytes(30);
    try {
        sources.secrets = ReadSecretValues(file);
    } catch (const std::runtime_error& error) {
        Require(std::string_view(error.what()).starts_with("line "), "a refused file is told by its line");
        return;
    }
    const std::string script = input.RestAsBytes();
    CheckPlan(script, sources);
    CheckPlan("Window.SetText c t 1 ${secret:A}" + script, sources);
    CheckPlan("Window.SetText.Path.NonRegex c \"a b\" 1.2 \"${secret:B_2}\" 500\n" + script, sources);
    const std::string first = sources.secrets.empty() ? "" : ToUtf8(sources.secrets.begin()->second);
    CheckRedactor(sources.secrets, script + first + script);
}

}  // namespace dialwright::fuzz
