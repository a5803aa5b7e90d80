#pragma once

#include <string>
#include <string_view>

#include "trace_reader/command_rows.h"
#include "trace_reader/trace_line.h"

namespace dialwright::tools {

// All in UTF-8, without control characters but the ends of our own lines.

/// The record as it stands in the file, each of its lines with a line feed behind it.
[[nodiscard]] std::string RecordText(std::string_view record);

/// One JSON object without a line end. The host is that of a pair's name, empty where there is none.
[[nodiscard]] std::string RecordJson(std::string_view record, const TraceFields& fields, std::string_view host);

[[nodiscard]] std::string CommandText(const CommandRow& row);
[[nodiscard]] std::string CommandJson(const CommandRow& row, std::string_view host);

}  // namespace dialwright::tools
