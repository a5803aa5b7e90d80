#include "script/check_state.h"
#include "script/dialog_script_manager.h"
#include "script/retry.h"

namespace dialwright {

int DialogScriptManager::ExecuteWindowSetText(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const int controlId = ParseInt(tokens[3], L"control ID");
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window,
                             [&] { return Window::SetTextHelper(window.GetControlHandle(controlId), tokens[4]); });
}

int DialogScriptManager::ExecuteWindowClickButton(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const int buttonId = ParseInt(tokens[3], L"button ID");
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window, [&] { return Window::ClickHelper(window.GetControlHandle(buttonId)); });
}

int DialogScriptManager::ExecuteDropdownValueByID(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const int controlId = ParseInt(tokens[3], L"control ID");
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(
        window, [&] { return Window::SelectDropdownByValueInternal(window.GetControlHandle(controlId), tokens[4]); });
}

int DialogScriptManager::ExecuteDropdownIndexByID(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const int controlId = ParseInt(tokens[3], L"control ID");
    const int index = ParseInt(tokens[4], L"dropdown index");
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(
        window, [&] { return Window::SelectDropdownByIndexInternal(window.GetControlHandle(controlId), index); });
}

int DialogScriptManager::ExecuteWindowClearText(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const int controlId = ParseInt(tokens[3], L"control ID");
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window, [&] { return Window::ClearTextHelper(window.GetControlHandle(controlId)); });
}

int DialogScriptManager::ExecuteRadioByID(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const int controlId = ParseInt(tokens[3], L"control ID");
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(
        window, [&] { return Window::SetCheckState(window.GetControlHandle(controlId), kChecked, kRadioLabel); });
}

int DialogScriptManager::ExecuteCheckboxByID(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const int controlId = ParseInt(tokens[3], L"control ID");
    const int state = ParseInt(tokens[4], L"state");
    if (!IsCheckboxState(state, "DialogScriptManager::ExecuteCheckboxByID")) return 0;
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(
        window, [&] { return Window::SetCheckState(window.GetControlHandle(controlId), state, kCheckboxLabel); });
}

}  // namespace dialwright
