#include "run_options.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

constexpr const char* kFooter =
    "  dialwright run sign-in.txt\n"
    "  dialwright run --launch \"notepad.exe notes.txt\" --junit report.xml write.txt save.txt\n"
    "  dialwright run -c \"Window.Close Notepad \\\".*Notepad\\\" 5000\"\n"
    "  dialwright run --secret-file secrets.txt sign-in.txt    (the script types ${secret:NAME})\n\n"
    "Each line that ends is printed as file:line, ok or FAIL, its time and the line with its typed text masked. A line\n"
    "that fails tells why, and what could help. Lines that begin with # are comments.\n\n"
    "Exit codes: 0 done, 1 a line failed, 2 usage or a script that cannot run (nothing was carried out), 3 the worker\n"
    "or a program cannot be started or a report not be written, 4 a target did not answer, 5 internal error, 130 interrupted.";

void AddWhatRuns(CLI::App& command, RunOptions& options) {
    command.add_option("files", options.files, "scripts in UTF-8; - is standard input");
    command.add_option("-c", options.lines, "a command line in place of a file; may be given several times")
        ->type_name("LINE")
        ->allow_extra_args(false);
    command.add_option("--from", options.range.from, "the first line that runs")->check(CLI::PositiveNumber);
    command.add_option("--to", options.range.to, "the last line that runs")->check(CLI::PositiveNumber);
    command.add_option("--repeat", options.repeat, "runs everything so many times")->check(CLI::PositiveNumber);
    command.add_flag("--keep-going", options.keepGoing, "a line that fails ends its file only");
    command.add_option("--launch", options.launch, "starts this program first; one with blanks in its path in quotes")
        ->type_name("\"PROGRAM ARGS\"");
    command.add_option("--secret-file", options.secretFile, "lines NAME=VALUE for ${secret:NAME}");
}

void AddHowItRuns(CLI::App& command, RunOptions& options) {
    command.add_flag("--dry-run", options.dryRun, "checks, and prints what would run");
    command.add_flag("--no-check", options.noCheck, "runs a script also where dialwright check finds errors");
    command.add_option("--line-timeout", options.lineTimeoutMs, "ends a line after so many milliseconds")
        ->check(CLI::Range(std::size_t{1}, std::size_t{4294967295}));
    command.add_option("--on-modal", options.onModal, "when a click opens a dialog: go on, wait, or fail")
        ->check(CLI::IsMember({"continue", "wait", "fail"}));
    command.add_option("--on-failure", options.onFailure, "what a line that fails leaves: screenshot, tree")
        ->delimiter(',')
        ->check(CLI::IsMember({"screenshot", "tree"}));
    command.add_option("--evidence", options.evidenceFolder, "the folder for that");
    command.add_option("--work-folder", options.workFolder, "where the worker and its trace are put");
}

void AddReports(CLI::App& command, RunOptions& options) {
    command.add_option("--junit", options.junitFile, "writes a JUnit report");
    command.add_flag("--json", options.json, "prints JSON in place of text");
    command.add_option("--annotate", options.annotate, "marks lines that fail for GitHub; auto: when it runs there")
        ->check(CLI::IsMember({"auto", "github", "none"}));
}

}  // namespace

std::shared_ptr<RunOptions> AddRunOptions(CLI::App& command) {
    auto options = std::make_shared<RunOptions>();
    AddWhatRuns(command, *options);
    AddHowItRuns(command, *options);
    AddReports(command, *options);
    command.footer(kFooter);
    return options;
}

}  // namespace dialwright::tools
