#include "trace/time_stamp.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace dialwright {
namespace {

std::tm Local(int year, int month, int day, int hour, int minute, int second) {
    std::tm local{};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    // What the text does not show.
    local.tm_wday = 6;
    local.tm_yday = 365;
    local.tm_isdst = 1;
    return local;
}

const std::tm kSomeTime = Local(2025, 9, 8, 14, 5, 23);

struct DateRow {
    std::tm local;
    const char* expected;
};

TEST(TextOfSecond, FillsUpEachFieldOfTheDateWithZeros) {
    const DateRow rows[] = {
        {kSomeTime, "[2025-09-08 14:05:23."},
        {Local(2025, 1, 1, 0, 0, 0), "[2025-01-01 00:00:00."},
        {Local(2025, 12, 31, 23, 59, 59), "[2025-12-31 23:59:59."},
        {Local(2016, 12, 31, 23, 59, 60), "[2016-12-31 23:59:60."},
        {Local(2024, 2, 29, 9, 9, 9), "[2024-02-29 09:09:09."},
        {Local(2024, 10, 10, 10, 10, 10), "[2024-10-10 10:10:10."},
        {Local(2001, 2, 3, 4, 5, 6), "[2001-02-03 04:05:06."},
    };
    for (const DateRow& row : rows) EXPECT_EQ(row.expected, TextOfSecond(row.local, 0).date.View());
}

TEST(TextOfSecond, ShowsYearsInFourDigits) {
    const DateRow rows[] = {
        {Local(1900, 1, 1, 0, 0, 0), "[1900-01-01 00:00:00."}, {Local(1899, 1, 1, 0, 0, 0), "[1899-01-01 00:00:00."},
        {Local(1970, 1, 1, 0, 0, 0), "[1970-01-01 00:00:00."}, {Local(1999, 1, 1, 0, 0, 0), "[1999-01-01 00:00:00."},
        {Local(2000, 1, 1, 0, 0, 0), "[2000-01-01 00:00:00."}, {Local(2038, 1, 1, 0, 0, 0), "[2038-01-01 00:00:00."},
        {Local(3000, 1, 1, 0, 0, 0), "[3000-01-01 00:00:00."}, {Local(9999, 1, 1, 0, 0, 0), "[9999-01-01 00:00:00."},
        {Local(999, 1, 1, 0, 0, 0), "[0999-01-01 00:00:00."},  {Local(7, 1, 1, 0, 0, 0), "[0007-01-01 00:00:00."},
        {Local(0, 1, 1, 0, 0, 0), "[0000-01-01 00:00:00."},    {Local(10000, 1, 1, 0, 0, 0), "[10000-01-01 00:00:00."},
    };
    for (const DateRow& row : rows) EXPECT_EQ(row.expected, TextOfSecond(row.local, 0).date.View());
}

struct ZoneRow {
    long offset;
    const char* expected;
};

TEST(TextOfSecond, ShowsAnOffsetToTheEastWithAPlusSign) {
    const ZoneRow rows[] = {
        {0, " UTC+00:00] "},      {-3600, " UTC+01:00] "},  {-7200, " UTC+02:00] "},  {-19800, " UTC+05:30] "},
        {-20700, " UTC+05:45] "}, {-34200, " UTC+09:30] "}, {-36000, " UTC+10:00] "}, {-45900, " UTC+12:45] "},
        {-50400, " UTC+14:00] "}, {-60, " UTC+00:01] "},    {-3540, " UTC+00:59] "},  {-1, " UTC+00:00] "},
        {-59, " UTC+00:00] "},    {-3599, " UTC+00:59] "},  {-3601, " UTC+01:00] "},  {-86399, " UTC+23:59] "},
    };
    for (const ZoneRow& row : rows) {
        EXPECT_EQ(row.expected, TextOfSecond(kSomeTime, row.offset).zone.View()) << row.offset;
    }
}

TEST(TextOfSecond, ShowsAnOffsetToTheWestWithAMinusSign) {
    const ZoneRow rows[] = {
        {3600, " UTC-01:00] "},  {18000, " UTC-05:00] "}, {12600, " UTC-03:30] "}, {34200, " UTC-09:30] "},
        {36000, " UTC-10:00] "}, {43200, " UTC-12:00] "}, {60, " UTC-00:01] "},    {1800, " UTC-00:30] "},
        {1, " UTC-00:00] "},     {59, " UTC-00:00] "},    {3599, " UTC-00:59] "},  {86399, " UTC-23:59] "},
    };
    for (const ZoneRow& row : rows) {
        EXPECT_EQ(row.expected, TextOfSecond(kSomeTime, row.offset).zone.View()) << row.offset;
    }
}

TEST(TextOfSecond, KeepsDateAndZoneApart) {
    const SecondText text = TextOfSecond(kSomeTime, -7200);
    EXPECT_STREQ("[2025-09-08 14:05:23.", text.date.CStr());
    EXPECT_STREQ(" UTC+02:00] ", text.zone.CStr());
    // The offset moves nothing in the date, which is local already.
    EXPECT_EQ(text.date.View(), TextOfSecond(kSomeTime, 18000).date.View());
    EXPECT_EQ(text.zone.View(), TextOfSecond(Local(1970, 1, 2, 3, 4, 5), -7200).zone.View());
}

struct OffsetRow {
    long timezone;
    int daylight;
    long offset;
    const char* zone;
};

TEST(ZoneOffsetSeconds, ShowsAZoneWithDaylightTimeInSummerTimeAllYear) {
    const OffsetRow rows[] = {
        {-3600, 1, -7200, " UTC+02:00] "},   {-3600, 0, -3600, " UTC+01:00] "},   {0, 0, 0, " UTC+00:00] "},
        {0, 1, -3600, " UTC+01:00] "},       {18000, 1, 14400, " UTC-04:00] "},   {18000, 0, 18000, " UTC-05:00] "},
        {3600, 1, 0, " UTC+00:00] "},        {1800, 1, -1800, " UTC+00:30] "},    {12600, 1, 9000, " UTC-02:30] "},
        {-45900, 1, -49500, " UTC+13:45] "}, {-19800, 0, -19800, " UTC+05:30] "},
    };
    for (const OffsetRow& row : rows) {
        EXPECT_EQ(row.offset, ZoneOffsetSeconds(row.timezone, row.daylight)) << row.timezone << " " << row.daylight;
        EXPECT_EQ(row.zone, TextOfSecond(kSomeTime, ZoneOffsetSeconds(row.timezone, row.daylight)).zone.View())
            << row.timezone << " " << row.daylight;
    }
    static_assert(ZoneOffsetSeconds(-3600, 1) == -7200);
}

TEST(BreakDown, AgreesWithTheCRuntime) {
    // Steps that fall on every time of day, month and kind of year from 1970 to 2106.
    for (std::int64_t second = 0; second < 4'300'000'000; second += 777'777) {
        const std::time_t time = second;
        std::tm expected{};
        ASSERT_EQ(0, ::_gmtime64_s(&expected, &time));
        const std::tm local = BreakDown(second);
        const SecondText text = TextOfSecond(local, 0);
        ASSERT_EQ(TextOfSecond(expected, 0).date.View(), text.date.View()) << second;
    }
}

}  // namespace
}  // namespace dialwright
