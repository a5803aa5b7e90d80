#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "trace/trace.h"

namespace dialwright {

struct LevelRow {
    LogLevel bit;
    const char* text;
    int sourceLine;
};

// The texts are seven characters wide, right-aligned; their leading spaces are part of every comparison.
inline constexpr std::array<LevelRow, 4> kLevelRows = {{
    {.bit = LOG_INFO, .text = "   info", .sourceLine = 40},
    {.bit = LOG_DEBUG, .text = "  debug", .sourceLine = 41},
    {.bit = LOG_WARNING, .text = "warning", .sourceLine = 42},
    {.bit = LOG_ERROR, .text = "  error", .sourceLine = 43},
}};

static_assert([] {
    for (const LevelRow& row : kLevelRows) {
        if (std::string_view(row.text).size() != 7) return false;
    }
    return true;
}());

/// Visits the rows whose bit is set in the mask, lowest bit first.
template <class Visit>
void ForEachLevel(std::uint64_t mask, Visit&& visit) {
    for (const LevelRow& row : kLevelRows) {
        if ((mask & row.bit) != 0) visit(row);
    }
}

}  // namespace dialwright
