#include "trace_output.h"

#include <cinttypes>
#include <cstdio>

#include "input.h"
#include "trace_formats.h"

namespace dialwright::tools {
namespace {

constexpr std::size_t kWriteAbove = std::size_t{64} * 1024;

}  // namespace

ListPrinter::ListPrinter(bool json, std::string_view list) : json(json), inList(json && !list.empty()) {
    if (inList) waiting = "{\n  \"schema\": 1,\n  \"" + std::string(list) + "\": [";
}

void ListPrinter::Print(std::string_view text) {
    if (inList) waiting += isFirst ? "\n    " : ",\n    ";
    waiting += text;
    if (json && !inList) waiting += '\n';
    isFirst = false;
    if (waiting.size() > kWriteAbove) Flush();
}

void ListPrinter::Finish() {
    if (inList) waiting += isFirst ? "]\n}\n" : "\n  ]\n}\n";
    Flush();
}

bool ListPrinter::Flush() {
    if (!broken && !waiting.empty()) WriteOutput(waiting);
    waiting.clear();
    broken = broken || std::ferror(stdout) != 0;
    return !broken;
}

void RecordPrinter::Print(std::string_view record, std::string_view host) {
    const TraceFields fields = ReadFields(record);
    const Verdict verdict = filter.Judge(fields, record);
    if (verdict == Verdict::NotJudged) ++notJudged;
    if (verdict != Verdict::Shown) return;
    ++printed;
    printer.Print(json ? RecordJson(record, fields, host) : RecordText(record));
}

bool RecordPrinter::Wants(std::string_view record) const {
    return filter.Judge(ReadFields(record), record) == Verdict::Shown;
}

void RecordPrinter::Finish() {
    printer.Finish();
    if (notJudged == 0) return;
    std::fprintf(stderr, "dialwright: %" PRIu64 " lines lack what the options ask for and were left out\n", notJudged);
}

}  // namespace dialwright::tools
