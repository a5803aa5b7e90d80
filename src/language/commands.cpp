#include "language/commands.h"

#include <algorithm>

namespace dialwright {

namespace {

using enum ArgumentKind;

constexpr CommandSpec Command(std::wstring_view name, std::initializer_list<ArgumentKind> arguments) {
    CommandSpec spec{.name = name, .minTokens = 3 + arguments.size(), .argumentKinds = {}};
    std::copy(arguments.begin(), arguments.end(), spec.argumentKinds.begin());
    return spec;
}

}  // namespace

constexpr std::array<CommandSpec, kCommandCount> kCommands = {
    Command(L"Window.SetText", {ControlId, Text}),
    Command(L"Window.SetText.Path", {ControlPath, Text}),
    Command(L"Window.SetText.Position", {Rectangle, Tolerance, Text}),
    Command(L"Window.ClickButton", {ControlId}),
    Command(L"Window.ClickButton.Path", {ControlPath}),
    Command(L"Window.ClickButton.Position", {Rectangle, Tolerance}),
    Command(L"Window.SelectDropdown.Value", {ControlId, ItemText}),
    Command(L"Window.SelectDropdown.Index", {ControlId, DropdownIndex}),
    Command(L"Window.SelectDropdown.ByPath.Value", {ControlPath, ItemText}),
    Command(L"Window.SelectDropdown.ByPath.Index", {ControlPath, DropdownIndex}),
    Command(L"Window.SelectDropdown.ByPosition.Value", {Rectangle, Tolerance, ItemText}),
    Command(L"Window.SelectDropdown.ByPosition.Index", {Rectangle, Tolerance, DropdownIndex}),
    Command(L"Window.ClearText", {ControlId}),
    Command(L"Window.ClearText.Path", {ControlPath}),
    Command(L"Window.ClearText.Position", {Rectangle, Tolerance}),
    Command(L"Window.Move", {Position, Size}),
    Command(L"Window.BringToFront", {}),
    Command(L"Window.Minimize", {}),
    Command(L"Window.Maximize", {}),
    Command(L"Window.Restore", {}),
    Command(L"Window.Close", {}),
    Command(L"Window.SelectRadio", {ControlId}),
    Command(L"Window.SelectRadio.ByPath", {ControlPath}),
    Command(L"Window.SelectRadio.ByPosition", {Rectangle, Tolerance}),
    Command(L"Window.SetCheckbox", {ControlId, CheckState}),
    Command(L"Window.SetCheckbox.ByPath", {ControlPath, CheckState}),
    Command(L"Window.SetCheckbox.ByPosition", {Rectangle, Tolerance, CheckState}),
};

std::wstring StripNonRegexSuffix(std::wstring name, bool* useRegex) {
    constexpr std::wstring_view kSuffix = L".NonRegex";
    *useRegex = true;
    if (name.size() > kSuffix.size() && name.ends_with(kSuffix)) {
        *useRegex = false;
        name.resize(name.size() - kSuffix.size());
    }
    return name;
}

}  // namespace dialwright
