// The program around the library.

#include <cstdio>
#include <exception>
#include <map>

#include "input.h"
#include "interrupt.h"
#include "subcommand.h"
#include "version.h"

#include <CLI/CLI.hpp>

namespace {

using namespace dialwright::tools;

struct Row {
    const char* name;
    const char* help;
    DefineSubcommand define;
};

constexpr Row kSubcommands[] = {
    {"check", "finds what is wrong or doubtful in scripts, without touching a window", &DefineCheck},
    {"doctor", "tells whether the library can work here, and what to do", &DefineDoctor},
    {"inspect", "shows a window's controls, and the commands that act on them", &DefineInspect},
    {"launch", "starts a program and prints its process ID", &DefineLaunch},
    {"match", "tells which window a class and a title name", &DefineMatch},
    {"run", "carries scripts out and tells of each line how it went", &DefineRun},
    {"trace", "reads what the library has written down", &DefineTrace},
    {"windows", "lists the top-level windows", &DefineWindows},
};

int RunProgram(int count, char** values) {
    CLI::App app("Drives the windows of other programs by scripts of one command a line.", "dialwright");
    app.require_subcommand(1);
    // Else a path or a title that begins with a slash is taken for an option.
    app.allow_windows_style_options(false);
    app.set_version_flag("--version", &VersionText);
    std::map<const CLI::App*, Action> actions;
    for (const Row& row : kSubcommands) {
        CLI::App* const command = app.add_subcommand(row.name, row.help);
        actions[command] = row.define(*command);
    }
    try {
        app.parse(count, values);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kDone : kUsage;
    }
    return actions.at(app.get_subcommands().front())();
}

}  // namespace

int main(int count, char** values) {
    try {
        EndWhenInterrupted();
        const int code = RunProgram(count, values);
        if (!OutputWasLost()) return code;
        std::fputs("dialwright: standard output cannot be written\n", stderr);
        return kEnvironment;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "dialwright: %s\n", error.what());
        return kInternal;
    }
}
