#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace dialwright::tools {

/// In the order of their weight.
enum class TraceLevel : std::uint8_t { Debug, Info, Warning, Error };

[[nodiscard]] std::string_view NameOf(TraceLevel level);

/// The fields of one line of the trace. Settings may leave out any of them; all views point into the line.
struct TraceFields {
    std::string_view time;
    std::string_view zone;
    std::optional<std::uint32_t> process;
    std::optional<std::uint32_t> thread;
    std::string_view logger;
    std::optional<std::uint32_t> number;
    std::optional<TraceLevel> level;
    /// Empty for the logger's own lines.
    std::string_view function;
    /// What stands behind the prefix and the function; continuation lines included.
    std::string_view message;

    /// Whether there was any prefix. A torn line has none, nor has the one that a rotation writes.
    [[nodiscard]] bool HasPrefix() const {
        return !time.empty() || process.has_value() || thread.has_value() || !logger.empty() || number.has_value() ||
               level.has_value();
    }
};

[[nodiscard]] TraceFields ReadFields(std::string_view line);

/// The moment in units of 100 ns, the same for all zones; nothing where time or zone is missing or no date.
[[nodiscard]] std::optional<std::int64_t> InstantOf(const TraceFields& fields);

}  // namespace dialwright::tools
