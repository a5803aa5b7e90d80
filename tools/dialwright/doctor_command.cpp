#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "check/source_text.h"
#include "doctor/facts.h"
#include "doctor/judgement.h"
#include "input.h"
#include "json_text.h"
#include "printable.h"
#include "run/host_place.h"
#include "run/own_files.h"
#include "subcommand.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

struct Options {
    std::vector<std::string> target;
    std::string library;
    std::string workFolder;
    bool json = false;
};

std::string AsText(const std::vector<Row>& rows) {
    constexpr std::size_t kStateWidth = 8;
    constexpr std::size_t kNameWidth = 13;
    std::string text;
    for (const Row& row : rows) {
        std::string line(NameOf(row.state));
        line.resize((std::max)(line.size(), kStateWidth), ' ');
        line += " " + row.name;
        line.resize((std::max)(line.size(), 1 + kStateWidth + kNameWidth), ' ');
        text += line + Printable(row.found) + "\n";
        if (!row.advice.empty()) text += std::string(1 + kStateWidth + kNameWidth, ' ') + Printable(row.advice) + "\n";
    }
    return text;
}

std::string AsJson(const std::vector<Row>& rows) {
    Json checks = Json::array();
    for (const Row& row : rows) {
        checks.push_back({{"name", row.name},
                          {"state", NameOf(row.state)},
                          {"found", Printable(row.found)},
                          {"advice", Printable(row.advice)}});
    }
    return JsonText({{"schema", 1}, {"state", NameOf(WorstOf(rows))}, {"checks", checks}});
}

std::optional<WindowCriteria> TargetOf(const Options& options) {
    if (options.target.empty()) return std::nullopt;
    return WindowCriteria{.className = Wide(options.target[0]), .title = Wide(options.target[1])};
}

int CodeFor(State state) {
    switch (state) {
        case State::Ok: return kDone;
        case State::Warning: return kFound;
        case State::Blocked: break;
    }
    return kEnvironment;
}

int Doctor(const Options& options) {
    try {
        const Places places{
            .library = options.library.empty() ? LibraryFile() : FilePath(options.library),
            .workFolder = options.workFolder.empty() ? UsersHostFolder() : FilePath(options.workFolder)};
        const std::vector<Row> rows = Judge(ReadFacts(places, TargetOf(options)), DIALWRIGHT_VERSION);
        WriteOutput(options.json ? AsJson(rows) : AsText(rows));
        return CodeFor(WorstOf(rows));
    } catch (const std::regex_error& error) {
        std::fprintf(stderr, "dialwright: class or title is no valid expression: %s\n", error.what());
        return kUsage;
    }
}

}  // namespace

Action DefineDoctor(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    command.add_option("--target", options->target, "class and title of a window that is to be driven")->expected(2);
    command.add_option("--library", options->library, "the library, if it is not beside this program");
    command.add_option("--work-folder", options->workFolder,
                       "where dialwright run is to put its workers, if not at home");
    command.add_flag("--json", options->json, "print JSON");
    command.footer(
        "Looks at the session, the desktop, elevation, scale, code page, trace folder and library; loads and changes\n"
        "nothing. Each row says ok, warning or blocked, what was found, and what to do.\n\n"
        "  dialwright doctor --target Notepad \".*Notepad\"\n\n"
        "Exit codes: 0 all is well, 1 warnings, 2 usage, 3 something blocks the library.");
    return [options] { return Doctor(*options); };
}

}  // namespace dialwright::tools
