#include "language/masking.h"
#include "language/splitting.h"
#include "script/dialog_script_manager.h"
#include "script/exception_boundary.h"
#include "trace/trace.h"

namespace dialwright {

int DialogScriptManager::ValidateScript(const wchar_t* script) {
    return RunScript(script, {.tag = "DialogScriptManager::ValidateScript",
                              .announcement = "Validating command",
                              .activity = "script validation",
                              .runLine = &DialogScriptManager::ValidateCommand});
}

int DialogScriptManager::ExecuteScript(const wchar_t* script) {
    return RunScript(script, {.tag = "DialogScriptManager::ExecuteScript",
                              .announcement = "Executing command",
                              .activity = "script execution",
                              .runLine = &DialogScriptManager::ExecuteCommand});
}

int DialogScriptManager::RunScript(const wchar_t* script, const ScriptLoop& loop) {
    return WithExceptionBoundary(loop.tag, loop.activity, [&] {
        const std::vector<std::wstring> lines = SplitScriptLines(script);
        if (lines.empty()) {
            TraceLog(loop.tag, LOG_ERROR, "Script is empty");
            return 0;
        }
        for (const std::wstring& line : lines) {
            const std::wstring logText = MaskCommandForLog(line);
            TraceLog(loop.tag, LOG_INFO, "%s: %ls", loop.announcement, logText.c_str());
            if ((this->*loop.runLine)(line.c_str()) == 0) {
                // The same words for a malformed line and for a failed action: the line before says which it was.
                TraceLog(loop.tag, LOG_ERROR, "Invalid command: %ls", logText.c_str());
                return 0;
            }
        }
        return 1;
    });
}

}  // namespace dialwright
