#include "trace_options.h"

#include <algorithm>

#include "check/source_text.h"
#include "platform/windows.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

/// Empty, or what is wrong.
std::string IsTime(const std::string& text) {
    if (TimeBound::Read(text)) return {};
    return text + " is no time; write \"2026-11-20\", \"2026-11-20 10:00\" or \"10:00:05\"";
}

bool IsOfHost(const TracePair& pair, const std::wstring& host) {
    return ::CompareStringOrdinal(pair.name.c_str(), static_cast<int>((std::min)(pair.name.size(), host.size())),
                                  host.c_str(), static_cast<int>(host.size()), TRUE) == CSTR_EQUAL;
}

std::vector<TracePair> SelectIn(const std::wstring& folder, const TraceSelection& selection) {
    std::vector<TracePair> pairs = PairsIn(folder);
    std::erase_if(pairs, [](const TracePair& pair) { return pair.isError; });
    const std::wstring host = Wide(selection.host);
    if (!host.empty()) std::erase_if(pairs, [&](const TracePair& pair) { return !IsOfHost(pair, host); });
    if (pairs.empty() || selection.all || !host.empty()) return pairs;
    return {*std::ranges::max_element(pairs, {}, &LastWritten)};
}

}  // namespace

void AddSelection(CLI::App& command, TraceSelection& selection) {
    command
        .add_option("paths", selection.paths,
                    "a trace file, which stands for both files of its pair, or the folder of the traces")
        ->required();
    command.add_option("--host", selection.host, "of a folder, the hosts whose names begin so");
    command.add_flag("--all", selection.all, "of a folder, all hosts; else the one that was written last");
}

std::vector<TracePair> Select(const TraceSelection& selection) {
    std::vector<TracePair> pairs;
    const auto add = [&](const TracePair& pair) {
        if (std::ranges::find(pairs, pair.first, &TracePair::first) == pairs.end()) pairs.push_back(pair);
    };
    for (const std::string& path : selection.paths) {
        const std::wstring wide = Wide(path);
        if (IsFolder(wide)) {
            for (const TracePair& pair : SelectIn(wide, selection)) add(pair);
        } else {
            add(PairOf(wide));
        }
    }
    return pairs;
}

Filter FilterOptions::Read() const {
    Filter read = filter;
    for (const TraceLevel known : {TraceLevel::Debug, TraceLevel::Info, TraceLevel::Warning, TraceLevel::Error}) {
        if (level == NameOf(known)) read.atLeast = known;
    }
    read.since = TimeBound::Read(since);
    read.until = TimeBound::Read(until);
    return read;
}

void AddCommandFilters(CLI::App& command, FilterOptions& options) {
    command.add_option("--since", options.since, "from this local time on; without a date it is meant of every day")
        ->check(IsTime);
    command.add_option("--until", options.until, "up to this local time, which is included as far as it is written")
        ->check(IsTime);
    command.add_option("--process", options.filter.processes, "of this process")->allow_extra_args(false);
    command.add_option("--thread", options.filter.threads, "of this thread")->allow_extra_args(false);
    command.add_option("--text", options.filter.text, "what holds this text, in capitals or not");
}

void AddLineFilters(CLI::App& command, FilterOptions& options) {
    command.add_option("--level", options.level, "of this level or a graver one: debug, info, warning, error")
        ->check(CLI::IsMember({"debug", "info", "warning", "error"}));
    command.add_option("--function", options.filter.function, "whose function holds this, such as Window::");
}

}  // namespace dialwright::tools
