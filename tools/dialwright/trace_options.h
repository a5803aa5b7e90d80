#pragma once

#include <memory>
#include <string>
#include <vector>

#include "trace_reader/file_pairs.h"
#include "trace_reader/filter.h"

namespace CLI {
class App;
}  // namespace CLI

namespace dialwright::tools {

/// Which traces are meant.
struct TraceSelection {
    std::vector<std::string> paths;
    std::string host;
    bool all = false;
};

void AddSelection(CLI::App& command, TraceSelection& selection);

/// The pairs that are there: of a file its own, of a folder the newest, or those that the options name.
[[nodiscard]] std::vector<TracePair> Select(const TraceSelection& selection);

/// The filter as it is typed, and read.
struct FilterOptions {
    std::string level;
    std::string since;
    std::string until;
    Filter filter;

    /// To be called once, when the options have been read.
    [[nodiscard]] Filter Read() const;
};

/// Time, process, thread and text, which commands have too.
void AddCommandFilters(CLI::App& command, FilterOptions& options);
/// Level and function, which lines alone have.
void AddLineFilters(CLI::App& command, FilterOptions& options);

}  // namespace dialwright::tools
