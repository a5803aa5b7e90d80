#include "verify/options.h"

#include <algorithm>

#include "platform/text_encoding.h"
#include "platform/windows.h"
#include "verify/checks.h"

#include <dialwright/dialwright.h>
#include <shellapi.h>
#include <CLI/CLI.hpp>

namespace dialwright::verify {
namespace {

constexpr int kUsage = 2;

/// In UTF-8 on every version of the system, also on those that do not know that part of our manifest.
std::vector<std::string> Arguments() {
    int count = 0;
    wchar_t** const values = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(ToUtf8(values[i]));
    ::LocalFree(static_cast<void*>(values));
    return arguments;
}

std::vector<std::string> CheckNames() {
    std::vector<std::string> names;
    for (const Check& check : Checks()) names.emplace_back(check.name);
    return names;
}

std::string Footer() {
    std::string text = "Checks:\n";
    for (const Check& check : Checks()) {
        std::string name = check.name;
        name.resize(10, ' ');
        text += "  " + name + check.asks + "\n";
    }
    return text +
           "\nIt starts windows of its own and drives them; please leave mouse and keyboard alone for a minute.\n"
           "The report holds no name of yours and no path of yours.\n\n"
           "Exit codes: 0 all passed or skipped, 1 something failed, 2 usage, 3 it cannot run here.";
}

void Define(CLI::App& app, Options& options) {
    app.allow_windows_style_options(false);
    app.set_version_flag("--version", "dialwright-verify " DIALWRIGHT_VERSION_STRING);
    app.add_option("--json", options.reports, "the report; of several, the first that can be written")->take_all();
    app.add_option("--only", options.only, "one check alone; may be given several times")
        ->take_all()
        ->check(CLI::IsMember(CheckNames()));
    app.add_flag("--quick", options.quick, "fewer rounds");
    app.add_option("--also", options.also, "this program built for another architecture; both go into one report");
    app.add_option("--limit", options.limit, "seconds for each check, in place of its own limit")
        ->check(CLI::Range(1, 3600));
    const std::string hidden;
    app.add_option("--check", options.check)->group(hidden)->check(CLI::IsMember(CheckNames()));
    app.add_option("--check-work", options.checkWork)->group(hidden);
    app.add_option("--leave", options.leave)->group(hidden);
    app.add_flag("--crash", options.crash)->group(hidden);
    app.add_option("--folder", options.folder)->group(hidden);
    app.footer(Footer());
}

}  // namespace

ReadOptions ReadCommandLine() {
    ReadOptions read;
    CLI::App app("Tells whether this build of Dialwright works on this machine.", "dialwright-verify");
    Define(app, read.options);
    try {
        std::vector<std::string> arguments = Arguments();
        std::ranges::reverse(arguments);
        app.parse(arguments);
    } catch (const CLI::ParseError& error) {
        read.exitCode = app.exit(error) == 0 ? 0 : kUsage;
    }
    return read;
}

}  // namespace dialwright::verify
