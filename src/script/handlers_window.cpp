#include "script/dialog_script_manager.h"
#include "window/window.h"

namespace dialwright {

int DialogScriptManager::ExecuteWindowBringToFront(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    return Window::BringToFront(tokens, useRegex, timeoutMs) ? 1 : 0;
}

int DialogScriptManager::ExecuteWindowMinimize(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    return Window::MinimizeWindow(tokens, useRegex, timeoutMs) ? 1 : 0;
}

int DialogScriptManager::ExecuteWindowMaximize(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    return Window::MaximizeWindow(tokens, useRegex, timeoutMs) ? 1 : 0;
}

int DialogScriptManager::ExecuteWindowRestore(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    return Window::RestoreWindow(tokens, useRegex, timeoutMs) ? 1 : 0;
}

int DialogScriptManager::ExecuteWindowClose(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    return Window::CloseWindow(tokens, useRegex, timeoutMs) ? 1 : 0;
}

}  // namespace dialwright
