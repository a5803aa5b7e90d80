#include <algorithm>
#include <cwctype>

#include "check/line_context.h"
#include "language/numbers.h"
#include "language/splitting.h"

namespace dialwright::tools {
namespace {

bool TypesText(const CommandSpec& command) {
    return std::ranges::find(command.Arguments(), ArgumentKind::Text) != command.Arguments().end();
}

/// The library hides the typed text only in a line that begins with the command's name, and takes a last token that
/// reads as a number for the timeout.
void CheckMasking(const LineContext& line, Findings& findings) {
    if (!TypesText(*line.command)) return;
    const Token& last = line.tokens.back();
    if (!line.HasTimeout() && ReadsAsInteger(last.text)) {
        findings.push_back(line.At(
            "DW301", last, L"a number as the text, and no timeout: the log shows it; write the timeout behind it"));
    }
    if (line.tokens[0].quoted) {
        findings.push_back(line.At("DW308", line.tokens[0], L"a quoted name: the log shows the typed text"));
    } else if (line.tokens[0].offset != 0) {
        findings.push_back(line.At("DW302", line.tokens[0], L"blanks before the name: the log shows the typed text"));
    }
    if (line.HasTimeout() && !ReadsAsInteger(last.text)) {
        findings.push_back(line.At(
            "DW303", last, L"is this part of the text? Then quote the whole text; the log hides one word only"));
    }
}

/// Digits with something behind them. `text` reads as a number.
bool HasTrailingCharacters(const std::wstring& text) {
    std::size_t at = text.find_first_not_of(L" \t");
    if (at == std::wstring::npos) return false;
    if (text[at] == L'-' || text[at] == L'+') ++at;
    const std::size_t end = text.find_first_not_of(L"0123456789", at);
    return end != std::wstring::npos && end > at;
}

bool IsOneNumber(ArgumentKind kind) {
    return kind == ArgumentKind::ControlId || kind == ArgumentKind::Tolerance || kind == ArgumentKind::DropdownIndex ||
           kind == ArgumentKind::CheckState;
}

void CheckNumbers(const LineContext& line, Findings& findings) {
    const auto kinds = line.command->Arguments();
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const Token& token = line.tokens[3 + i];
        int value = 0;
        if (IsOneNumber(kinds[i]) && TryParseInt(token.text, &value) && HasTrailingCharacters(token.text)) {
            findings.push_back(line.At("DW306", token, token.text + L" is read as " + std::to_wstring(value)));
        }
        if (kinds[i] == ArgumentKind::Rectangle && SplitByComma(token.text).size() > 4) {
            findings.push_back(line.At("DW309", token, L"numbers past the fourth are ignored"));
        }
    }
}

void CheckTimeoutHabits(const LineContext& line, Findings& findings) {
    if (!line.HasTimeout()) return;
    const Token& last = line.tokens.back();
    if (last.text == L"0") findings.push_back(line.At("DW307", last, L"0 means 10,000 milliseconds"));
    if (ReadsAsInteger(last.text) && HasTrailingCharacters(last.text)) {
        findings.push_back(line.At("DW306", last, L"what stands behind the timeout's digits is ignored"));
    }
}

/// Brackets and the like among words, with nothing that only an expression would have.
bool LooksLiteral(const std::wstring& title) {
    constexpr std::wstring_view kSpecial = L"()[]{}+*?^$|";
    if (title.find_first_of(kSpecial) == std::wstring::npos) return false;
    for (const wchar_t* sign : {L".*", L".+", L"\\", L"[^", L".?", L"^", L"$", L"|"}) {
        if (title.find(sign) != std::wstring::npos) return false;
    }
    return true;
}

void CheckTitle(const LineContext& line, Findings& findings) {
    const Token& title = line.tokens[2];
    if (line.useRegex && LooksLiteral(title.text)) {
        findings.push_back(line.At(
            "DW304", title, L"if this is plain text, put a backslash before its brackets and signs, or use .NonRegex"));
    }
    if (!line.useRegex && title.text.find(L".*") != std::wstring::npos) {
        findings.push_back(line.At("DW310", title, L"with .NonRegex this is looked for letter by letter"));
    }
}

}  // namespace

void CheckHabits(const LineContext& line, Findings& findings) {
    CheckMasking(line, findings);
    CheckNumbers(line, findings);
    CheckTimeoutHabits(line, findings);
    CheckTitle(line, findings);
}

}  // namespace dialwright::tools
