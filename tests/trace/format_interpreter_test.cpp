#include "trace/format_interpreter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "interpret.h"

namespace dialwright {
namespace {

constexpr auto kMostInt = (std::numeric_limits<std::int32_t>::max)();
constexpr auto kLeastInt = (std::numeric_limits<std::int32_t>::min)();
constexpr auto kMostLong = (std::numeric_limits<std::int64_t>::max)();
constexpr auto kLeastLong = (std::numeric_limits<std::int64_t>::min)();
constexpr auto kMostUnsignedLong = (std::numeric_limits<std::uint64_t>::max)();

const void* Address(std::uint64_t value) { return reinterpret_cast<const void*>(value); }

/// One conversion between brackets: what stands between "%" and its letter, and what comes out.
struct Row {
    const char* flags;
    FormatArg argument;
    std::string expected;
};

void ExpectRows(std::initializer_list<const char*> conversions, const std::vector<Row>& rows) {
    for (const char* conversion : conversions) {
        for (const Row& row : rows) {
            const std::string format = "[%" + std::string(row.flags) + conversion + "]";
            EXPECT_EQ("[" + row.expected + "]", Interpret(format, {row.argument})) << "format: " << format;
        }
    }
}

struct LineRow {
    std::string format;
    Arguments arguments;
    std::string expected;
};

void ExpectLines(const std::vector<LineRow>& rows) {
    for (const LineRow& row : rows) {
        EXPECT_EQ(row.expected, Interpret(row.format, row.arguments))
            << "format: " << ::testing::PrintToString(row.format);
    }
}

TEST(InterpretFormat, CopiesTextAsItIs) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '%') bytes += static_cast<char>(byte);
    }
    ExpectLines({{"", {}, ""},
                 {"plain", {}, "plain"},
                 {"plain", {1, "unused"}, "plain"},
                 {bytes, {1}, bytes},
                 {"two\nlines\r\n\t", {}, "two\nlines\r\n\t"},
                 {"0 -5d *ll ws", {1}, "0 -5d *ll ws"},
                 {std::string(5000, 'x'), {}, std::string(kLineBytes, 'x')}});
}

TEST(InterpretFormat, MixesTextAndConversions) {
    ExpectLines({{"%d", {7}, "7"},
                 {"%d%d%d", {1, 2, 3}, "123"},
                 {"a%db%uc", {-1, 2}, "a-1b2c"},
                 {"%s=%d (%x) %ws%%\n", {"size", 10, 255, L"wide"}, "size=10 (0xff) wide%\n"},
                 {"%s", {"%d %s %%"}, "%d %s %%"},
                 {"%S%s", {L"%d", "%s"}, "%d%s"},
                 {"%c%c", {'%', 'd'}, "%d"}});
}

TEST(InterpretFormat, WritesPercentSignsWithoutAnArgument) {
    ExpectLines({{"%%", {1}, "%"},
                 {"100%% %d", {1}, "100% 1"},
                 {"%%%%", {}, "%%"},
                 {"%%d", {1}, "%d"},
                 {"%%%d", {1}, "%1"},
                 {"%5%|%-5%|%05%|% 5%|%l%|%ll%|%99999%", {}, "%|%|%|%|%|%|%"},
                 {"%*%%d", {5, 7}, "%7"}});
}

TEST(InterpretFormat, WritesSignedDecimals) {
    ExpectRows({"d", "i"}, {{"", 0, "0"},
                            {"", 1, "1"},
                            {"", -1, "-1"},
                            {"", kMostInt, "2147483647"},
                            {"", kLeastInt, "-2147483648"},
                            {"", 'A', "65"},
                            {"", true, "1"},
                            {"", short{-3}, "-3"},
                            {"l", -42, "-42"},
                            {"", 0xFFFFFFFFU, "-1"},
                            {"", 0x80000000U, "-2147483648"},
                            {"", kMostUnsignedLong, "-1"},
                            {"", 0x1'0000'0005, "5"},
                            {"l", 0x1'0000'0005, "5"},
                            {"", 0x7'FFFF'FFFF, "-1"},
                            {"", kLeastLong, "0"},
                            {"ll", 0, "0"},
                            {"ll", -1, "-1"},
                            {"ll", 0x1'0000'0005, "4294967301"},
                            {"ll", 0xFFFFFFFFU, "4294967295"},
                            {"ll", kLeastInt, "-2147483648"},
                            {"ll", kMostLong, "9223372036854775807"},
                            {"ll", kLeastLong, "-9223372036854775808"},
                            {"ll", kMostUnsignedLong, "-1"}});
}

