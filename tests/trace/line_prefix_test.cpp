#include "trace/line_prefix.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "trace/settings_word.h"

namespace dialwright {
namespace {

constexpr std::uint64_t kNoTimeNoIds = TRACE_NO_TIME | TRACE_NO_PID | TRACE_NO_TID;

TimeStamp SomeTime(std::uint32_t fraction = 1'234'567) {
    static const SecondText second = [] {
        SecondText text;
        text.date.Assign("[2025-09-08 14:05:23.");
        text.zone.Assign(" UTC+02:00] ");
        return text;
    }();
    return {.second = &second, .fraction = fraction};
}

LinePrefix Usual(std::uint64_t settings) {
    return {.settings = settings,
            .time = SomeTime(),
            .processId = 4312,
            .threadId = 8876,
            .loggerName = "Dialwright",
            .sourceLine = 40,
            .levelText = "   info"};
}

std::string Shown(const LinePrefix& prefix) {
    std::array<char, kMostPrefixBytes> area{};
    BoundedText text(area);
    PutPrefix(text, prefix);
    return std::string(text.View());
}

std::string TagOf(LinePrefix prefix) {
    prefix.settings |= kNoTimeNoIds;
    return Shown(prefix);
}

struct SettingsRow {
    std::uint64_t settings;
    const char* expected;
};

TEST(PutPrefix, ShowsAllFieldsUnlessTheSettingsLeaveThemOut) {
    const SettingsRow rows[] = {
        {0, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  40    info] "},
        {kSettingsAtStart, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  40    info] "},
        {TRACE_NO_TIME, "[4312:8876] [Dialwright  40    info] "},
        {TRACE_NO_PID, "[2025-09-08 14:05:23.1234567 UTC+02:00] [:8876] [Dialwright  40    info] "},
        {TRACE_NO_TID, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:] [Dialwright  40    info] "},
        {TRACE_NO_PID | TRACE_NO_TID, "[2025-09-08 14:05:23.1234567 UTC+02:00] [Dialwright  40    info] "},
        {TRACE_NO_NAME, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [ 40    info] "},
        {TRACE_NO_LINE, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright    info] "},
        {TRACE_NO_LEVEL, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  40] "},
        {TRACE_NO_COLOR, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  40    info] "},
        {0x800000, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  40    info] "},
        {TRACE_NO_NAME | TRACE_NO_LEVEL, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] "},
        {TRACE_NO_NAME | TRACE_NO_LINE, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [   info] "},
        {TRACE_NO_LINE | TRACE_NO_LEVEL, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright] "},
        {0xF80000, "[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] "},
        {0xFF0000, ""},
        {0x7F0000, ""},
        {0xBF0000, ""},
        {0x3F0000, ""},
        {0xFE0000, "[2025-09-08 14:05:23.1234567 UTC+02:00] "},
        {0xFD0000, "[4312:] "},
        {0xFB0000, "[:8876] "},
        {0xF70000, "[Dialwright] "},
        {0xEF0000, ""},
        {0xE70000, "[Dialwright  40] "},
        {0xDF0000, "[   info] "},
        {0xCF0000, "[ 40    info] "},
        {0xD70000, "[Dialwright    info] "},
        {0xC70000, "[Dialwright  40    info] "},
    };
    for (const SettingsRow& row : rows) {
        EXPECT_EQ(row.expected, Shown(Usual(row.settings))) << std::hex << row.settings;
    }
}

/// What the byte of the prefix's settings leaves of the usual prefix, by looking its parts up.
std::string LookedUp(unsigned byte) {
    static constexpr std::array<const char*, 4> kIds = {"[4312:8876] ", "[:8876] ", "[4312:] ", ""};
    static constexpr std::array<const char*, 8> kTags = {
        "[Dialwright  40    info] ",
        "[ 40    info] ",
        "[Dialwright    info] ",
        "[   info] ",
        "[Dialwright  40] ",
        "",
        "[Dialwright] ",
        "",
    };
    std::string text = byte % 2 == 0 ? "[2025-09-08 14:05:23.1234567 UTC+02:00] " : "";
    text += kIds[byte / 2 % 4];
    text += kTags[byte / 8 % 8];
    return text;
}

TEST(PutPrefix, AgreesWithALookUpForEachOfThe256Settings) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::uint64_t settings = std::uint64_t{byte} << 16U;
        EXPECT_EQ(LookedUp(byte), Shown(Usual(settings))) << std::hex << settings;
    }
}

TEST(PutPrefix, DoesNotLookAtOtherSettings) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::uint64_t settings = ~std::uint64_t{0xFF0000} | std::uint64_t{byte} << 16U;
        EXPECT_EQ(LookedUp(byte), Shown(Usual(settings))) << std::hex << settings;
    }
}

