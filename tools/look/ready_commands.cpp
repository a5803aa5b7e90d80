#include "look/ready_commands.h"

#include "look/command_text.h"

namespace dialwright::tools {
namespace {

constexpr std::wstring_view kTimeout = L" 5000";

bool FitsInALine(const std::wstring& text) { return text.find_first_of(L"\r\n") == std::wstring::npos; }

bool CanBeNamed(const WindowInfo& window) { return FitsInALine(window.className) && FitsInALine(window.title); }

std::wstring Criteria(const WindowInfo& window) {
    return L" " + QuoteToken(EscapeForExpression(window.className)) + L" " +
           QuoteToken(EscapeForExpression(window.title));
}

/// A verb with its name for each way to name a control.
struct Verb {
    const wchar_t* byId;
    const wchar_t* byPath;
    const wchar_t* byRectangle;
    const wchar_t* argument;
};

std::vector<Verb> VerbsFor(ControlKind kind) {
    switch (kind) {
        case ControlKind::Edit:
        case ControlKind::Password:
            return {{L"Window.SetText", L"Window.SetText.Path", L"Window.SetText.Position", L" \"TEXT\""},
                    {L"Window.ClearText", L"Window.ClearText.Path", L"Window.ClearText.Position", L""}};
        case ControlKind::PushButton:
            return {{L"Window.ClickButton", L"Window.ClickButton.Path", L"Window.ClickButton.Position", L""}};
        case ControlKind::CheckBox:
            return {{L"Window.SetCheckbox", L"Window.SetCheckbox.ByPath", L"Window.SetCheckbox.ByPosition", L" 1"}};
        case ControlKind::RadioButton:
            return {{L"Window.SelectRadio", L"Window.SelectRadio.ByPath", L"Window.SelectRadio.ByPosition", L""}};
        case ControlKind::Dropdown:
            return {{L"Window.SelectDropdown.Index", L"Window.SelectDropdown.ByPath.Index",
                     L"Window.SelectDropdown.ByPosition.Index", L" 0"},
                    {L"Window.SelectDropdown.Value", L"Window.SelectDropdown.ByPath.Value",
                     L"Window.SelectDropdown.ByPosition.Value", L" \"ITEM\""}};
        case ControlKind::ReadOnlyEdit:
        case ControlKind::GroupBox:
        case ControlKind::Other: break;
    }
    return {};
}

/// What is asked for, or a path where that would find another control.
NamedBy WayToName(const ControlInfo& control, NamedBy wanted) {
    const bool finds = wanted == NamedBy::Id ? control.idIsOurs : control.tolerance.has_value();
    return finds ? wanted : NamedBy::Path;
}

std::wstring RectangleText(const Rectangle& r, int tolerance) {
    return std::to_wstring(r.left) + L"," + std::to_wstring(r.top) + L"," + std::to_wstring(r.right) + L"," +
           std::to_wstring(r.bottom) + L" " + std::to_wstring(tolerance);
}

/// The verb's name, the window and the control.
std::wstring Beginning(const WindowInfo& window, const ControlInfo& control, const Verb& verb, NamedBy way) {
    switch (way) {
        case NamedBy::Id: return verb.byId + Criteria(window) + L" " + std::to_wstring(control.id);
        case NamedBy::Rectangle:
            return verb.byRectangle + Criteria(window) + L" " +
                   RectangleText(control.rectangle, control.tolerance.value_or(0));
        case NamedBy::Path: break;
    }
    return verb.byPath + Criteria(window) + L" " + control.path;
}

}  // namespace

std::vector<std::wstring> ReadyCommands(const WindowInfo& window, const ControlInfo& control, NamedBy wanted) {
    std::vector<std::wstring> lines;
    if (!CanBeNamed(window)) return lines;
    const NamedBy way = WayToName(control, wanted);
    for (const Verb& verb : VerbsFor(control.kind)) {
        lines.push_back(Beginning(window, control, verb, way) + verb.argument + std::wstring(kTimeout));
    }
    return lines;
}

std::vector<std::wstring> ReadyWindowCommands(const WindowInfo& window) {
    std::vector<std::wstring> lines;
    if (!CanBeNamed(window)) return lines;
    for (const wchar_t* verb :
         {L"Window.BringToFront", L"Window.Minimize", L"Window.Maximize", L"Window.Restore", L"Window.Close"}) {
        lines.push_back(verb + Criteria(window) + std::wstring(kTimeout));
    }
    return lines;
}

}  // namespace dialwright::tools