TEST(InterpretFormat, PadsSignedDecimals) {
    ExpectRows({"d", "i"},
               {{"0", 42, "42"},        {"00", 42, "42"},          {"01", 42, "42"},         {"02", 42, "42"},
                {"03", 42, "042"},      {"010", 42, "0000000042"}, {"003", 42, "042"},       {" ", 42, "42"},
                {" 0", 42, "42"},       {" 3", 42, " 42"},         {" 05", 42, "   42"},     {"1", 42, "42"},
                {"2", 42, "42"},        {"3", 42, " 42"},          {"10", 42, "        42"}, {"03", 0, "000"},
                {"3", 0, "  0"},        {"0", -42, "-42"},         {"02", -42, "-42"},       {"03", -42, "-42"},
                {"04", -42, "-042"},    {"06", -42, "-00042"},     {"2", -42, "-42"},        {"3", -42, "-42"},
                {"4", -42, " -42"},     {"6", -42, "   -42"},      {" 6", -42, "   -42"},    {"-", 42, "42"},
                {"-0", 42, "42"},       {"-1", 42, "42"},          {"-2", 42, "42"},         {"-3", 42, "42 "},
                {"-6", -42, "-42   "},  {"-3", -42, "-42"},        {"-4", -42, "-42 "},      {"-05", 42, "42   "},
                {"0-5", 42, "42   "},   {" -5", 42, "42   "},      {"0-6", -42, "-42   "},   {"5l", 42, "   42"},
                {"05l", -42, "-0042"},  {"-5l", 42, "42   "},      {"6ll", -42, "   -42"},   {"06ll", -42, "-00042"},
                {"-6ll", -42, "-42   "}});
    ExpectRows({"d", "i"}, {{"20ll", kLeastLong, "-9223372036854775808"},
                            {"21ll", kLeastLong, " -9223372036854775808"},
                            {"020ll", kLeastLong, "-9223372036854775808"},
                            {"021ll", kLeastLong, "-09223372036854775808"},
                            {"-21ll", kLeastLong, "-9223372036854775808 "},
                            {"010", kMostInt, "2147483647"},
                            {"011", kMostInt, "02147483647"}});
}

TEST(InterpretFormat, WritesUnsignedDecimals) {
    ExpectRows({"u"}, {{"", -1, "4294967295"},
                       {"l", -1, "4294967295"},
                       {"", kLeastInt, "2147483648"},
                       {"", kMostUnsignedLong, "4294967295"},
                       {"", 0x1'0000'0005, "5"},
                       {"ll", -1, "18446744073709551615"},
                       {"ll", 0xFFFFFFFFU, "4294967295"},
                       {"ll", 0x1'0000'0005, "4294967301"},
                       {"20ll", -1, "18446744073709551615"},
                       {"021ll", -1, "018446744073709551615"}});
    ExpectRows({"u"}, {{"", 0, "0"},
                       {"0", 42, "42"},
                       {"02", 42, "42"},
                       {"03", 42, "042"},
                       {"2", 42, "42"},
                       {"3", 42, " 42"},
                       {" 4", 42, "  42"},
                       {"-2", 42, "42"},
                       {"-4", 42, "42  "},
                       {"0-4", 42, "42  "},
                       {"10", -1, "4294967295"},
                       {"11", -1, " 4294967295"},
                       {"012", -1, "004294967295"}});
}

