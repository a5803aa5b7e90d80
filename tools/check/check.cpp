#include "check/check.h"

#include <algorithm>
#include <array>

#include "check/line_context.h"
#include "check/nearest_name.h"
#include "language/splitting.h"

namespace dialwright::tools {
namespace {

constexpr std::array kRules = {
    Rule{"DW101", "empty-script", "The script holds no command."},
    Rule{"DW102", "unknown-command", "No command has this name."},
    Rule{"DW103", "argument-count", "The command has too few or too many arguments."},
    Rule{"DW104", "empty-argument", "An argument is empty."},
    Rule{"DW105", "empty-command", "The line holds blanks only that the library does not skip."},
    Rule{"DW201", "unreadable-number", "A number cannot be read."},
    Rule{"DW202", "coordinate-count", "A rectangle, position or size has the wrong count of numbers."},
    Rule{"DW203", "check-state", "A check state is neither 0 nor 1."},
    Rule{"DW204", "unreadable-timeout", "The timeout cannot be read."},
    Rule{"DW205", "invalid-expression", "Class or title is no valid expression."},
    Rule{"DW206", "impossible-path", "A path has a segment that names no child."},
    Rule{"DW207", "impossible-tolerance", "A negative tolerance matches nothing."},
    Rule{"DW208", "impossible-index", "No item has a negative index."},
    Rule{"DW290", "zero-character", "The script holds a zero character, at which the library stops reading."},
    Rule{"DW301", "number-typed-in-clear", "The typed text is a number without a timeout: it is logged in clear."},
    Rule{"DW302", "blanks-before-masked-command", "Blanks before the name: the typed text is logged in clear."},
    Rule{"DW303", "several-words-unquoted", "Only one word of the text is hidden in the log."},
    Rule{"DW304", "expression-or-title", "The title reads like plain text, but holds what expressions give a meaning."},
    Rule{"DW305", "click-on-check-box", "A click on what an inspected window has as a check box or radio button."},
    Rule{"DW306", "trailing-characters", "What stands behind the number is ignored."},
    Rule{"DW307", "timeout-zero", "A timeout of 0 means 10,000 milliseconds."},
    Rule{"DW308", "quoted-masked-command", "A quoted name: the typed text is logged in clear."},
    Rule{"DW309", "extra-coordinates", "Numbers past the fourth are ignored."},
    Rule{"DW310", "literal-wildcard", "With .NonRegex a title such as .* is taken literally."},
    Rule{"DW380", "invalid-utf8", "Bytes that are no UTF-8 were read as U+FFFD."},
    Rule{"DW390", "comment", "Comments are known to the tools alone; the library refuses them."},
};

const CommandSpec* FindCommand(std::wstring_view name) {
    const auto found = std::ranges::find(kCommands, name, &CommandSpec::name);
    return found == kCommands.end() ? nullptr : &*found;
}

std::wstring CountText(const CommandSpec& spec, std::size_t tokens) {
    const std::size_t own = tokens - (std::min)(tokens, std::size_t{1});
    return std::wstring(spec.name) + L" takes " + std::to_wstring(spec.minTokens - 1) +
           L" arguments, and a timeout; here " + (own == 1 ? L"is " : L"are ") + std::to_wstring(own);
}

/// What the library's own validation refuses; false when it does.
bool CheckShape(LineContext& line, Findings& findings) {
    if (line.tokens.empty()) {
        findings.push_back({.code = "DW105", .line = line.number, .text = L"nothing but blanks of an unusual kind"});
        return false;
    }
    const std::wstring name = StripNonRegexSuffix(line.tokens[0].text, &line.useRegex);
    line.command = FindCommand(name);
    if (line.command == nullptr) {
        const std::wstring_view nearest = NearestCommandName(name);
        findings.push_back(line.At(
            "DW102", line.tokens[0],
            L"unknown command " + name + (nearest.empty() ? L"" : L"; did you mean " + std::wstring(nearest) + L"?")));
        return false;
    }
    if (line.tokens.size() < line.command->minTokens || line.tokens.size() > line.command->MaxTokens()) {
        const bool tooMany = line.tokens.size() > line.command->MaxTokens();
        const Token& place = tooMany ? line.tokens[line.command->MaxTokens()] : line.tokens[0];
        findings.push_back(line.At("DW103", place, CountText(*line.command, line.tokens.size())));
        return false;
    }
    const auto empty = std::ranges::find_if(line.tokens, [](const Token& token) { return token.text.empty(); });
    if (empty == line.tokens.end()) return true;
    findings.push_back(line.At("DW104", *empty, L"an argument must not be empty"));
    return false;
}

void CheckLine(const SourceLine& source, std::span<const KnownWindow> known, Findings& findings) {
    LineContext line{.number = source.number, .text = source.text, .tokens = TokenizeWithOffsets(source.text)};
    if (!CheckShape(line, findings)) return;
    CheckValues(line, findings);
    CheckHabits(line, findings);
    CheckKnownClicks(line, known, findings);
}

void NoteComments(const SourceText& source, Findings& findings) {
    const auto first = std::ranges::find_if(source.lines, &SourceLine::isComment);
    if (first == source.lines.end()) return;
    findings.push_back({.code = "DW390",
                        .line = first->number,
                        .text = L"a comment: check --emit prints the script as the library takes it"});
}

}  // namespace

std::vector<Finding> CheckScript(const SourceText& source, std::span<const KnownWindow> known,
                                 const std::function<void(std::size_t line)>& checked) {
    constexpr std::size_t kLinesBetween = 1000;
    Findings findings;
    bool hasCommand = false;
    for (const SourceLine& line : source.lines) {
        if (checked && line.number % kLinesBetween == 0) checked(line.number);
        if (line.isComment || SplitScriptLines(line.text).empty()) continue;
        hasCommand = true;
        CheckLine(line, known, findings);
    }
    if (!hasCommand) findings.push_back({.code = "DW101", .text = L"the script holds no command"});
    if (source.hadZero) findings.push_back({.code = "DW290", .text = L"the script holds a zero character"});
    if (source.hadInvalidBytes) findings.push_back({.code = "DW380", .text = L"the file is not all UTF-8"});
    NoteComments(source, findings);
    std::ranges::stable_sort(findings, {}, &Finding::line);
    return findings;
}

std::span<const Rule> AllRules() { return kRules; }

}  // namespace dialwright::tools
