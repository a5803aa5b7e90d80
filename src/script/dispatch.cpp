#include <algorithm>
#include <array>
#include <string_view>

#include "language/commands.h"
#include "language/numbers.h"
#include "script/dialog_script_manager.h"
#include "script/exception_boundary.h"
#include "trace/trace.h"

namespace dialwright {

DialogScriptManager::Handler DialogScriptManager::FindHandler(const std::wstring& name) {
    struct Row {
        std::wstring_view name;
        Handler handler;
    };
    using Manager = DialogScriptManager;
    static constexpr std::array<Row, kCommandCount> kRows = {{
        {L"Window.SetText", &Manager::ExecuteWindowSetText},
        {L"Window.SetText.Path", &Manager::ExecuteWindowSetTextPath},
        {L"Window.SetText.Position", &Manager::ExecuteWindowSetTextPosition},
        {L"Window.ClickButton", &Manager::ExecuteWindowClickButton},
        {L"Window.ClickButton.Path", &Manager::ExecuteWindowClickButtonPath},
        {L"Window.ClickButton.Position", &Manager::ExecuteWindowClickButtonPosition},
        {L"Window.SelectDropdown.Value", &Manager::ExecuteDropdownValueByID},
        {L"Window.SelectDropdown.Index", &Manager::ExecuteDropdownIndexByID},
        {L"Window.SelectDropdown.ByPath.Value", &Manager::ExecuteDropdownValueByPath},
        {L"Window.SelectDropdown.ByPath.Index", &Manager::ExecuteDropdownIndexByPath},
        {L"Window.SelectDropdown.ByPosition.Value", &Manager::ExecuteDropdownValueByPosition},
        {L"Window.SelectDropdown.ByPosition.Index", &Manager::ExecuteDropdownIndexByPosition},
        {L"Window.ClearText", &Manager::ExecuteWindowClearText},
        {L"Window.ClearText.Path", &Manager::ExecuteWindowClearTextPath},
        {L"Window.ClearText.Position", &Manager::ExecuteWindowClearTextPosition},
        {L"Window.Move", &Manager::ExecuteWindowMove},
        {L"Window.BringToFront", &Manager::ExecuteWindowBringToFront},
        {L"Window.Minimize", &Manager::ExecuteWindowMinimize},
        {L"Window.Maximize", &Manager::ExecuteWindowMaximize},
        {L"Window.Restore", &Manager::ExecuteWindowRestore},
        {L"Window.Close", &Manager::ExecuteWindowClose},
        {L"Window.SelectRadio", &Manager::ExecuteRadioByID},
        {L"Window.SelectRadio.ByPath", &Manager::ExecuteRadioByPath},
        {L"Window.SelectRadio.ByPosition", &Manager::ExecuteRadioByPosition},
        {L"Window.SetCheckbox", &Manager::ExecuteCheckboxByID},
        {L"Window.SetCheckbox.ByPath", &Manager::ExecuteCheckboxByPath},
        {L"Window.SetCheckbox.ByPosition", &Manager::ExecuteCheckboxByPosition},
    }};
    const auto row = std::ranges::find(kRows, std::wstring_view(name), &Row::name);
    return row == kRows.end() ? nullptr : row->handler;
}

int DialogScriptManager::ExecuteCommand(const wchar_t* command) {
    constexpr const char* kTag = "DialogScriptManager::ExecuteCommand";
    return WithExceptionBoundary(kTag, "command execution", [&] {
        Command parsed;
        if (!ReadCommand(command, kTag, parsed)) return 0;
        const bool hasTimeout = parsed.tokens.size() == parsed.counts.maxTokens;
        const unsigned int timeoutMs = hasTimeout ? ConvertToUnsigned(parsed.tokens.back()) : 0;
        const Handler handler = FindHandler(parsed.name);
        if (handler == nullptr) {
            // Guards against a vocabulary that grows without a handler.
            TraceLog(kTag, LOG_ERROR, "Unhandled command: %ls", parsed.name.c_str());
            return 0;
        }
        return (this->*handler)(parsed.tokens, parsed.useRegex, timeoutMs);
    });
}

}  // namespace dialwright
