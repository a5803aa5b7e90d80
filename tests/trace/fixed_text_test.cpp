#include "trace/fixed_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <numeric>
#include <span>
#include <string>
#include <string_view>

#include "trace/bounded_text.h"

namespace dialwright {
namespace {

using namespace std::string_view_literals;

struct FixedTextRow {
    std::string_view assigned;
    std::string_view appended;
    std::string_view expected;
};

TEST(FixedText, HoldsWhatFitsBesideItsTerminator) {
    const FixedTextRow rows[] = {
        {"", "", ""},
        {"", "abc", "abc"},
        {"abc", "", "abc"},
        {"abc", "def", "abcdef"},
        {"abc", "defg", "abcdefg"},
        {"abc", "defgh", "abcdefg"},
        {"abcdef", "g", "abcdefg"},
        {"abcdefg", "h", "abcdefg"},
        {"abcdefgh", "", "abcdefg"},
        {"abcdefghijklmnop", "qrs", "abcdefg"},
        {"a\0b"sv, "\0"sv, "a\0b\0"sv},
        {std::string_view(), std::string_view(), ""},
    };
    for (const FixedTextRow& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.assigned) + " + " + ::testing::PrintToString(row.appended));
        FixedText<8> text;
        text.Assign("before");
        text.Assign(row.assigned);
        text.Append(row.appended);
        EXPECT_EQ(row.expected, text.View());
        EXPECT_EQ(row.expected.empty(), text.Empty());
        EXPECT_EQ(text.View().data(), text.CStr());
        EXPECT_EQ('\0', text.CStr()[row.expected.size()]);
    }
}

TEST(FixedText, LeavesItsNeighboursAlone) {
    struct Neighbours {
        std::array<char, 8> before;
        FixedText<8> text;
        std::array<char, 8> after;
    };
    Neighbours neighbours{};
    neighbours.before.fill('#');
    neighbours.after.fill('#');
    neighbours.text.Assign(std::string(100, 'x'));
    for (int i = 0; i < 20; ++i) neighbours.text.Append("yz");
    EXPECT_EQ("########", std::string_view(neighbours.before.data(), 8));
    EXPECT_EQ("########", std::string_view(neighbours.after.data(), 8));
    EXPECT_STREQ("xxxxxxx", neighbours.text.CStr());
}

TEST(FixedText, BeginsEmptyAndCanBeCleared) {
    FixedText<8> text;
    EXPECT_TRUE(text.Empty());
    EXPECT_EQ("", text.View());
    EXPECT_STREQ("", text.CStr());
    text.Assign("abc");
    EXPECT_FALSE(text.Empty());
    text.Clear();
    EXPECT_TRUE(text.Empty());
    EXPECT_EQ("", text.View());
    EXPECT_STREQ("", text.CStr());
    text.Append("d");
    EXPECT_STREQ("d", text.CStr());
}

TEST(FixedText, AppendsPieceByPieceUntilItIsFull) {
    FixedText<4> text;
    for (const std::string_view expected : {"a", "aa", "aaa", "aaa", "aaa"}) {
        text.Append("a");
        EXPECT_EQ(expected, text.View());
        EXPECT_EQ(expected, text.CStr());
    }
}

TEST(FixedText, OfOneByteHoldsOnlyItsTerminator) {
    FixedText<1> text;
    text.Assign("a");
    text.Append("b");
    EXPECT_TRUE(text.Empty());
    EXPECT_STREQ("", text.CStr());
}

TEST(FixedText, IsCopiedWhole) {
    FixedText<8> text;
    text.Assign("abc");
    FixedText<8> copy = text;
    text.Assign("xy");
    EXPECT_STREQ("abc", copy.CStr());
    copy.Append("d");
    EXPECT_STREQ("abcd", copy.CStr());
    EXPECT_STREQ("xy", text.CStr());
}