TEST(InterpretFormat, WritesHexadecimalsWithAWidthForTheDigitsOnly) {
    ExpectRows({"x"}, {{"", 0xABCDEF, "0xabcdef"},
                       {"", 0x9012345678, "0x12345678"},
                       {"l", 0x9012345678, "0x12345678"},
                       {"", -1, "0xffffffff"},
                       {"ll", -1, "0xffffffffffffffff"},
                       {"ll", 0x90ABCDEF12, "0x90abcdef12"},
                       {"016ll", 0xAB, "0x00000000000000ab"},
                       {"017ll", -1, "0x0ffffffffffffffff"}});
    ExpectRows({"x"}, {{"", 0, "0x0"},
                       {"1", 0xAB, "0xab"},
                       {"2", 0xAB, "0xab"},
                       {"3", 0xAB, " 0xab"},
                       {"4", 0xAB, "  0xab"},
                       {" 5", 0xAB, "   0xab"},
                       {"0", 0xAB, "0xab"},
                       {"02", 0xAB, "0xab"},
                       {"03", 0xAB, "0x0ab"},
                       {"08", 0xAB, "0x000000ab"},
                       {"08", 0, "0x00000000"},
                       {"-2", 0xAB, "0xab"},
                       {"-5", 0xAB, "0xab   "},
                       {"0-5", 0xAB, "0xab   "},
                       {"08", -1, "0xffffffff"},
                       {"9", -1, " 0xffffffff"}});
    ExpectRows({"X"}, {{"", 0, "0x0"},
                       {"", 0xABCDEF, "0xABCDEF"},
                       {"", 0x9012345678, "0x12345678"},
                       {"", -1, "0xFFFFFFFF"},
                       {"ll", 0x90ABCDEF12, "0x90ABCDEF12"},
                       {"2", 0xAB, "0xAB"},
                       {"3", 0xAB, " 0xAB"},
                       {"5", 0xAB, "   0xAB"},
                       {"05", 0xAB, "0x000AB"},
                       {"-5", 0xAB, "0xAB   "},
                       {"010ll", -1, "0xFFFFFFFFFFFFFFFF"}});
}

TEST(InterpretFormat, WritesPointersIn16DigitsWhateverTheWidth) {
    for (const char* flags : {"", "0", " ", "1", "17", "40", "040", "-40", "0-40", "99999999999", "l", "ll", "-40ll"}) {
        ExpectRows({"p"}, {{flags, Address(0), "0x0000000000000000"},
                           {flags, Address(0xABCDEF), "0x0000000000ABCDEF"},
                           {flags, Address(0x7FF6'1234'ABCD), "0x00007FF61234ABCD"},
                           {flags, Address(kMostUnsignedLong), "0xFFFFFFFFFFFFFFFF"},
                           {flags, kNoNarrow, "0x0000000000000000"},
                           {flags, static_cast<const char*>(Address(0x10)), "0x0000000000000010"},
                           {flags, static_cast<const wchar_t*>(Address(0x20)), "0x0000000000000020"},
                           {flags, 0xABCDEF0123456789, "0xABCDEF0123456789"}});
    }
    EXPECT_EQ("0x0000000000000001|2", Interpret("%*p|%d", {40, Address(1), 2}));
}

TEST(InterpretFormat, PutsBlanksBeforeACharacter) {
    ExpectRows({"c"}, {{"", 'A', "A"},
                       {"0", 'A', "A"},
                       {"-", 'A', "A"},
                       {"1", 'A', "A"},
                       {"2", 'A', " A"},
                       {"5", 'A', "    A"},
                       {"05", 'A', "    A"},
                       {" 5", 'A', "    A"},
                       {"-5", 'A', "    A"},
                       {"0-5", 'A', "    A"},
                       {"l", 'A', "A"},
                       {"5ll", 'A', "    A"},
                       {"", 0x141, "A"},
                       {"", 0x1'0000'0041, "A"},
                       {"", -1, "\xFF"}});
    ExpectRows({"c"}, {{"2", 0, std::string(" \0"sv)}});
}

