#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "trace_reader/trace_line.h"

namespace dialwright::tools {

enum class CommandResult : std::uint8_t {
    Succeeded,
    Failed,
    /// The trace ends, or was begun anew, before it tells.
    Unknown,
};

[[nodiscard]] std::string_view NameOf(CommandResult result);

/// One command as the trace tells it.
struct CommandRow {
    std::size_t source = 0;
    std::uint32_t process = 0;
    std::uint32_t thread = 0;
    /// As it stands in the trace, local time.
    std::string time;
    /// The line of a script with its typed text hidden; for a command that was called alone, which has no such line,
    /// what it looked for.
    std::string command;
    bool fromScript = false;
    /// From its first line to its last.
    std::int64_t durationMicroseconds = 0;
    /// How often the control was looked for, or the window was acted on.
    int attempts = 0;
    CommandResult result = CommandResult::Unknown;
    /// The last warning or error.
    TraceLevel problemLevel = TraceLevel::Debug;
    std::string problem = {};
};

/// Makes rows of the lines of all threads. A command that was called alone leaves no line of its own, and none at its
/// end, so it is told by its window search and by what comes next in its thread.
class CommandRows {
public:
    void Add(std::size_t source, const TraceFields& fields);

    /// The rows in the order in which their commands began; nothing may be added later.
    [[nodiscard]] std::vector<CommandRow> Take();

private:
    struct Open {
        std::size_t row = 0;
        bool isOpen = false;
        bool hasSearched = false;
        std::int64_t begin = 0;
        /// What the last line says about the end, should it be the last.
        CommandResult ifLast = CommandResult::Unknown;
        bool lastIsProblem = false;
    };

    CommandRow& Begin(Open& open, std::size_t source, const TraceFields& fields, std::string command);
    void Close(Open& open, CommandResult result);
    void CloseAsTold(Open& open);
    void Note(Open& open, const TraceFields& fields);
    void AddOfManager(Open& open, std::size_t source, const TraceFields& fields);
    void AddOfWindow(Open& open, std::size_t source, const TraceFields& fields);

    std::vector<CommandRow> rows;
    std::map<std::tuple<std::size_t, std::uint32_t, std::uint32_t>, Open> threads;
};

}  // namespace dialwright::tools
