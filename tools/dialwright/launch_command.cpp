#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "check/source_text.h"
#include "input.h"
#include "printable.h"
#include "run/own_files.h"
#include "run/runner.h"
#include "subcommand.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

struct Options {
    std::string program;
    std::vector<std::string> arguments;
};

/// As one argument of a command line.
std::wstring QuoteArgument(const std::wstring& argument) {
    const bool plain = !argument.empty() && argument.find_first_of(L" \t\"") == std::wstring::npos;
    if (plain) return argument;
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        // Those before a quote count twice.
        if (unit == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        quoted.push_back(unit);
    }
    return quoted.append(backslashes, L'\\') + L"\"";
}

int Launch(const Options& options) {
    try {
        const Redactor nothingToHide;
        RunnerSettings settings;
        settings.host = HostProgram();
        settings.library = LibraryFile();
        settings.workFolder = UsersHostFolder();
        Runner runner(std::move(settings), nothingToHide);
        std::wstring arguments;
        for (const std::string& argument : options.arguments) {
            arguments += (arguments.empty() ? L"" : L" ") + QuoteArgument(Wide(argument));
        }
        const DWORD processId = runner.Launch(QuoteArgument(Wide(options.program)), arguments);
        if (processId == 0) {
            std::fprintf(stderr, "dialwright: %s cannot be started\n", Printable(options.program).c_str());
            return kFound;
        }
        WriteOutput(std::to_string(processId) + "\n");
        return kDone;
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "dialwright: %s\n", error.what());
        return kEnvironment;
    }
}

}  // namespace

Action DefineLaunch(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    command.add_option("program", options->program, "the program's path, or its name where the system finds it")
        ->required();
    command.add_option("arguments", options->arguments, "its arguments; put -- before those that begin with a hyphen");
    command.footer(
        "Prints the process ID and does not wait, neither for the program nor for its window.\n\n"
        "  dialwright launch notepad.exe \"my notes.txt\"\n\n"
        "Exit codes: 0 started, 1 it cannot be started, 2 usage, 3 the worker cannot be started.");
    return [options] { return Launch(*options); };
}

}  // namespace dialwright::tools
