#include "language/numbers.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <limits>
#include <optional>
#include <stdexcept>

namespace dialwright {
namespace {

struct IntRow {
    const wchar_t* text;
    std::optional<int> value;
    const char* error;
};

constexpr const char* kNoDigits = "invalid stoi argument";
constexpr const char* kTooLarge = "stoi argument out of range";

const IntRow kIntRows[] = {
    {L"0", 0, nullptr},
    {L"12", 12, nullptr},
    {L"12abc", 12, nullptr},
    {L" \t7", 7, nullptr},
    {L"+7", 7, nullptr},
    {L"-7", -7, nullptr},
    {L"007", 7, nullptr},
    {L"1.9", 1, nullptr},
    {L"0x10", 0, nullptr},
    {L"2147483647", std::numeric_limits<int>::max(), nullptr},
    {L"-2147483648", std::numeric_limits<int>::min(), nullptr},
    {L"2147483648", std::nullopt, kTooLarge},
    {L"-2147483649", std::nullopt, kTooLarge},
    {L"4294967296", std::nullopt, kTooLarge},
    {L"99999999999999999999999", std::nullopt, kTooLarge},
    {L"-99999999999999999999999", std::nullopt, kTooLarge},
    {L"", std::nullopt, kNoDigits},
    {L"abc", std::nullopt, kNoDigits},
    {L"-", std::nullopt, kNoDigits},
    {L"- 1", std::nullopt, kNoDigits},
    {L"\xD83D", std::nullopt, kNoDigits},
};

TEST(ConvertToInt, ReadsTheseTextsOrFailsInItsOwnWords) {
    for (const IntRow& row : kIntRows) {
        try {
            EXPECT_EQ(row.value, ConvertToInt(row.text));
        } catch (const std::logic_error& error) {
            EXPECT_FALSE(row.value.has_value());
            EXPECT_STREQ(row.error, error.what());
        }
    }
}

TEST(TryParseInt, LeavesTheNumberAloneWhereItFails) {
    for (const IntRow& row : kIntRows) {
        int value = 4711;
        EXPECT_EQ(row.value.has_value(), TryParseInt(row.text, &value));
        EXPECT_EQ(row.value.value_or(4711), value);
    }
}

TEST(ConvertToInt, ThrowsTheStandardTypes) {
    EXPECT_THROW((void)ConvertToInt(L"x"), std::invalid_argument);
    EXPECT_THROW((void)ConvertToInt(L"2147483648"), std::out_of_range);
    EXPECT_THROW((void)ConvertToUnsigned(L"x"), std::invalid_argument);
    EXPECT_THROW((void)ConvertToUnsigned(L"4294967296"), std::out_of_range);
}

TEST(ConvertToUnsigned, WrapsAMinusSignAroundAt32Bits) {
    EXPECT_EQ(0U, ConvertToUnsigned(L"0"));
    EXPECT_EQ(5000U, ConvertToUnsigned(L" 5000ms"));
    EXPECT_EQ(4294967295U, ConvertToUnsigned(L"4294967295"));
    EXPECT_EQ(4294967295U, ConvertToUnsigned(L"-1"));
    EXPECT_EQ(1U, ConvertToUnsigned(L"-4294967295"));
}

TEST(ConvertToUnsigned, FailsInItsOwnWords) {
    const auto errorOf = [](const wchar_t* text) -> std::string {
        try {
            return std::to_string(ConvertToUnsigned(text));
        } catch (const std::logic_error& error) {
            return error.what();
        }
    };
    EXPECT_EQ("invalid stoul argument", errorOf(L"x"));
    EXPECT_EQ("invalid stoul argument", errorOf(L""));
    EXPECT_EQ("stoul argument out of range", errorOf(L"4294967296"));
    EXPECT_EQ("stoul argument out of range", errorOf(L"-4294967296"));
    EXPECT_EQ("stoul argument out of range", errorOf(L"99999999999999999999999"));
}

TEST(ReadsAsInteger, Takes64Bits) {
    EXPECT_TRUE(ReadsAsInteger(L"5000"));
    EXPECT_TRUE(ReadsAsInteger(L" -5x"));
    EXPECT_TRUE(ReadsAsInteger(L"9223372036854775807"));
    EXPECT_FALSE(ReadsAsInteger(L"9223372036854775808"));
    EXPECT_FALSE(ReadsAsInteger(L"hello"));
    EXPECT_FALSE(ReadsAsInteger(L""));
}

TEST(Conversions, LeaveTheHostsErrnoAlone) {
    errno = ERANGE;
    int twelve = 0;
    EXPECT_TRUE(TryParseInt(L"12", &twelve));
    EXPECT_EQ(ERANGE, errno);
    errno = 42;
    EXPECT_FALSE(ReadsAsInteger(L"99999999999999999999999"));
    EXPECT_EQ(42, errno);
    int value = 0;
    EXPECT_TRUE(TryParseInt(L"12", &value));
    EXPECT_EQ(42, errno);
}

}  // namespace
}  // namespace dialwright
