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

/// A verb with its two names: the one that takes an ID, and the one that takes a path.
struct Verb {
    const wchar_t* byId;
    const wchar_t* byPath;
    const wchar_t* argument;
};

std::vector<Verb> VerbsFor(ControlKind kind) {
    switch (kind) {
        case ControlKind::Edit:
        case ControlKind::Password:
            return {{L"Window.SetText", L"Window.SetText.Path", L" \"TEXT\""},
                    {L"Window.ClearText", L"Window.ClearText.Path", L""}};
        case ControlKind::PushButton: return {{L"Window.ClickButton", L"Window.ClickButton.Path", L""}};
        case ControlKind::CheckBox: return {{L"Window.SetCheckbox", L"Window.SetCheckbox.ByPath", L" 1"}};
        case ControlKind::RadioButton: return {{L"Window.SelectRadio", L"Window.SelectRadio.ByPath", L""}};
        case ControlKind::Dropdown:
            return {{L"Window.SelectDropdown.Index", L"Window.SelectDropdown.ByPath.Index", L" 0"},
                    {L"Window.SelectDropdown.Value", L"Window.SelectDropdown.ByPath.Value", L" \"ITEM\""}};
        case ControlKind::GroupBox:
        case ControlKind::Other: break;
    }
    return {};
}

}  // namespace

std::vector<std::wstring> ReadyCommands(const WindowInfo& window, const ControlInfo& control) {
    std::vector<std::wstring> lines;
    if (!CanBeNamed(window)) return lines;
    for (const Verb& verb : VerbsFor(control.kind)) {
        const std::wstring place = control.idIsOurs ? std::to_wstring(control.id) : control.path;
        lines.push_back((control.idIsOurs ? verb.byId : verb.byPath) + Criteria(window) + L" " + place + verb.argument +
                        std::wstring(kTimeout));
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