TEST(InterpretFormat, TakesAWidthOfAnySize) {
    const std::string blanks(kLineBytes, ' ');
    const std::string zeros(kLineBytes, '0');
    for (const std::string width :
         {"4097", "65536", "100000", "100001", "2147483647", "2147483648", "4294967297", "9223372036854775809",
          "18446744073709551617", "99999999999999999999999999999999"}) {
        ExpectLines({{"%" + width + "d", {7}, blanks},
                     {"%0" + width + "d", {7}, zeros},
                     {"%0" + width + "d", {-7}, "-" + zeros.substr(1)},
                     {"%-" + width + "d", {-7}, "-7" + blanks.substr(2)},
                     {"%" + width + "u", {7}, blanks},
                     {"%" + width + "x", {7}, blanks},
                     {"%0" + width + "x", {7}, "0x" + zeros.substr(2)},
                     {"%" + width + "c", {'c'}, blanks},
                     {"%" + width + "s", {"t"}, blanks},
                     {"%" + width + "y", {"text"}, ""}});
    }
    ExpectLines({{"%4095d", {7}, blanks.substr(2) + "7"},
                 {"%4096d", {7}, blanks.substr(1) + "7"},
                 {"%04096d", {-7}, "-" + zeros.substr(2) + "7"},
                 {"%04094x", {7}, "0x" + zeros.substr(3) + "7"},
                 {"%4096s", {"ab"}, blanks.substr(2) + "ab"},
                 {"%000000000000000000000000000005d", {7}, "00007"}});
}

TEST(InterpretFormat, TakesTheWidthOfAStarFromAnArgument) {
    ExpectLines({{"%*d", {5, 42}, "   42"},
                 {"%0*d", {5, -42}, "-0042"},
                 {"% *d", {5, 42}, "   42"},
                 {"%*x", {4, 0xAB}, "  0xab"},
                 {"%0*llX", {4, 0xAB}, "0x00AB"},
                 {"%*c|%*s", {3, 'c', 4, "s"}, "  c|   s"},
                 {"%*d%*d", {0, 1, 1, 2}, "12"},
                 {"%*d", {0x1'0000'0003, 7}, "  7"},
                 {"%*d", {kMostInt, 7}, std::string(kLineBytes, ' ')},
                 {"%*d|%d", {5}, "|"},
                 {"%*d|", {}, "|"}});
}

TEST(InterpretFormat, TakesNoWidthFromANegativeOrUnfitArgument) {
    ExpectLines({{"%*d|%d", {-5, 42, 7}, "42|7"},
                 {"%0*d", {-5, 42}, "42"},
                 {"%*d", {kLeastInt, 42}, "42"},
                 {"%*d", {0xFFFFFFFFU, 42}, "42"},
                 {"%*d|%d", {"5", 42, 7}, "42|7"},
                 {"%*d|%d", {L"5", 42, 7}, "42|7"},
                 {"%*d|%d", {Address(5), 42, 7}, "42|7"}});
}

TEST(InterpretFormat, WritesNothingWhereAnArgumentIsMissing) {
    ExpectLines({{"%d|%i|%u|%x|%X|%p|%c|%s|%S|%ws|%5d|%05d|%-5d|%lld|%5c|%5s", {}, "|||||||||||||||"},
                 {"%d %d", {1}, "1 "},
                 {"100% done", {}, "100one"},
                 {"100% done", {5}, "1005one"},
                 {"50% of %d", {5}, "50f 5"}});
}

TEST(InterpretFormat, SpendsAnUnfitArgumentOnNothing) {
    for (const char* conversion : {"d", "i", "u", "x", "X", "c"}) {
        for (const FormatArg& unfit : {FormatArg("narrow"), FormatArg(L"wide"), FormatArg(Address(1))}) {
            const std::string sequence = conversion;
            ExpectLines({{"%" + sequence + "|%d", {unfit, 7}, "|7"}, {"%05ll" + sequence + "|%d", {unfit, 7}, "|7"}});
        }
    }
    ExpectLines({{"%s|%5s|%d", {1, L"wide", 7}, "||7"},
                 {"%s|%ls|%d", {Address(1), L"wide", 7}, "||7"},
                 {"%lls|%d", {L"wide", 7}, "|7"},
                 {"%S|%ws|%d", {"narrow", 1, 7}, "||7"},
                 {"%S|%ws|%d", {Address(1), "narrow", 7}, "||7"},
                 {"%s|%S|%d", {kNoNarrow, kNoWide, 7}, "||7"}});
}

