#include "script/check_state.h"
#include "script/dialog_script_manager.h"
#include "script/retry.h"

namespace dialwright {

int DialogScriptManager::ExecuteWindowSetTextPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(
        window, [&] { return Window::SetTextHelper(window.FindControlByHierarchy(tokens[3]), tokens[4]); });
}

int DialogScriptManager::ExecuteWindowClickButtonPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window, [&] { return Window::ClickHelper(window.FindControlByHierarchy(tokens[3])); });
}

int DialogScriptManager::ExecuteDropdownValueByPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window, [&] {
        return Window::SelectDropdownByValueInternal(window.FindControlByHierarchy(tokens[3]), tokens[4]);
    });
}

int DialogScriptManager::ExecuteDropdownIndexByPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const int index = ParseInt(tokens[4], L"dropdown index");
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(
        window, [&] { return Window::SelectDropdownByIndexInternal(window.FindControlByHierarchy(tokens[3]), index); });
}

int DialogScriptManager::ExecuteWindowClearTextPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window, [&] { return Window::ClearTextHelper(window.FindControlByHierarchy(tokens[3])); });
}

int DialogScriptManager::ExecuteRadioByPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(
        window, [&] { return Window::SetCheckState(window.FindControlByHierarchy(tokens[3]), kChecked, kRadioLabel); });
}

int DialogScriptManager::ExecuteCheckboxByPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const int state = ParseInt(tokens[4], L"state");
    if (!IsCheckboxState(state, "DialogScriptManager::ExecuteCheckboxByPath")) return 0;
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(
        window, [&] { return Window::SetCheckState(window.FindControlByHierarchy(tokens[3]), state, kCheckboxLabel); });
}

}  // namespace dialwright
