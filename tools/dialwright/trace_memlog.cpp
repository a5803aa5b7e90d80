#include <cstdio>
#include <memory>

#include "check/source_text.h"
#include "trace_commands.h"
#include "trace_options.h"
#include "trace_output.h"
#include "trace_reader/file_pieces.h"
#include "trace_reader/memory_log_search.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

struct Options {
    std::string dump;
    FilterOptions filter;
    bool json = false;
};

/// Whether the dump was read to its end.
bool ReadDump(const Options& options, MemoryLogSearch& search) {
    FilePieces pieces(Wide(options.dump));
    std::string bytes;
    auto outcome = pieces.Next(bytes);
    for (; outcome == FilePieces::Outcome::Bytes; outcome = pieces.Next(bytes)) search.Feed(bytes);
    if (outcome == FilePieces::Outcome::End) return true;
    std::fprintf(stderr, "dialwright: %s cannot be read\n", options.dump.c_str());
    return false;
}

int ShowMemoryLog(const Options& options) {
    RecordPrinter printer(options.filter.Read(), options.json, "lines");
    int logs = 0;
    MemoryLogSearch search([&](const MemoryLines& log) {
        ++logs;
        for (const std::string& line : log.lines) printer.Print(line, "");
    });
    if (!ReadDump(options, search)) return kUsage;
    printer.Finish();
    if (logs == 0) std::fprintf(stderr, "dialwright: the dump holds no lines of a trace\n");
    if (logs > 1) std::fprintf(stderr, "dialwright: the dump holds %d such logs; they follow each other\n", logs);
    return printer.Printed() == 0 ? kFound : kDone;
}

}  // namespace

Action DefineTraceMemlog(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    command.add_option("dump", options->dump, "the crash dump")->required();
    AddCommandFilters(command, options->filter);
    AddLineFilters(command, options->filter);
    command.add_flag("--json", options->json, "print JSON");
    command.footer(
        "The last 1,024 lines, each cut to 1,023 bytes, where the crashed process kept them.\n\n"
        "  dialwright trace memlog \"host.exe [4312.8876] 2025-09-08 14.05.23.dmp\"\n\n"
        "Exit codes: 0 shown, 1 nothing found, 2 usage or a file that cannot be read.");
    return [options] { return ShowMemoryLog(*options); };
}

}  // namespace dialwright::tools
