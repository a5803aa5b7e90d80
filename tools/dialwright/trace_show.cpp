#include <cstdio>
#include <memory>

#include "platform/text_encoding.h"
#include "trace_commands.h"
#include "trace_formats.h"
#include "trace_options.h"
#include "trace_output.h"
#include "trace_reader/record_source.h"

#include <CLI/CLI.hpp>

namespace dialwright::tools {
namespace {

struct Options {
    TraceSelection selection;
    FilterOptions filter;
    bool commands = false;
    bool json = false;
};

/// Whether every path that was named is there.
bool AllAreThere(const std::vector<TracePair>& pairs) {
    bool all = true;
    for (const TracePair& pair : pairs) {
        if (LastWritten(pair) != 0) continue;
        std::fprintf(stderr, "dialwright: %s cannot be read\n", ToUtf8(pair.first).c_str());
        all = false;
    }
    return all;
}

/// Whether each file was read to its end.
bool TellBroken(const std::vector<std::wstring>& files) {
    for (const std::wstring& file : files) {
        std::fprintf(stderr, "dialwright: %s was begun anew or cannot be read to its end\n", ToUtf8(file).c_str());
    }
    return files.empty();
}

int CodeFor(bool whole, std::uint64_t printed) {
    if (!whole) return kUsage;
    return printed == 0 ? kFound : kDone;
}

int ShowRecords(const Options& options, const std::vector<TracePair>& pairs) {
    JoinedRecords records(pairs);
    RecordPrinter printer(options.filter.Read(), options.json, "lines");
    std::uint64_t count = 0;
    for (auto record = records.Next(); record; record = records.Next()) {
        printer.Print(record->text, ToUtf8(pairs[record->source].name));
        if (++count % 1024 == 0 && !printer.Flush()) return kDone;  // nobody reads any more
    }
    printer.Finish();
    return CodeFor(TellBroken(records.Broken()), printer.Printed());
}

bool Wants(const Filter& filter, const CommandRow& row) {
    TraceFields fields;
    fields.time = row.time;
    fields.process = row.process;
    fields.thread = row.thread;
    return filter.Judge(fields, row.command + "\n" + row.problem) == Verdict::Shown;
}

int ShowCommands(const Options& options, const std::vector<TracePair>& pairs) {
    JoinedRecords records(pairs);
    CommandRows rows;
    for (auto record = records.Next(); record; record = records.Next()) {
        rows.Add(record->source, ReadFields(record->text));
    }
    const Filter filter = options.filter.Read();
    ListPrinter printer(options.json, "commands");
    std::uint64_t printed = 0;
    for (const CommandRow& row : rows.Take()) {
        if (!Wants(filter, row)) continue;
        ++printed;
        printer.Print(options.json ? CommandJson(row, ToUtf8(pairs[row.source].name)) : CommandText(row));
    }
    printer.Finish();
    return CodeFor(TellBroken(records.Broken()), printed);
}

int Show(const Options& options) {
    const std::vector<TracePair> pairs = Select(options.selection);
    if (!AllAreThere(pairs)) return kUsage;
    if (pairs.empty()) std::fprintf(stderr, "dialwright: there is no such trace\n");
    return options.commands ? ShowCommands(options, pairs) : ShowRecords(options, pairs);
}

}  // namespace

Action DefineTraceShow(CLI::App& command) {
    const auto options = std::make_shared<Options>();
    AddSelection(command, options->selection);
    AddCommandFilters(command, options->filter);
    AddLineFilters(command, options->filter);
    CLI::Option* const commands = command.add_flag("--commands", options->commands, "a row for each command");
    for (const char* name : {"--level", "--function"}) commands->excludes(command.get_option(name));
    command.add_flag("--json", options->json, "print JSON");
    command.footer(
        "Both files of a pair are joined, and several hosts by time. Lines that cannot be taken apart are shown as they\n"
        "are, unless an option asks for what they lack.\n\n"
        "  dialwright trace show logs\\trace --level warning --since 10:00\n"
        "  dialwright trace show logs\\trace --commands\n\n"
        "Exit codes: 0 shown, 1 nothing found, 2 usage or a file that cannot be read.");
    return [options] { return Show(*options); };
}

}  // namespace dialwright::tools
