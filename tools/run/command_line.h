#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "language/commands.h"
#include "language/tokenizer.h"
#include "look/window_list.h"

namespace dialwright::tools {

/// What the library waits for where a line names no timeout.
inline constexpr std::uint64_t kDefaultTimeoutMs = 10000;

/// A command line, taken apart as the library does it.
struct CommandLine {
    static constexpr std::size_t kNoText = static_cast<std::size_t>(-1);

    std::vector<Token> tokens;
    /// Null for a line that is no command of the language.
    const CommandSpec* command = nullptr;
    bool useRegex = true;
    /// Which token is typed; kNoText for commands that type nothing.
    std::size_t textToken = kNoText;

    [[nodiscard]] bool HasText() const { return textToken != kNoText; }
    [[nodiscard]] bool HasTimeout() const { return command != nullptr && tokens.size() == command->MaxTokens(); }
    /// The time that the library waits; never 0.
    [[nodiscard]] std::uint64_t TimeoutMs() const;
    [[nodiscard]] WindowCriteria Criteria() const;
};

[[nodiscard]] CommandLine ReadCommandLine(const std::wstring& line);

/// The line as people may see it: ***** in place of the typed text, wherever the library's own log would show it too.
/// Of a line that is no command, only the first word.
[[nodiscard]] std::wstring MaskedLine(const std::wstring& line);

struct ProgramAndArguments {
    /// With its quotes, if it has any.
    std::wstring program;
    std::wstring arguments;
};

/// Parts a program, in quotes where its path has blanks, from its arguments.
[[nodiscard]] ProgramAndArguments SplitProgram(const std::wstring& whole);

}  // namespace dialwright::tools