TEST(TracePath, Holds259Characters) {
    for (const std::size_t length : {0U, 258U, 259U, 260U, 1000U}) {
        TracePath path;
        path.Assign(std::string(length, 'p'));
        EXPECT_EQ(std::string((std::min)(length, std::size_t{259}), 'p'), path.CStr()) << length;
    }
}

constexpr std::string_view kGuard = "<<<<<<<<";

/// Areas of so many bytes between two guards, checked in the end.
class GuardedArea {
public:
    explicit GuardedArea(std::size_t size) : all(size + 2 * kGuard.size(), kGuard.front()), length(size) {}
    ~GuardedArea() {
        EXPECT_EQ(kGuard, std::string_view(all).substr(0, kGuard.size()));
        EXPECT_EQ(kGuard, std::string_view(all).substr(kGuard.size() + length));
    }
    GuardedArea(const GuardedArea&) = delete;
    GuardedArea& operator=(const GuardedArea&) = delete;

    [[nodiscard]] std::span<char> Span() { return std::span(all).subspan(kGuard.size(), length); }

private:
    std::string all;
    std::size_t length;
};

TEST(BoundedText, DropsWhatDoesNotFit) {
    constexpr std::string_view kWhole = "abcd-----e12";
    for (std::size_t size = 0; size <= kWhole.size() + 2; ++size) {
        GuardedArea area(size);
        BoundedText text(area.Span());
        text.Put('a');
        text.Put("bcd");
        text.Put("");
        text.PutRepeated('-', 5);
        text.PutRepeated('+', 0);
        text.Put('e');
        text.PutNumber(12);
        EXPECT_EQ(kWhole.substr(0, size), text.View()) << size;
        EXPECT_EQ((std::min)(size, kWhole.size()), text.Size());
        EXPECT_EQ(area.Span().data(), text.View().data());
    }
}

TEST(BoundedText, TakesAnyLength) {
    GuardedArea area(5);
    for (const std::size_t times : {std::size_t{4}, std::size_t{5}, std::size_t{6}, std::size_t{1} << 31U,
                                    std::size_t{1} << 32U, (std::numeric_limits<std::size_t>::max)()}) {
        BoundedText text(area.Span());
        text.Put('a');
        text.PutRepeated('-', times);
        EXPECT_EQ("a----", text.View()) << times;
        text.Put('b');
        text.Put("c");
        EXPECT_EQ("a----", text.View()) << times;
    }
}

TEST(BoundedText, TakesAnyByte) {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), static_cast<char>(0));
    GuardedArea area(512);
    BoundedText text(area.Span());
    text.Put(bytes);
    for (const char byte : bytes) text.Put(byte);
    EXPECT_EQ(bytes + bytes, text.View());
}

TEST(BoundedText, WritesNoTerminator) {
    GuardedArea area(4);
    BoundedText text(area.Span());
    text.Put("ab");
    EXPECT_EQ("ab<<", std::string_view(area.Span().data(), 4));
}

TEST(BoundedText, StandsOnNoAreaAtAll) {
    BoundedText text(std::span<char>{});
    text.Put('a');
    text.Put("b");
    text.PutRepeated('c', 3);
    text.PutNumber(4, 5);
    text.ReplaceLast('d');
    text.CutTo(0);
    text.CutTo(1);
    EXPECT_EQ(0U, text.Size());
    EXPECT_TRUE(text.View().empty());
}

template <typename Number>
std::string ShownWith(Number number, std::size_t digits) {
    GuardedArea area(64);
    BoundedText text(area.Span());
    text.PutNumber(number, digits);
    return std::string(text.View());
}