TEST(InterpretFormat, LeavesOutAnUnknownConversionAndSpendsNoArgumentOnIt) {
    for (int byte = 1; byte < 256; ++byte) {
        const char letter = static_cast<char>(byte);
        if ("% -*diuxXpcsSl0123456789"sv.find(letter) != std::string_view::npos) continue;
        for (const char* flags : {"", "0", "5", "05", "-5", "l", "ll"}) {
            const std::string format = "a%" + std::string(flags) + letter + "b%d";
            EXPECT_EQ("ab7", Interpret(format, {7})) << ::testing::PrintToString(format);
        }
    }
    ExpectLines({{"%wd", {7}, "d"},
                 {"%w%d", {7}, "7"},
                 {"%wS", {L"wide"}, "S"},
                 {"%Ws", {L"wide"}, "s"},
                 {"%hd", {7}, "d"},
                 {"%zu", {7}, "u"},
                 {"%+d", {7}, "d"},
                 {"%#x", {7}, "x"},
                 {"%5.2d", {7}, "2d"},
                 {"%llld", {7}, "d"},
                 {"%--5d", {7}, "5d"},
                 {"%0 5d", {7}, "5d"},
                 {"%-*d", {5, 7}, "d"},
                 {"%5*d", {7}, "d"},
                 {"%*y%d", {3, 7}, "7"},
                 {"%*5d%d", {3, 7}, "d7"},
                 {"%*-5d", {3, 7}, "5d"},
                 {"%n%d", {7}, "7"}});
}

TEST(InterpretFormat, EndsWhereTheFormatEndsWithinASequence) {
    // What stands behind the end would show.
    const std::string behind("\0%d%s!wsd", 9);
    for (const char* sequence : {"%",   "%0",   "% ",   "%-",  "%*",  "%5",   "%05",
                                 "%-5", "%0-",  "% -5", "%0*", "%l",  "%ll",  "%5l",
                                 "%*l", "%*ll", "%w",   "%5w", "%lw", "%llw", "%99999999999999999999999",
                                 "%%%", "%d%"}) {
        const std::string written = sequence == "%%%"sv ? "%" : sequence == "%d%"sv ? "1" : "";
        ExpectLines({{sequence + behind, {1, 2, "text", L"wide"}, written},
                     {"a" + std::string(sequence) + behind, {1, 2}, "a" + written}});
    }
}

TEST(InterpretFormat, StopsWhereTheAreaEnds) {
    const std::string format = "text %06d %-6u|%5x|%06llX|%p|%3c|%5s|%ws|%%.";
    const Arguments arguments = {-42, 7, 0xAB, 0xCD, Address(0x1234), 'c', "abc", L"\x3042\x00E9"};
    const std::string whole =
        "text -00042 7     |   0xab|0x0000CD|0x0000000000001234|  c|  abc|\xE3\x81\x82\xC3\xA9|%.";
    for (std::size_t room = 0; room <= whole.size() + 2; ++room) {
        EXPECT_EQ(whole.substr(0, room), Interpret(format, arguments, room)) << room;
    }
}

TEST(InterpretFormat, AppendsToWhatIsThere) {
    std::vector<char> area(16);
    BoundedText text(area);
    const Arguments arguments = {5};
    text.Put("before ");
    InterpretFormat(text, "%03d ", FormatArgs(arguments));
    InterpretFormat(text, "%d+all", FormatArgs(arguments));
    EXPECT_EQ("before 005 5+all", text.View());
}

}  // namespace
}  // namespace dialwright
