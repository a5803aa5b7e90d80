#include "trace/file_pair.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <ostream>

namespace dialwright {

static void PrintTo(const PairChoice& choice, std::ostream* out) {
    *out << (choice.second ? "second" : "first") << (choice.beginAnew ? " begun anew" : " gone on with");
}

namespace {

constexpr PairChoice kFirst{.second = false, .beginAnew = false};
constexpr PairChoice kSecond{.second = true, .beginAnew = false};
constexpr PairChoice kFirstAnew{.second = false, .beginAnew = true};
constexpr PairChoice kSecondAnew{.second = true, .beginAnew = true};

constexpr std::int64_t kMiB = 1'048'576;
constexpr std::int64_t kMost = (std::numeric_limits<std::int64_t>::max)();
constexpr std::int64_t kLeast = (std::numeric_limits<std::int64_t>::min)();

constexpr FileStatus kMissing{};

struct PairRow {
    FileStatus first;
    FileStatus second;
    std::uint64_t limit;
    PairChoice expected;
};

void ExpectChoices(std::initializer_list<PairRow> rows) {
    for (const PairRow& row : rows) {
        EXPECT_EQ(row.expected, ChooseFileOfPair(row.first, row.second, row.limit))
            << "first {" << row.first.size << ", " << row.first.modified << "}, second {" << row.second.size << ", "
            << row.second.modified << "}, limit " << row.limit << " MiB";
    }
}

TEST(ChooseFileOfPair, TakesTheFirstWhenBothAreMissing) {
    ExpectChoices({
        {kMissing, kMissing, 1, kFirst},
        {kMissing, kMissing, 512, kFirst},
        {kMissing, kMissing, 2047, kFirst},
    });
}

TEST(ChooseFileOfPair, GoesOnInTheOnlyFileUntilItIsFull) {
    ExpectChoices({
        {{0, 1000}, kMissing, 1, kFirst},
        {{kMiB - 1, 1000}, kMissing, 1, kFirst},
        {{kMiB, 1000}, kMissing, 1, kSecondAnew},
        {{kMiB + 1, 1000}, kMissing, 1, kSecondAnew},
        {kMissing, {0, 1000}, 1, kSecond},
        {kMissing, {kMiB - 1, 1000}, 1, kSecond},
        {kMissing, {kMiB, 1000}, 1, kFirstAnew},
        {kMissing, {kMiB + 1, 1000}, 1, kFirstAnew},
    });
}

TEST(ChooseFileOfPair, GoesOnInTheNewerFileUntilItIsFull) {
    ExpectChoices({
        {{0, 1001}, {5 * kMiB, 1000}, 1, kFirst},
        {{kMiB - 1, 1001}, {5 * kMiB, 1000}, 1, kFirst},
        {{kMiB, 1001}, {5, 1000}, 1, kSecondAnew},
        {{kMiB + 1, 1001}, {5, 1000}, 1, kSecondAnew},
        {{kMost, 1001}, {0, 1000}, 1, kSecondAnew},
        {{5 * kMiB, 1000}, {0, 1001}, 1, kSecond},
        {{5 * kMiB, 1000}, {kMiB - 1, 1001}, 1, kSecond},
        {{5, 1000}, {kMiB, 1001}, 1, kFirstAnew},
        {{5, 1000}, {kMiB + 1, 1001}, 1, kFirstAnew},
        {{0, 1000}, {kMost, 1001}, 1, kFirstAnew},
        {{0, 1}, {10, kMost}, 1, kSecond},
        {{0, 0x1'0000'0000}, {10, 1}, 1, kFirst},
        {{0, 0xFFFF'FFFF}, {10, 0x1'0000'0000}, 1, kSecond},
    });
}

TEST(ChooseFileOfPair, TakesFilesOfOneTimeAsIfTheFirstWereNewer) {
    ExpectChoices({
        {{10, 1000}, {20, 1000}, 1, kFirst},
        {{10, 1000}, {kMiB, 1000}, 1, kFirst},
        {{kMiB, 1000}, {10, 1000}, 1, kSecondAnew},
        {{kMiB, 1000}, {kMiB, 1000}, 1, kSecondAnew},
        {{kMiB, 0}, kMissing, 1, kSecondAnew},
        {kMissing, {10, 0}, 1, kFirst},
    });
}

struct LimitRow {
    std::uint64_t limit;
    std::int64_t bytes;
};

TEST(ChooseFileOfPair, CountsTheLimitInMiBWithinASigned32BitNumber) {
    const LimitRow rows[] = {
        {0, 0},
        {1, kMiB},
        {2, 2 * kMiB},
        {512, 536'870'912},
        {2047, 2'146'435'072},
        {2048, -2'147'483'648},
        {2049, -2'146'435'072},
        {4095, -kMiB},
        {4096, 0},
        {4097, kMiB},
        {4096 + 512, 536'870'912},
        {8192, 0},
        {0x1'0000'0000, 0},
        {0x1'0000'0001, kMiB},
        {std::uint64_t{1} << 44U, 0},
        {(std::uint64_t{1} << 44U) + 1, kMiB},
        {(std::numeric_limits<std::uint64_t>::max)(), -kMiB},
    };
    for (const LimitRow& row : rows) {
        ExpectChoices({
            {{row.bytes - 1, 1001}, {0, 1000}, row.limit, kFirst},
            {{row.bytes, 1001}, {0, 1000}, row.limit, kSecondAnew},
            {{row.bytes + 1, 1001}, {0, 1000}, row.limit, kSecondAnew},
            {{0, 1000}, {row.bytes - 1, 1001}, row.limit, kSecond},
            {{0, 1000}, {row.bytes, 1001}, row.limit, kFirstAnew},
            {{0, 1000}, {row.bytes + 1, 1001}, row.limit, kFirstAnew},
        });
    }
}

TEST(ChooseFileOfPair, TakesEveryFileAsFullWhereTheLimitIsNotAboveZero) {
    for (const std::uint64_t limit : {0U, 2048U, 3000U, 4095U, 4096U}) {
        ExpectChoices({
            {kMissing, kMissing, limit, kSecondAnew},
            {{1, 1000}, kMissing, limit, kSecondAnew},
            {kMissing, {1, 1000}, limit, kFirstAnew},
            {kMissing, {0, 1000}, limit, kFirstAnew},
            {{100, 1001}, {100, 1000}, limit, kSecondAnew},
            {{100, 1000}, {100, 1001}, limit, kFirstAnew},
        });
    }
}

TEST(ChooseFileOfPair, ComparesSizesBeyond32Bits) {
    for (const std::int64_t size : {std::int64_t{0x8000'0000}, std::int64_t{0x1'0000'0000}, std::int64_t{0x1'0000'0001},
                                    std::int64_t{0x1'8000'0000}, kMost}) {
        ExpectChoices({
            {{size, 1001}, {0, 1000}, 2047, kSecondAnew},
            {{0, 1000}, {size, 1001}, 2047, kFirstAnew},
        });
    }
}

TEST(ChooseFileOfPair, TakesNonsenseForWhatItIs) {
    ExpectChoices({
        {{-1, 0}, {-1, 0}, 0, kFirst},
        {{-1, 0}, {-1, 1}, 0, kSecond},
        {{kLeast, 1}, {0, 0}, 2048, kFirst},
        {{-1, 1}, {0, 0}, 2048, kSecondAnew},
        {{0, -5}, {0, -4}, 1, kSecond},
        {{0, -4}, {0, -5}, 1, kFirst},
        {{0, kLeast}, {0, kMost}, 1, kSecond},
        {{0, kMost}, {0, kLeast}, 1, kFirst},
    });
}

}  // namespace
}  // namespace dialwright