TEST(PutNumber, WritesEveryTypeToItsLimits) {
    const auto shown = [](auto number) {
        GuardedArea area(64);
        BoundedText text(area.Span());
        text.PutNumber(number);
        return std::string(text.View());
    };
    EXPECT_EQ("0", shown(0));
    EXPECT_EQ("-1", shown(-1));
    EXPECT_EQ("2147483647", shown((std::numeric_limits<std::int32_t>::max)()));
    EXPECT_EQ("-2147483648", shown((std::numeric_limits<std::int32_t>::min)()));
    EXPECT_EQ("4294967295", shown((std::numeric_limits<std::uint32_t>::max)()));
    EXPECT_EQ("4294967295", shown((std::numeric_limits<unsigned long>::max)()));
    EXPECT_EQ("9223372036854775807", shown((std::numeric_limits<std::int64_t>::max)()));
    EXPECT_EQ("-9223372036854775808", shown((std::numeric_limits<std::int64_t>::min)()));
    EXPECT_EQ("18446744073709551615", shown((std::numeric_limits<std::uint64_t>::max)()));
}

TEST(PutNumber, FillsUpWithZerosToTheDigitsAskedFor) {
    EXPECT_EQ("0", ShownWith(0, 0));
    EXPECT_EQ("0", ShownWith(0, 1));
    EXPECT_EQ("00", ShownWith(0, 2));
    EXPECT_EQ("0000000", ShownWith(0, 7));
    EXPECT_EQ("9", ShownWith(9, 1));
    EXPECT_EQ("09", ShownWith(9, 2));
    EXPECT_EQ("10", ShownWith(10, 2));
    EXPECT_EQ("010", ShownWith(10, 3));
    EXPECT_EQ("0999", ShownWith(999, 4));
    EXPECT_EQ("1000", ShownWith(1000, 4));
    EXPECT_EQ("12345", ShownWith(12345, 4));
    EXPECT_EQ(std::string(20, '0') + "18446744073709551615",
              ShownWith((std::numeric_limits<std::uint64_t>::max)(), 40));
    EXPECT_EQ("-42", ShownWith(-42, 0));
    EXPECT_EQ("-42", ShownWith(-42, 1));
    EXPECT_EQ("-42", ShownWith(-42, 2));
}

TEST(PutNumber, PutsTheZerosOfANegativeNumberBehindItsSign) {
    EXPECT_EQ("-05", ShownWith(-5, 2));
    EXPECT_EQ("-0042", ShownWith(-42, 4));
}

TEST(PutNumber, IsCutAsText) {
    for (const std::size_t size : {0U, 1U, 3U, 6U, 7U}) {
        GuardedArea area(size);
        BoundedText text(area.Span());
        text.PutNumber(123, 6);
        EXPECT_EQ("000123"sv.substr(0, size), text.View());
    }
}

TEST(CutTo, ForgetsAllButTheFirstBytes) {
    struct CutRow {
        std::size_t length;
        std::string_view expected;
    };
    for (const auto& [length, expected] :
         {CutRow{0, "+"}, CutRow{1, "a+"}, CutRow{3, "abc+"}, CutRow{4, "abc+"}, CutRow{1000, "abc+"}}) {
        GuardedArea area(8);
        BoundedText text(area.Span());
        text.Put("abc");
        text.CutTo(length);
        EXPECT_EQ(expected.size() - 1, text.Size()) << length;
        text.Put('+');
        EXPECT_EQ(expected, text.View()) << length;
    }
}

TEST(CutTo, MakesRoomInAFullArea) {
    GuardedArea area(4);
    BoundedText text(area.Span());
    text.Put("abcdef");
    text.CutTo(2);
    text.Put("xyz");
    EXPECT_EQ("abxy", text.View());
}

TEST(ReplaceLast, ReplacesTheLastByteIfThereIsOne) {
    GuardedArea area(3);
    BoundedText text(area.Span());
    text.ReplaceLast(']');
    EXPECT_EQ(0U, text.Size());
    text.Put('a');
    text.ReplaceLast(']');
    EXPECT_EQ("]", text.View());
    text.Put("bcdef");
    text.ReplaceLast('!');
    EXPECT_EQ("]b!", text.View());
}

}  // namespace
}  // namespace dialwright
