#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "language/tokenizer.h"

namespace dialwright {

/// Fewest and most tokens of a command, its name included.
struct TokenCounts {
    std::uint64_t minTokens;
    std::uint64_t maxTokens;
};

/// Checks and carries out command lines and scripts. Each exported call makes one of its own and drops it; nothing
/// is kept between calls. Every result is exactly 1 or 0, with the reason in the log. The four public methods turn
/// each standard exception into a log line and 0; all block the caller's thread for as long as their commands take.
class DialogScriptManager {
public:
    DialogScriptManager();

    [[nodiscard]] int ValidateCommand(const wchar_t* command);
    [[nodiscard]] int ValidateScript(const wchar_t* script);
    [[nodiscard]] int ExecuteCommand(const wchar_t* command);
    [[nodiscard]] int ExecuteScript(const wchar_t* script);

private:
    /// Carries out one command that has passed the checks of its shape; `timeoutMs` is 0 where the line has none.
    /// Throws what its arguments or its window search throw.
    using Handler = int (DialogScriptManager::*)(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);

    struct Command {
        std::wstring name;
        bool useRegex;
        TokenList tokens;
        TokenCounts counts;
    };

    /// What the two script loops do not share.
    struct ScriptLoop {
        const char* tag;
        const char* announcement;
        const char* activity;
        int (DialogScriptManager::*runLine)(const wchar_t* line);
    };

    /// Reads one line and checks its shape; false, with the reason logged under `tag`, for an invalid line.
    [[nodiscard]] bool ReadCommand(const wchar_t* line, const char* tag, Command& command) const;
    [[nodiscard]] static bool ValidateCommandArgs(const TokenList& tokens, const std::wstring& name,
                                                  const TokenCounts& counts);
    [[nodiscard]] int RunScript(const wchar_t* script, const ScriptLoop& loop);

    /// The number, or a log line that names `what` and std::invalid_argument "Invalid argument".
    [[nodiscard]] static int ParseInt(const std::wstring& text, const std::wstring& what);

    /// Null for a name without a handler.
    [[nodiscard]] static Handler FindHandler(const std::wstring& name);

    int ExecuteWindowSetText(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowSetTextPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowSetTextPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowClickButton(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowClickButtonPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowClickButtonPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteDropdownValueByID(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteDropdownIndexByID(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteDropdownValueByPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteDropdownIndexByPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteDropdownValueByPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteDropdownIndexByPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowClearText(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowClearTextPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowClearTextPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowMove(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowBringToFront(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowMinimize(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowMaximize(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowRestore(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteWindowClose(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteRadioByID(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteRadioByPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteRadioByPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteCheckboxByID(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteCheckboxByPath(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);
    int ExecuteCheckboxByPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs);

    std::map<std::wstring, TokenCounts> commandTable;
};

}  // namespace dialwright
