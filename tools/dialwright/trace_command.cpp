#include <map>

#include "subcommand.h"
#include "trace_commands.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

struct Row {
    const char* name;
    const char* help;
    DefineSubcommand define;
};

constexpr Row kRows[] = {
    {"show", "prints a trace, joined and filtered, or a row for each command in it", &DefineTraceShow},
    {"follow", "prints what is added to a trace, while it is written", &DefineTraceFollow},
    {"audit", "tells where secrets stand in traces, without printing them", &DefineTraceAudit},
    {"memlog", "prints the last lines that a crash dump holds", &DefineTraceMemlog},
};

}  // namespace

Action DefineTrace(CLI::App& command) {
    command.require_subcommand(1);
    std::map<const CLI::App*, Action> actions;
    for (const Row& row : kRows) {
        CLI::App* const subcommand = command.add_subcommand(row.name, row.help);
        actions[subcommand] = row.define(*subcommand);
    }
    return [&command, actions] { return actions.at(command.get_subcommands().front())(); };
}

}  // namespace dialwright::tools
