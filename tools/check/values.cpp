#include <regex>
#include <stdexcept>

#include "check/line_context.h"
#include "language/criterion.h"
#include "language/numbers.h"
#include "language/splitting.h"

namespace dialwright::tools {
namespace {

bool IsNumber(const std::wstring& text) {
    int ignored = 0;
    return TryParseInt(text, &ignored);
}

void WantNumber(const LineContext& line, const Token& token, const std::wstring& text, const wchar_t* what,
                Findings& findings) {
    if (IsNumber(text)) return;
    findings.push_back(line.At("DW201", token, std::wstring(what) + L" is no number of 32 bits: " + text));
}

void CheckPath(const LineContext& line, const Token& token, Findings& findings) {
    for (const std::wstring& segment : SplitHierarchyPath(token.text)) {
        int position = 0;
        if (TryParseInt(segment, &position) && position >= 1) continue;
        findings.push_back(
            line.At("DW206", token, L"a path has positions from 1 on, such as 2.1, not \"" + segment + L"\""));
        return;
    }
}

/// Selecting in a dropdown by position alone lets further numbers pass.
bool MayHaveMore(const CommandSpec& command) { return command.name.starts_with(L"Window.SelectDropdown.ByPosition"); }

void CheckCoordinates(const LineContext& line, const Token& token, std::size_t count, Findings& findings) {
    const auto pieces = SplitByComma(token.text);
    const bool right = MayHaveMore(*line.command) ? pieces.size() >= count : pieces.size() == count;
    if (!right) {
        findings.push_back(line.At("DW202", token,
                                   std::to_wstring(count) + L" numbers with commas between them are wanted, here are " +
                                       std::to_wstring(pieces.size())));
        return;
    }
    for (std::size_t i = 0; i < count; ++i) WantNumber(line, token, pieces[i], L"the coordinate", findings);
}

void CheckAtLeast0(const LineContext& line, const Token& token, std::string_view code, const wchar_t* what,
                   Findings& findings) {
    int value = 0;
    if (!TryParseInt(token.text, &value)) return WantNumber(line, token, token.text, what, findings);
    if (value < 0) findings.push_back(line.At(code, token, std::wstring(what) + L" must not be negative"));
}

void CheckState(const LineContext& line, const Token& token, Findings& findings) {
    int state = 0;
    if (!TryParseInt(token.text, &state)) return WantNumber(line, token, token.text, L"the state", findings);
    if (state != 0 && state != 1) findings.push_back(line.At("DW203", token, L"the state is 0 or 1"));
}

void CheckArgument(const LineContext& line, ArgumentKind kind, const Token& token, Findings& findings) {
    switch (kind) {
        case ArgumentKind::ControlId: return WantNumber(line, token, token.text, L"the control ID", findings);
        case ArgumentKind::ControlPath: return CheckPath(line, token, findings);
        case ArgumentKind::Rectangle: return CheckCoordinates(line, token, 4, findings);
        case ArgumentKind::Tolerance: return CheckAtLeast0(line, token, "DW207", L"the tolerance", findings);
        case ArgumentKind::DropdownIndex: return CheckAtLeast0(line, token, "DW208", L"the index", findings);
        case ArgumentKind::CheckState: return CheckState(line, token, findings);
        case ArgumentKind::Position:
        case ArgumentKind::Size: return CheckCoordinates(line, token, 2, findings);
        case ArgumentKind::Text:
        case ArgumentKind::ItemText: return;
    }
}

void CheckExpression(const LineContext& line, const Token& token, Findings& findings) {
    try {
        (void)CompileCriterion(token.text, kUsualStackBytes);
    } catch (const std::regex_error&) {
        findings.push_back(line.At(
            "DW205", token, L"no valid expression; put a backslash before what is meant literally, or use .NonRegex"));
    }
}

void CheckTimeout(const LineContext& line, Findings& findings) {
    if (!line.HasTimeout()) return;
    try {
        (void)ConvertToUnsigned(line.tokens.back().text);
    } catch (const std::logic_error&) {
        findings.push_back(
            line.At("DW204", line.tokens.back(), L"the last argument is the timeout and no number of 32 bits"));
    }
}

}  // namespace

void CheckValues(const LineContext& line, Findings& findings) {
    if (line.useRegex) {
        CheckExpression(line, line.tokens[1], findings);
        CheckExpression(line, line.tokens[2], findings);
    }
    const auto kinds = line.command->Arguments();
    for (std::size_t i = 0; i < kinds.size(); ++i) CheckArgument(line, kinds[i], line.tokens[3 + i], findings);
    CheckTimeout(line, findings);
}

}  // namespace dialwright::tools
