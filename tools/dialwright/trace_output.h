#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "trace_reader/filter.h"
#include "trace_reader/trace_line.h"

namespace dialwright::tools {

/// Prints what comes in one after the other: lines as they are, or the elements of one JSON list.
class ListPrinter {
public:
    /// `list` is the name of the list within the JSON document; without one, JSON objects stand on lines of their own.
    ListPrinter(bool json, std::string_view list);

    void Print(std::string_view text);
    void Finish();

    /// Writes out what waits. Whether anybody still reads it.
    bool Flush();

private:
    bool json;
    bool inList;
    bool isFirst = true;
    bool broken = false;
    std::string waiting;
};

/// Prints the records that the filter wants.
class RecordPrinter {
public:
    RecordPrinter(Filter wanted, bool asJson, std::string_view list)
        : filter(std::move(wanted)), json(asJson), printer(asJson, list) {}

    void Print(std::string_view record, std::string_view host);
    [[nodiscard]] bool Wants(std::string_view record) const;
    [[nodiscard]] bool Flush() { return printer.Flush(); }
    /// Ends the output and tells what could not be judged.
    void Finish();

    [[nodiscard]] std::uint64_t Printed() const { return printed; }

private:
    Filter filter;
    bool json;
    ListPrinter printer;
    std::uint64_t printed = 0;
    std::uint64_t notJudged = 0;
};

}  // namespace dialwright::tools
