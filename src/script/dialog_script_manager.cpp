#include "script/dialog_script_manager.h"

#include <stdexcept>

#include "language/commands.h"
#include "language/numbers.h"
#include "script/exception_boundary.h"
#include "trace/trace.h"

namespace dialwright {

DialogScriptManager::DialogScriptManager() {
    for (const CommandSpec& spec : kCommands) {
        commandTable.emplace(spec.name, TokenCounts{.minTokens = spec.minTokens, .maxTokens = spec.MaxTokens()});
    }
}

int DialogScriptManager::ValidateCommand(const wchar_t* command) {
    constexpr const char* kTag = "DialogScriptManager::ValidateCommand";
    return WithExceptionBoundary(kTag, "command validation", [&] {
        Command ignored;
        return ReadCommand(command, kTag, ignored) ? 1 : 0;
    });
}

bool DialogScriptManager::ReadCommand(const wchar_t* line, const char* tag, Command& command) const {
    command.tokens = TokenizeCommand(line);
    if (command.tokens.empty()) {
        TraceLog(tag, LOG_ERROR, "Empty command");
        return false;
    }
    command.name = StripNonRegexSuffix(command.tokens[0], &command.useRegex);
    const auto entry = commandTable.find(command.name);
    if (entry == commandTable.end()) {
        TraceLog(tag, LOG_ERROR, "Unknown command: %ls", command.name.c_str());
        return false;
    }
    command.counts = entry->second;
    return ValidateCommandArgs(command.tokens, command.name, command.counts);
}

bool DialogScriptManager::ValidateCommandArgs(const TokenList& tokens, const std::wstring& name,
                                              const TokenCounts& counts) {
    constexpr const char* kTag = "DialogScriptManager::ValidateCommandArgs";
    if (tokens.size() < counts.minTokens || tokens.size() > counts.maxTokens) {
        TraceLog(kTag, LOG_ERROR, "Invalid argument count for %ls", name.c_str());
        return false;
    }
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        if (tokens[i].empty()) {
            TraceLog(kTag, LOG_ERROR, "Argument %d is empty for %ls", static_cast<int>(i), name.c_str());
            return false;
        }
    }
    return true;
}

int DialogScriptManager::ParseInt(const std::wstring& text, const std::wstring& what) {
    int value = 0;
    if (TryParseInt(text, &value)) return value;
    TraceLog("DialogScriptManager::ParseInt", LOG_ERROR, "Invalid %ls: %ls", what.c_str(), text.c_str());
    throw std::invalid_argument("Invalid argument");
}

}  // namespace dialwright
