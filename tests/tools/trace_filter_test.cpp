#include "trace_reader/filter.h"

#include <gtest/gtest.h>

#include <string>

namespace dialwright::tools {
namespace {

constexpr std::string_view kLine =
    "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  42 warning] Window::Find: Nothing \"Sign in\"";

Verdict Judge(const Filter& filter, std::string_view line = kLine) { return filter.Judge(ReadFields(line), line); }

struct TimeRow {
    const char* bound;
    int compared;
};

TEST(TimeBounds, ComparePreciselyAsFarAsTheyAreWritten) {
    constexpr TimeRow kRows[] = {
        {.bound = "2025-09-08", .compared = 0},
        {.bound = "2025-09-09", .compared = -1},
        {.bound = "2025-09-08 14:05", .compared = 0},
        {.bound = "2025-09-08T14:05", .compared = 0},
        {.bound = "2025-09-08 14:06", .compared = -1},
        {.bound = "2025-09-08 14:05:22", .compared = 1},
        {.bound = "2025-09-08 14:05:23.2", .compared = -1},
        {.bound = "2025-09-08 14:05:23.1", .compared = 0},
        {.bound = "14:05", .compared = 0},
        {.bound = "14:04", .compared = 1},
        {.bound = "14:05:24", .compared = -1},
        {.bound = "00:00", .compared = 1},
    };
    for (const TimeRow& row : kRows) {
        const auto bound = TimeBound::Read(row.bound);
        EXPECT_TRUE(bound) << row.bound;
        const int compared = bound.value_or(TimeBound()).Compare(ReadFields(kLine).time);
        EXPECT_EQ(row.compared, compared < 0 ? -1 : compared > 0 ? 1 : 0) << row.bound;
    }
}

TEST(TimeBounds, AreNothingElse) {
    for (const char* text : {"", "10", "1:00", "10:0", "10:00:", "10:00:00.", "10:00:00.12345678", "2025-9-8", "now",
                             "2025-09-08x10:00", "2025-09-08 ", "2025-09-08 10", "10:00 2025-09-08", "10:00:00.1x"}) {
        EXPECT_FALSE(TimeBound::Read(text)) << text;
    }
}

TEST(TraceFilter, WithoutAWishShowsAll) {
    EXPECT_EQ(Verdict::Shown, Judge({}));
    EXPECT_EQ(Verdict::Shown, Judge({}, "torn"));
    EXPECT_EQ(Verdict::Shown, Judge({}, ""));
}

struct FilterRow {
    const char* what;
    Filter filter;
    Verdict verdict;
};

TEST(TraceFilter, ShowsWhatMeetsEveryWish) {
    const auto at = [](const char* text) { return TimeBound::Read(text); };
    const auto text = [](const char* wanted) {
        Filter filter;
        filter.text = wanted;
        return filter;
    };
    const auto function = [](const char* wanted) {
        Filter filter;
        filter.function = wanted;
        return filter;
    };
    const auto level = [](TraceLevel wanted) {
        Filter filter;
        filter.atLeast = wanted;
        return filter;
    };
    const auto ids = [](std::vector<std::uint32_t> processes, std::vector<std::uint32_t> threads) {
        Filter filter;
        filter.processes = std::move(processes);
        filter.threads = std::move(threads);
        return filter;
    };
    const auto times = [](std::optional<TimeBound> since, std::optional<TimeBound> until) {
        Filter filter;
        filter.since = std::move(since);
        filter.until = std::move(until);
        return filter;
    };
    const std::vector<FilterRow> rows = {
        {"debug", level(TraceLevel::Debug), Verdict::Shown},
        {"warning", level(TraceLevel::Warning), Verdict::Shown},
        {"error", level(TraceLevel::Error), Verdict::LeftOut},
        {"text", text("sign IN"), Verdict::Shown},
        {"text of the prefix", text("4312:8876"), Verdict::Shown},
        {"other text", text("sign out"), Verdict::LeftOut},
        {"function", function("Window::"), Verdict::Shown},
        {"function in any case", function("find"), Verdict::Shown},
        {"what is no function", function("Nothing"), Verdict::LeftOut},
        {"process", ids({1, 4312}, {}), Verdict::Shown},
        {"other process", ids({1}, {}), Verdict::LeftOut},
        {"thread", ids({}, {8876}), Verdict::Shown},
        {"other thread", ids({4312}, {1}), Verdict::LeftOut},
        {"since", times(at("14:05"), {}), Verdict::Shown},
        {"since later", times(at("14:06"), {}), Verdict::LeftOut},
        {"until", times({}, at("14:05")), Verdict::Shown},
        {"until before", times({}, at("14:04:59")), Verdict::LeftOut},
        {"one minute", times(at("14:05"), at("14:05")), Verdict::Shown},
    };
    for (const FilterRow& row : rows) EXPECT_EQ(row.verdict, Judge(row.filter)) << row.what;
}

TEST(TraceFilter, JudgesNoLineThatLacksTheField) {
    Filter filter;
    filter.atLeast = TraceLevel::Debug;
    EXPECT_EQ(Verdict::NotJudged, Judge(filter, "torn"));
    filter.text = "t";
    EXPECT_EQ(Verdict::NotJudged, Judge(filter, "torn"));
    filter.text = "whole";
    EXPECT_EQ(Verdict::LeftOut, Judge(filter, "torn"));
}

}  // namespace
}  // namespace dialwright::tools
