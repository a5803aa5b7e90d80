#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/check.h"
#include "check_formats.h"
#include "input.h"
#include "known_windows_file.h"
#include "platform/text_encoding.h"
#include "printable.h"
#include "progress_line.h"
#include "subcommand.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

struct Options {
    std::vector<std::string> files;
    std::string format = "text";
    std::vector<std::string> disabled;
    std::vector<std::string> inspected;
    bool emit = false;
};

bool IsDisabled(const Options& options, const Finding& finding) {
    return std::ranges::find(options.disabled, std::string(finding.code)) != options.disabled.end();
}

CheckedFile CheckOne(const Options& options, const std::vector<KnownWindow>& known, const std::string& file,
                     const SourceText& source) {
    ProgressLine progress;
    const auto begin = std::chrono::steady_clock::now();
    const auto show = [&](std::size_t line) {
        const auto waited = std::chrono::steady_clock::now() - begin;
        progress.Show("checking " + Printable(file) + ":" + std::to_string(line),
                      std::chrono::duration_cast<std::chrono::milliseconds>(waited));
    };
    CheckedFile checked{.file = file, .findings = CheckScript(source, known, show)};
    std::erase_if(checked.findings, [&](const Finding& finding) { return IsDisabled(options, finding); });
    return checked;
}

/// Nothing, and a complaint, where a file is not what inspect prints.
std::optional<std::vector<KnownWindow>> ReadKnownWindows(const std::vector<std::string>& paths) {
    std::vector<KnownWindow> known;
    for (const std::string& path : paths) {
        const auto bytes = ReadInput(path);
        auto window = bytes ? ReadKnownWindow(*bytes) : std::nullopt;
        if (!window) {
            std::fprintf(stderr, "dialwright: %s is not what inspect --json prints\n", path.c_str());
            return std::nullopt;
        }
        known.push_back(std::move(*window));
    }
    return known;
}

int Check(const Options& options) {
    const auto known = ReadKnownWindows(options.inspected);
    if (!known) return kUsage;
    std::vector<CheckedFile> files;
    bool found = false;
    for (const std::string& file : options.files) {
        const auto bytes = ReadInput(file);
        if (!bytes) {
            std::fprintf(stderr, "dialwright: %s cannot be read\n", file.c_str());
            return kUsage;
        }
        const SourceText source = ReadSource(*bytes);
        if (options.emit) {
            WriteOutput(ToUtf8(PureScript(source)));
            continue;
        }
        files.push_back(CheckOne(options, *known, file == "-" ? "<stdin>" : file, source));
        found = found || !files.back().findings.empty();
    }
    if (!options.emit) WriteOutput(FormatFindings(options.format, files));
    return found ? kFound : kDone;
}

/// Empty, or what is wrong.
std::string IsRule(const std::string& code) {
    const bool known = std::ranges::any_of(AllRules(), [&](const Rule& rule) { return rule.code == code; });
    return known ? "" : "there is no rule " + code;
}

}  // namespace

Action DefineCheck(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    command.add_option("files", options->files, "scripts in UTF-8; - is standard input")->required();
    command.add_option("--format", options->format, "how findings are printed")
        ->check(CLI::IsMember({"text", "json", "sarif", "github"}));
    command.add_option("--disable", options->disabled, "a code that is not reported, such as DW390")
        ->allow_extra_args(false)
        ->check(IsRule);
    command.add_option("--inspect", options->inspected, "what inspect --json printed of a window that the scripts use")
        ->allow_extra_args(false);
    command.add_flag("--emit", options->emit, "prints the script as the library takes it, without comments");
    command.footer(
        "Each finding is file:line:column: error|warning CODE: text. DW1xx: the library refuses the script. DW2xx: the\n"
        "line must fail when it runs. DW3xx: it works, but hardly as it was meant.\n\n"
        "  dialwright check sign-in.txt\n"
        "  dialwright check --format github scripts/*.txt\n\n"
        "Exit codes: 0 nothing found, 1 findings, 2 usage or a file that cannot be read.");
    return [options] { return Check(*options); };
}

}  // namespace dialwright::tools