TEST(PutPrefix, ShowsTheFractionInSevenDigits) {
    for (const auto& [fraction, expected] : {std::pair{0U, "[2025-09-08 14:05:23.0000000 UTC+02:00] "},
                                             {1U, "[2025-09-08 14:05:23.0000001 UTC+02:00] "},
                                             {10'000U, "[2025-09-08 14:05:23.0010000 UTC+02:00] "},
                                             {999'999U, "[2025-09-08 14:05:23.0999999 UTC+02:00] "},
                                             {1'000'000U, "[2025-09-08 14:05:23.1000000 UTC+02:00] "},
                                             {9'999'999U, "[2025-09-08 14:05:23.9999999 UTC+02:00] "}}) {
        LinePrefix prefix = Usual(0xFE0000);
        prefix.time = SomeTime(fraction);
        EXPECT_EQ(expected, Shown(prefix));
    }
}

TEST(PutPrefix, TakesTheTimeAsItStands) {
    SecondText second;
    second.date.Assign("<date ");
    second.zone.Assign(" zone>");
    LinePrefix prefix = Usual(0xFE0000);
    prefix.time = {.second = &second, .fraction = 0};
    EXPECT_EQ("<date 0000000 zone>", Shown(prefix));
}

TEST(PutPrefix, NeedsNoTimeWhereNoneIsShown) {
    LinePrefix prefix = Usual(TRACE_NO_TIME);
    prefix.time.second = nullptr;
    EXPECT_EQ("[4312:8876] [Dialwright  40    info] ", Shown(prefix));
}

TEST(PutPrefix, ShowsIdsOfAnySize) {
    LinePrefix prefix = Usual(0xF90000);
    prefix.processId = 0;
    prefix.threadId = 4;
    EXPECT_EQ("[0:4] ", Shown(prefix));
    prefix.processId = 4'294'967'295;
    prefix.threadId = 2'147'483'648;
    EXPECT_EQ("[4294967295:2147483648] ", Shown(prefix));
}

struct TagRow {
    std::uint64_t settings;
    std::string name;
    int line;
    std::string level;
    std::string expected;
};

void ExpectTags(const std::vector<TagRow>& rows) {
    for (const TagRow& row : rows) {
        LinePrefix prefix = Usual(row.settings);
        prefix.loggerName = row.name;
        prefix.sourceLine = row.line;
        prefix.levelText = row.level;
        EXPECT_EQ(row.expected, TagOf(prefix))
            << std::hex << row.settings << std::dec << " " << row.name << " " << row.line << " " << row.level;
    }
}

TEST(PutPrefix, CutsTheNameTo32Bytes) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    ExpectTags({
        {0, letters.substr(0, 31), 40, "   info", "[abcdefghijklmnopqrstuvwxyz01234  40    info] "},
        {0, letters.substr(0, 32), 40, "   info", "[abcdefghijklmnopqrstuvwxyz012345  40    info] "},
        {0, letters.substr(0, 33), 40, "   info", "[abcdefghijklmnopqrstuvwxyz012345  40    info] "},
        {0, letters, 40, "   info", "[abcdefghijklmnopqrstuvwxyz012345  40    info] "},
        {0, "n", 40, "   info", "[n  40    info] "},
        {0, " ", 40, "   info", "[   40    info] "},
        {TRACE_NO_LINE | TRACE_NO_LEVEL, letters, 40, "   info", "[abcdefghijklmnopqrstuvwxyz012345] "},
        {TRACE_NO_LINE | TRACE_NO_LEVEL, std::string(5000, 'n'), 40, "   info", "[" + std::string(32, 'n') + "] "},
    });
}

TEST(PutPrefix, CutsTheLevelTo16Bytes) {
    ExpectTags({
        {0, "n", 1, "0123456789abcde", "[n  1 0123456789abcde] "},
        {0, "n", 1, "0123456789abcdef", "[n  1 0123456789abcdef] "},
        {0, "n", 1, "0123456789abcdefg", "[n  1 0123456789abcdef] "},
        {0, "n", 1, std::string(5000, 'l'), "[n  1 llllllllllllllll] "},
        {0, "n", 1, "x", "[n  1 x] "},
        {TRACE_NO_NAME | TRACE_NO_LINE, "n", 1, "0123456789abcdefg", "[0123456789abcdef] "},
    });
}

TEST(PutPrefix, HasNoTagWithoutNameAndLevel) {
    ExpectTags({
        {0, "", 40, "", ""},
        {TRACE_NO_NAME, "n", 40, "", ""},
        {TRACE_NO_LEVEL, "", 40, "   info", ""},
        {TRACE_NO_NAME | TRACE_NO_LEVEL, "n", 40, "   info", ""},
        {TRACE_NO_LINE, "", 40, "", ""},
        {TRACE_NO_LINE | TRACE_NO_NAME, "n", 40, "", ""},
        {TRACE_NO_LINE | TRACE_NO_LEVEL, "", 40, "   info", ""},
    });
}

TEST(PutPrefix, ShowsALevelWithoutAName) {
    ExpectTags({
        {0, "", 40, "   info", "[ 40    info] "},
        {TRACE_NO_LINE, "", 40, "   info", "[   info] "},
        {0, "", 0, "x", "[ 0 x] "},
    });
}

TEST(PutPrefix, LeavesTheBlankOfAnEmptyLevelBesideAName) {
    ExpectTags({
        {0, "Dialwright", 40, "", "[Dialwright  40 ] "},
        {TRACE_NO_LINE, "Dialwright", 40, "", "[Dialwright ] "},
        {TRACE_NO_LEVEL, "Dialwright", 40, "", "[Dialwright  40] "},
        {TRACE_NO_LEVEL | TRACE_NO_LINE, "Dialwright", 40, "", "[Dialwright] "},
    });
}

TEST(PutPrefix, ShowsAnySourceLine) {
    constexpr int kMost = (std::numeric_limits<int>::max)();
    constexpr int kLeast = (std::numeric_limits<int>::min)();
    ExpectTags({
        {0, "n", 0, "l", "[n  0 l] "},
        {0, "n", -1, "l", "[n  -1 l] "},
        {0, "n", 1418, "l", "[n  1418 l] "},
        {0, "n", kMost, "l", "[n  2147483647 l] "},
        {0, "n", kLeast, "l", "[n  -2147483648 l] "},
        {TRACE_NO_LEVEL, "n", kLeast, "l", "[n  -2147483648] "},
        {TRACE_NO_LINE, "n", kLeast, "l", "[n l] "},
    });
}

TEST(PutPrefix, FitsItsRoomAtItsLongest) {
    const LinePrefix prefix{.time = SomeTime(),
                            .processId = 4'294'967'295,
                            .threadId = 4'294'967'295,
                            .loggerName = std::string_view("nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn"),
                            .sourceLine = (std::numeric_limits<int>::min)(),
                            .levelText = "lllllllllllllllll"};
    const std::string text = Shown(prefix);
    EXPECT_LT(text.size(), kMostPrefixBytes);
    EXPECT_TRUE(text.ends_with("  -2147483648 llllllllllllllll] ")) << text;
}

TEST(PutPrefix, AppendsToWhatIsThere) {
    std::array<char, 64> area{};
    BoundedText text(area);
    text.Put("before ");
    PutPrefix(text, Usual(kNoTimeNoIds));
    PutPrefix(text, Usual(0xF90000));
    EXPECT_EQ("before [Dialwright  40    info] [4312:8876] ", text.View());
}

TEST(PutPrefix, DoesNotTouchWhatStandsBeforeIt) {
    std::array<char, 64> area{};
    BoundedText text(area);
    text.Put("before");
    PutPrefix(text, Usual(0xFF0000));
    PutPrefix(text, Usual(kNoTimeNoIds | TRACE_NO_NAME | TRACE_NO_LEVEL));
    EXPECT_EQ("before", text.View());
}

}  // namespace
}  // namespace dialwright
