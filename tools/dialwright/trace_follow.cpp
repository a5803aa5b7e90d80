#include <cstdio>
#include <deque>
#include <map>
#include <memory>

#include "interrupt.h"
#include "platform/text_encoding.h"
#include "trace_commands.h"
#include "trace_options.h"
#include "trace_output.h"
#include "trace_reader/pair_follower.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

constexpr DWORD kPollMs = 200;
/// Where the last lines of a file that is there already are looked for.
constexpr std::uint64_t kTailBytes = std::uint64_t{256} * 1024;

struct Options {
    TraceSelection selection;
    FilterOptions filter;
    std::size_t lines = 10;
    double seconds = 0;
    bool json = false;
};

/// Not every runtime writes it out by itself where standard error is a pipe.
void TellNow(const std::string& text) {
    std::fprintf(stderr, "dialwright: %s\n", text.c_str());
    std::fflush(stderr);
}

/// The pairs that are followed. A folder without any trace is looked into again and again; with --all or --host also
/// one that has some.
class Followed {
public:
    explicit Followed(const Options& followOptions)
        : options(followOptions), printer(options.filter.Read(), options.json, "") {
        LookForPairs();
        if (followers.empty()) TellNow("waiting for a trace");
        ShowLastLines();
    }

    /// Whether anybody reads on.
    bool Poll() {
        if (followers.empty() || options.selection.all || !options.selection.host.empty()) LookForPairs();
        for (auto& [file, follower] : followers) {
            const int lossesBefore = follower.follower.Losses();
            follower.follower.Poll([&](const std::string& record) { printer.Print(record, follower.host); });
            if (follower.follower.Losses() != lossesBefore) {
                TellNow("lines were lost to the view, as files of " + ToUtf8(file) + " were begun anew too quickly");
            }
        }
        return printer.Flush();
    }

    void Finish() {
        for (auto& [file, follower] : followers) {
            follower.follower.Finish([&](const std::string& record) { printer.Print(record, follower.host); });
        }
        printer.Finish();
    }

private:
    struct Entry {
        std::string host;
        PairFollower follower;
    };

    void LookForPairs() {
        for (const TracePair& pair : Select(options.selection)) {
            // A pair that comes later is read from its beginning.
            const std::uint64_t lastBytes = isFirstLook ? kTailBytes : UINT64_MAX;
            if (followers.contains(pair.first) || !MayCome(pair)) continue;
            followers.emplace(pair.first, Entry{.host = ToUtf8(pair.name), .follower = PairFollower(pair, lastBytes)});
        }
        isFirstLook = false;
    }

    /// A path without a pair's name that does not exist may become the folder of the traces.
    static bool MayCome(const TracePair& pair) { return !pair.second.empty() || StateOf(pair.first) != FileState(); }

    void ShowLastLines() {
        for (auto& [file, follower] : followers) {
            std::deque<std::string> last;
            // The last line is handed on at a second look, when nothing has been added to it.
            for (int look = 0; look < 2; ++look) {
                follower.follower.Poll([&](const std::string& record) {
                    if (printer.Wants(record)) last.push_back(record);
                    if (last.size() > options.lines) last.pop_front();
                });
            }
            for (const std::string& record : last) printer.Print(record, follower.host);
        }
    }

    const Options& options;
    RecordPrinter printer;
    std::map<std::wstring, Entry> followers;
    bool isFirstLook = true;
};

int Follow(const Options& options) {
    const Interrupt interrupt;
    const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(options.seconds * 1000);
    Followed followed(options);
    while (followed.Poll()) {
        if (interrupt.ComesWithin(kPollMs)) {
            followed.Finish();
            return kInterrupted;
        }
        if (options.seconds > 0 && ::GetTickCount64() >= end) break;
    }
    followed.Finish();
    return kDone;
}

}  // namespace

Action DefineTraceFollow(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    AddSelection(command, options->selection);
    AddCommandFilters(command, options->filter);
    AddLineFilters(command, options->filter);
    command.add_option("--lines", options->lines, "how many of the last lines are shown first");
    command.add_option("--for", options->seconds, "end after so many seconds")->check(CLI::PositiveNumber);
    command.add_flag("--json", options->json, "print a JSON object on each line");
    command.footer(
        "Goes on when the host turns to the other file of the pair, and waits for one that does not exist yet. The\n"
        "files are never held open, so the host is not disturbed.\n\n"
        "  dialwright trace follow logs\\trace --level warning\n\n"
        "Exit codes: 130 after Ctrl-C, 0 after --for, 2 usage.");
    return [options] { return Follow(*options); };
}

}  // namespace dialwright::tools
