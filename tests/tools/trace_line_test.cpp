#include "trace_reader/trace_line.h"

#include <gtest/gtest.h>

#include <string>

namespace dialwright::tools {
namespace {

constexpr std::string_view kWhole =
    "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  40    info] Window::SetTextHelper: Setting text";

TEST(TraceLineFields, OfAWholeLineAreAllFound) {
    const TraceFields fields = ReadFields(kWhole);
    EXPECT_EQ("2025-09-08 14:05:23.1234567", fields.time);
    EXPECT_EQ("UTC+02:00", fields.zone);
    EXPECT_EQ(4312U, fields.process);
    EXPECT_EQ(8876U, fields.thread);
    EXPECT_EQ("Dialwright", fields.logger);
    EXPECT_EQ(40U, fields.number);
    EXPECT_EQ(TraceLevel::Info, fields.level);
    EXPECT_EQ("Window::SetTextHelper", fields.function);
    EXPECT_EQ("Setting text", fields.message);
}

TEST(TraceLineFields, OfAFunctionWithBlanksAreFound) {
    const TraceFields fields =
        ReadFields("[1:2] [Dialwright  40    info] Window::FindChildControl::<lambda_1>::operator (): Found: 7");
    EXPECT_EQ("Window::FindChildControl::<lambda_1>::operator ()", fields.function);
    EXPECT_EQ("Found: 7", fields.message);
}

struct LevelRow {
    std::string_view line;
    TraceLevel level;
    std::string_view name;
};

TEST(TraceLineFields, HoldTheLevel) {
    constexpr LevelRow kRows[] = {
        {.line = "[Dialwright  41   debug] a: b", .level = TraceLevel::Debug, .name = "debug"},
        {.line = "[Dialwright  40    info] a: b", .level = TraceLevel::Info, .name = "info"},
        {.line = "[Dialwright  42 warning] a: b", .level = TraceLevel::Warning, .name = "warning"},
        {.line = "[Dialwright  43   error] a: b", .level = TraceLevel::Error, .name = "error"},
    };
    for (const LevelRow& row : kRows) {
        EXPECT_EQ(row.level, ReadFields(row.line).level) << row.line;
        EXPECT_EQ(row.name, NameOf(row.level));
    }
    EXPECT_LT(TraceLevel::Debug, TraceLevel::Info);
    EXPECT_LT(TraceLevel::Info, TraceLevel::Warning);
    EXPECT_LT(TraceLevel::Warning, TraceLevel::Error);
}

TEST(TraceLineFields, OfTheLoggersOwnLinesHaveNoFunction) {
    for (const std::string_view message :
         {"(Time Zone: X) (Mon, 5s) 2025-09-08 14:05:23.123 type: 0x10f size: 512", "trace stopped", "C:\\a\\host.exe",
          "(Mon, 5s) setting changed at 2025-09-08 14:05:23.123 type: 0x10f"}) {
        const std::string line = "[Dialwright  1359    info] " + std::string(message);
        const TraceFields fields = ReadFields(line);
        EXPECT_EQ("", fields.function) << line;
        EXPECT_EQ(message, fields.message);
        EXPECT_EQ(1359U, fields.number);
    }
}

struct PartRow {
    std::string_view line;
    std::string_view time;
    std::optional<std::uint32_t> process;
    std::optional<std::uint32_t> thread;
    std::string_view logger;
    std::optional<std::uint32_t> number;
    std::optional<TraceLevel> level;
};

TEST(TraceLineFields, AreFoundWhateverTheSettingsLeaveOut) {
    constexpr std::string_view kTime = "2025-09-08 14:05:23.1234567";
    const PartRow rows[] = {
        {"[1:2] [Dialwright  40    info] f: m", "", 1, 2, "Dialwright", 40, TraceLevel::Info},
        {"[:2] [Dialwright  40    info] f: m", "", {}, 2, "Dialwright", 40, TraceLevel::Info},
        {"[1:] [Dialwright  40    info] f: m", "", 1, {}, "Dialwright", 40, TraceLevel::Info},
        {"[Dialwright  40    info] f: m", "", {}, {}, "Dialwright", 40, TraceLevel::Info},
        {"[ 40    info] f: m", "", {}, {}, "", 40, TraceLevel::Info},
        {"[Dialwright    info] f: m", "", {}, {}, "Dialwright", {}, TraceLevel::Info},
        {"[Dialwright  40] f: m", "", {}, {}, "Dialwright", 40, {}},
        {"[   info] f: m", "", {}, {}, "", {}, TraceLevel::Info},
        {"[Dialwright] f: m", "", {}, {}, "Dialwright", {}, {}},
        {"[2025-09-08 14:05:23.1234567 UTC-05:30] f: m", kTime, {}, {}, "", {}, {}},
    };
    for (const PartRow& row : rows) {
        const TraceFields fields = ReadFields(row.line);
        EXPECT_EQ(row.time, fields.time) << row.line;
        EXPECT_EQ(row.process, fields.process) << row.line;
        EXPECT_EQ(row.thread, fields.thread) << row.line;
        EXPECT_EQ(row.logger, fields.logger) << row.line;
        EXPECT_EQ(row.number, fields.number) << row.line;
        EXPECT_EQ(row.level, fields.level) << row.line;
        EXPECT_EQ("f", fields.function) << row.line;
        EXPECT_EQ("m", fields.message) << row.line;
    }
}

TEST(TraceLineFields, AreNoneInWhatIsNoLine) {
    for (const std::string_view line :
         {"", "[", "[]", "torn", "[2025-09-08 14:05", "[12", "[12:", "]", "[ ",
          "(Time Zone: X) (y) log rotated at 2025", "\r", "[2025-09-08 14:05:23.1234567 UTC+02:00]"}) {
        const TraceFields fields = ReadFields(line);
        EXPECT_FALSE(fields.HasPrefix()) << line;
        EXPECT_EQ(line, fields.message);
        EXPECT_EQ(std::nullopt, InstantOf(fields));
    }
}

TEST(TraceLineFields, OfEveryBeginningOfALineLeaveNothingOut) {
    for (std::size_t length = 0; length <= kWhole.size(); ++length) {
        const std::string_view torn = kWhole.substr(0, length);
        EXPECT_TRUE(torn.ends_with(ReadFields(torn).message)) << torn;
    }
}

struct InstantRow {
    std::string_view line;
    std::optional<std::int64_t> instant;
};

TEST(TraceLineInstant, IsTheSameInAllZones) {
    constexpr InstantRow kRows[] = {
        {.line = "[1970-01-01 00:00:00.0000000 UTC+00:00] x", .instant = 0},
        {.line = "[1970-01-01 00:00:01.0000007 UTC+00:00] x", .instant = 10'000'007},
        {.line = "[1970-01-01 02:00:00.0000000 UTC+02:00] x", .instant = 0},
        {.line = "[1969-12-31 18:30:00.0000000 UTC-05:30] x", .instant = 0},
        {.line = "[2024-02-29 00:00:00.0000000 UTC+00:00] x", .instant = 17'091'648'000'000'000},
        {.line = "[2025-02-29 00:00:00.0000000 UTC+00:00] x", .instant = std::nullopt},
        {.line = "[1:2] x", .instant = std::nullopt},
    };
    for (const InstantRow& row : kRows) EXPECT_EQ(row.instant, InstantOf(ReadFields(row.line))) << row.line;
}

}  // namespace
}  // namespace dialwright::tools
