#include <gtest/gtest.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "interpret.h"

namespace {
int askedFor = 0;
bool isShortOfMemory = false;
}  // namespace

// The one way to memory that may fail without an exception, so that the tests can see it taken and let it fail.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the library's own name is a reserved one
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    ++askedFor;
    if (isShortOfMemory) return nullptr;
    try {
        return ::operator new[](size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

namespace dialwright {
namespace {

struct NarrowRow {
    const char* flags;
    const char* text;
    std::string expected;
};

TEST(NarrowStrings, HaveBlanksBeforeThemAndNeverBehind) {
    const NarrowRow rows[] = {
        {"", "", ""},
        {"", "abc", "abc"},
        {"0", "abc", "abc"},
        {"1", "abc", "abc"},
        {"2", "abc", "abc"},
        {"3", "abc", "abc"},
        {"4", "abc", " abc"},
        {"7", "abc", "    abc"},
        {"04", "abc", " abc"},
        {" 4", "abc", " abc"},
        {"-3", "abc", "abc"},
        {"-4", "abc", " abc"},
        {"0-5", "abc", "  abc"},
        {"-05", "abc", "  abc"},
        {" -5", "abc", "  abc"},
        {"3", "", "   "},
        {"03", "", "   "},
        {"-3", "", "   "},
    };
    for (const NarrowRow& row : rows) {
        // A length changes neither the width nor the kind of the string.
        for (const char* conversion : {"s", "ls", "lls"}) {
            const std::string format = "[%" + std::string(row.flags) + conversion + "]";
            EXPECT_EQ("[" + row.expected + "]", Interpret(format, {row.text})) << "format: " << format;
        }
    }
}

TEST(NarrowStrings, AreWrittenByteForByte) {
    const std::string longText(3000, 'x');
    EXPECT_EQ("\xFC\x80", Interpret("%s", {"\xFC\x80"}));
    EXPECT_EQ("  \xC3\xBC|\r\n", Interpret("%4s|%s", {"\xC3\xBC", "\r\n"}));
    EXPECT_EQ("%d %s %%", Interpret("%s", {"%d %s %%"}));
    EXPECT_EQ(longText + "|", Interpret("%s|", {longText.c_str()}));
    EXPECT_EQ(longText + longText.substr(0, 1096), Interpret("%s%s|", {longText.c_str(), longText.c_str()}));
}

TEST(NarrowStrings, WriteNothingWhereThereIsNone) {
    for (const char* flags : {"", "0", "5", "05", "-5", " ", "l", "ll", "5ll"}) {
        EXPECT_EQ("[]7", Interpret("[%" + std::string(flags) + "s]%d", {kNoNarrow, 7})) << flags;
    }
}

struct WideRow {
    const wchar_t* text;
    std::string expected;
};

TEST(WideStrings, AreNeverPadded) {
    const WideRow rows[] = {{L"", ""}, {L"abc", "abc"}, {L"100% %d", "100% %d"}, {kNoWide, ""}};
    for (const std::string conversion : {"S", "ws"}) {
        for (const char* flags : {"", "0", " ", "-", "1", "40", "040", "-40", "99999999999", "l", "ll", "-40ll"}) {
            const std::string format = "[%" + std::string(flags) + conversion + "]";
            for (const WideRow& row : rows) {
                EXPECT_EQ("[" + row.expected + "]", Interpret(format, {row.text})) << "format: " << format;
            }
        }
        EXPECT_EQ("abc|2", Interpret("%*" + conversion + "|%d", {40, L"abc", 2}));
    }
}

TEST(WideStrings, AreWrittenInUtf8) {
    const std::string replaced = "\xEF\xBF\xBD";
    const std::string pair = "\xF0\x9F\x98\x80";
    const wchar_t highThenText[] = {0xD83D, L'a', 0};
    const wchar_t lowBetween[] = {L'a', 0xDE00, L'b', 0};
    const wchar_t reversed[] = {0xDE00, 0xD83D, 0};
    const wchar_t highThenPair[] = {0xD83D, 0xD83D, 0xDE00, 0};
    const wchar_t pairThenLow[] = {0xD83D, 0xDE00, 0xDE00, 0};
    const WideRow rows[] = {
        {L"\x01\n\x7F", "\x01\n\x7F"},
        {L"\x80\x7FF\x800\xD7FF\xE000\xFFFD\xFFFF",
         "\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBD\xEF\xBF\xBF"},
        {L"\x65E5\x672C", "\xE6\x97\xA5\xE6\x9C\xAC"},
        {L"\xD83D\xDE00", pair},
        {L"\xD800\xDC00\xDBFF\xDFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {L"\xD83D", replaced},
        {L"\xDE00", replaced},
        {highThenText, replaced + "a"},
        {lowBetween, "a" + replaced + "b"},
        {reversed, replaced + replaced},
        {highThenPair, replaced + pair},
        {pairThenLow, pair + replaced},
    };
    for (const WideRow& row : rows) {
        for (const char* format : {"%S", "%ws", "%lS", "%lws"}) {
            EXPECT_EQ(row.expected, Interpret(format, {row.text}))
                << format << " of " << ::testing::PrintToString(row.text);
        }
    }
}

class WideStringOfManyUnits : public ::testing::TestWithParam<std::size_t> {};

TEST_P(WideStringOfManyUnits, IsWrittenAsFarAsTheAreaReaches) {
    for (const auto& [unit, utf8] : {std::pair{L'x', "x"sv}, {L'\x7FF', "\xDF\xBF"}, {L'\x3042', "\xE3\x81\x82"}}) {
        std::string whole;
        for (std::size_t i = 0; i < GetParam(); ++i) whole += utf8;
        const std::wstring text(GetParam(), unit);
        for (const std::size_t room : {std::size_t{0}, std::size_t{1}, GetParam(), kLineBytes, 4 * GetParam()}) {
            EXPECT_EQ(whole.substr(0, room), Interpret("%S", {text.c_str()}, room)) << room;
        }
        EXPECT_EQ("a" + whole + "b", Interpret("a%wsb", {text.c_str()}, 4 * GetParam()));
    }
}

TEST_P(WideStringOfManyUnits, NeedsTheHeapFrom1024UnitsOn) {
    const std::wstring text(GetParam(), L'\x3042');
    std::vector<char> area(3 * GetParam() + 2);
    BoundedText target(area);
    const Arguments arguments = {text.c_str()};
    askedFor = 0;
    InterpretFormat(target, "[%S]", FormatArgs(arguments));
    EXPECT_EQ(GetParam() < 1024 ? 0 : 1, askedFor);
    EXPECT_EQ(area.size(), target.Size());
}

TEST_P(WideStringOfManyUnits, IsLeftOutFrom1024UnitsOnWhenMemoryIsShort) {
    const std::wstring text(GetParam(), L'x');
    isShortOfMemory = true;
    const std::string shown = Interpret("%d%S%d", {1, text.c_str(), 2}, 2 * GetParam());
    isShortOfMemory = false;
    EXPECT_EQ("1" + (GetParam() < 1024 ? std::string(GetParam(), 'x') : "") + "2", shown);
}

INSTANTIATE_TEST_SUITE_P(Units, WideStringOfManyUnits, ::testing::Values(1022U, 1023U, 1024U, 1025U, 5000U, 200'000U));

}  // namespace
}  // namespace dialwright
