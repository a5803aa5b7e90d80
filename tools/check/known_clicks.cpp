#include <algorithm>
#include <optional>
#include <regex>

#include "check/line_context.h"
#include "language/numbers.h"
#include "language/splitting.h"
#include "match/name_matcher.h"

namespace dialwright::tools {
namespace {

constexpr std::size_t kFirstArgument = 3;

using Numbers = std::vector<int>;

/// Nothing where a piece is no number.
std::optional<Numbers> NumbersIn(const std::vector<std::wstring>& pieces) {
    Numbers numbers;
    for (const std::wstring& piece : pieces) {
        int number = 0;
        if (!TryParseInt(piece, &number)) return std::nullopt;
        numbers.push_back(number);
    }
    return numbers;
}

bool IsAtPath(const KnownControl& control, const std::wstring& path) {
    const auto wanted = NumbersIn(SplitHierarchyPath(path));
    return wanted && wanted == NumbersIn(SplitHierarchyPath(control.path));
}

bool HasId(const KnownControl& control, const std::wstring& text) {
    int id = 0;
    return control.idFindsIt && TryParseInt(text, &id) && control.id == id;
}

bool IsAtPlace(const KnownControl& control, const std::wstring& place, const std::wstring& toleranceText) {
    const auto edges = NumbersIn(SplitByComma(place));
    int tolerance = 0;
    if (!edges || edges->size() != 4 || !TryParseInt(toleranceText, &tolerance)) return false;
    const Rectangle target{.left = (*edges)[0], .top = (*edges)[1], .right = (*edges)[2], .bottom = (*edges)[3]};
    return EdgesWithinTolerance(control.rectangle, target, tolerance);
}

bool IsMeant(const LineContext& line, const KnownControl& control) {
    const std::wstring& argument = line.tokens[kFirstArgument].text;
    switch (line.command->Arguments()[0]) {
        case ArgumentKind::ControlId: return HasId(control, argument);
        case ArgumentKind::ControlPath: return IsAtPath(control, argument);
        case ArgumentKind::Rectangle: return IsAtPlace(control, argument, line.tokens[kFirstArgument + 1].text);
        default: return false;
    }
}

/// A criterion that is no expression, or explodes on this title, means no window.
bool IsMeant(const LineContext& line, const KnownWindow& window) {
    try {
        const NameMatcher matcher(
            {.className = line.tokens[1].text, .title = line.tokens[2].text, .literal = !line.useRegex},
            kUsualStackBytes);
        return matcher.Takes(window.className, window.title);
    } catch (const std::regex_error&) {
        return false;
    }
}

KnownKind KindOfClicked(const LineContext& line, const KnownWindow& window) {
    if (!IsMeant(line, window)) return KnownKind::Other;
    const auto clicked =
        std::ranges::find_if(window.controls, [&](const KnownControl& control) { return IsMeant(line, control); });
    return clicked == window.controls.end() ? KnownKind::Other : clicked->kind;
}

/// The command for the same control, named in the same way.
std::wstring Instead(const LineContext& line, std::wstring_view verb) {
    constexpr std::wstring_view kClick = L"Window.ClickButton.";
    const std::wstring_view name = line.command->name;
    return std::wstring(verb) +
           (name.size() > kClick.size() ? L".By" + std::wstring(name.substr(kClick.size())) : std::wstring());
}

}  // namespace

void CheckKnownClicks(const LineContext& line, std::span<const KnownWindow> known, Findings& findings) {
    if (!line.command->name.starts_with(L"Window.ClickButton")) return;
    for (const KnownWindow& window : known) {
        const KnownKind kind = KindOfClicked(line, window);
        if (kind == KnownKind::Other) continue;
        const Token& place = line.tokens[kFirstArgument];
        findings.push_back(
            kind == KnownKind::CheckBox
                ? line.At("DW305", place,
                          L"a click on a check box leaves it as it was; use " + Instead(line, L"Window.SetCheckbox"))
                : line.At("DW305", place,
                          L"a click on a radio button acts twice; use " + Instead(line, L"Window.SelectRadio")));
        return;
    }
}

}  // namespace dialwright::tools
