#include "trace_formats.h"

#include <array>
#include <cstdio>

#include "check/source_text.h"
#include "json_text.h"
#include "printable.h"

namespace dialwright::tools {
namespace {

constexpr std::size_t kIndent = 80;

std::string_view WithoutReturn(std::string_view line) {
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

/// Calls `take` for each line of a record, its line end taken off.
template <class Take>
void ForEachLine(std::string_view record, Take take) {
    for (;;) {
        const std::size_t end = record.find('\n');
        take(WithoutReturn(record.substr(0, end)));
        if (end == std::string_view::npos) return;
        record.remove_prefix(end + 1);
    }
}

/// A message of several lines, its indent taken off.
std::string Folded(std::string_view message) {
    std::string text;
    bool isFirst = true;
    ForEachLine(message, [&](std::string_view line) {
        const bool indented = !isFirst && line.find_first_not_of(' ') >= kIndent && line.size() >= kIndent;
        if (!isFirst) text += '\n';
        text += Printable(indented ? line.substr(kIndent) : line);
        isFirst = false;
    });
    return text;
}

std::string OnOneLine(std::string text) {
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos;) text.replace(at, 1, " | ");
    return text;
}

template <class Value>
void PutIfKnown(Json& json, const char* name, const std::optional<Value>& value) {
    if (value) json[name] = *value;
}

void PutIfThere(Json& json, const char* name, std::string_view text) {
    if (!text.empty()) json[name] = Printable(text);
}

std::string Dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

std::string Seconds(std::int64_t microseconds) {
    std::array<char, 32> text{};
    (void)std::snprintf(text.data(), text.size(), "%.3f", static_cast<double>(microseconds) / 1e6);
    return text.data();
}

std::string Padded(std::string text, std::size_t width) {
    text.resize((std::max)(text.size(), width), ' ');
    return text;
}

}  // namespace

std::string RecordText(std::string_view record) {
    std::string text;
    ForEachLine(record, [&](std::string_view line) { text += Printable(line) + "\n"; });
    return text;
}

std::string RecordJson(std::string_view record, const TraceFields& fields, std::string_view host) {
    Json json = Json::object();
    PutIfThere(json, "host", host);
    if (!fields.HasPrefix()) {
        json["raw"] = Folded(record);
        return Dump(json);
    }
    PutIfThere(json, "time", fields.time);
    PutIfThere(json, "zone", fields.zone);
    PutIfKnown(json, "process", fields.process);
    PutIfKnown(json, "thread", fields.thread);
    PutIfThere(json, "logger", fields.logger);
    PutIfKnown(json, "number", fields.number);
    if (fields.level) json["level"] = NameOf(*fields.level);
    PutIfThere(json, "function", fields.function);
    json["message"] = Folded(fields.message);
    return Dump(json);
}

std::string CommandText(const CommandRow& row) {
    std::string text = Printable(row.time) + "  " + std::to_string(row.process) + ":" + std::to_string(row.thread) +
                       "  " + Padded(std::string(NameOf(row.result)), 7) + "  " + Seconds(row.durationMicroseconds) +
                       " s  attempts " + std::to_string(row.attempts) + "  " + Printable(row.command) + "\n";
    if (row.problem.empty()) return text;
    return text + "    " + std::string(NameOf(row.problemLevel)) + ": " + OnOneLine(Folded(row.problem)) + "\n";
}

std::string CommandJson(const CommandRow& row, std::string_view host) {
    Json json = Json::object();
    PutIfThere(json, "host", host);
    PutIfThere(json, "time", row.time);
    json["process"] = row.process;
    json["thread"] = row.thread;
    json["command"] = Printable(row.command);
    json["fromScript"] = row.fromScript;
    json["result"] = NameOf(row.result);
    json["durationMs"] = static_cast<double>(row.durationMicroseconds) / 1000;
    json["attempts"] = row.attempts;
    if (!row.problem.empty()) json["problem"] = {{"level", NameOf(row.problemLevel)}, {"text", Folded(row.problem)}};
    return Dump(json);
}

}  // namespace dialwright::tools
