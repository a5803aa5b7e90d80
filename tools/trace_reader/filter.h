#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "trace_reader/trace_line.h"

namespace dialwright::tools {

/// A local time as people write it, to any precision: with a date, a moment; without, a time of every day.
class TimeBound {
public:
    /// "2026-11-20", "2026-11-20 10:00", "10:00:05.25"; nothing for any other text.
    [[nodiscard]] static std::optional<TimeBound> Read(std::string_view text);

    /// Negative: the time of a line lies before it; 0: within it, as 10:00:59 lies within 10:00.
    [[nodiscard]] int Compare(std::string_view lineTime) const;

private:
    std::string text;
    bool hasDate = false;
};

enum class Verdict : std::uint8_t {
    Shown,
    LeftOut,
    /// The line does not have the field that the filter asks for.
    NotJudged,
};

/// Which lines are wanted. What is empty wants all.
struct Filter {
    std::optional<TraceLevel> atLeast;
    std::string function;
    std::string text;
    std::vector<std::uint32_t> processes;
    std::vector<std::uint32_t> threads;
    std::optional<TimeBound> since;
    std::optional<TimeBound> until;

    [[nodiscard]] Verdict Judge(const TraceFields& fields, std::string_view whole) const;
};

}  // namespace dialwright::tools
