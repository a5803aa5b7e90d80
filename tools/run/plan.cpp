#include "run/plan.h"

#include <utility>

#include "language/splitting.h"
#include "run/command_line.h"

namespace dialwright::tools {

PlannedFile PlanScript(std::string name, const SourceText& source, const LineRange& range, const SecretSources& secrets,
                       std::vector<PlanProblem>& problems) {
    PlannedFile planned{.name = std::move(name), .lines = {}};
    for (const SourceLine& line : source.lines) {
        const bool isCommand = !line.isComment && !SplitScriptLines(line.text).empty();
        if (!isCommand || line.number < range.from || line.number > range.to) continue;
        FilledLine filled = FillSecrets(line.text, secrets);
        if (!filled.problem.empty()) {
            problems.push_back({.file = planned.name,
                                .line = line.number,
                                .column = filled.offset + 1,
                                .text = std::move(filled.problem)});
            continue;
        }
        planned.lines.push_back({.number = line.number,
                                 .text = std::move(filled.text),
                                 .shown = MaskedLine(line.text),
                                 .secrets = std::move(filled.used),
                                 .variable = std::move(filled.variable)});
    }
    return planned;
}

}  // namespace dialwright::tools
