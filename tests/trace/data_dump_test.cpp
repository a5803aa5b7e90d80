#include "trace/data_dump.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <numeric>
#include <span>
#include <string>
#include <vector>

namespace dialwright {
namespace {

std::string Row(std::size_t offset, const std::vector<unsigned char>& bytes, std::size_t room = 256) {
    std::vector<char> area(room);
    BoundedText text(area);
    PutDumpRow(text, offset, bytes);
    return std::string(text.View());
}

const std::vector<unsigned char> kSixteen = {'D', 'i', 'a', 'l', 'w',  'r', 'i',  'g',
                                             'h', 't', 0,   0,   0xFF, ' ', '\n', '.'};

std::vector<unsigned char> First(std::size_t count) {
    return {kSixteen.begin(), kSixteen.begin() + static_cast<std::ptrdiff_t>(count)};
}

TEST(PutDumpRow, ShowsOffsetBytesAndCharacters) {
    EXPECT_EQ("00000010  44 69 61 6C 77 72 69 67 68 74 00 00 FF 20 0A 2E   Dialwright... ..\r\n", Row(16, kSixteen));
}

TEST(PutDumpRow, LeavesBlanksForBytesThatAreNotThere) {
    EXPECT_EQ("00000000  44 69 61 6C 77 72 69 67 68 74 00 00 FF 20 0A      Dialwright... .\r\n", Row(0, First(15)));
    EXPECT_EQ("00000000  44 69 61 6C 77 72 69 67 68                        Dialwrigh\r\n", Row(0, First(9)));
    EXPECT_EQ("00000000  44 69 61 6C 77 72 69 67                           Dialwrig\r\n", Row(0, First(8)));
    EXPECT_EQ("00000000  44                                                D\r\n", Row(0, First(1)));
    EXPECT_EQ("00000000                                                    \r\n", Row(0, {}));
}

TEST(PutDumpRow, KeepsTheCharactersInTheirColumn) {
    for (std::size_t count = 0; count <= kDumpRowBytes; ++count) {
        const std::string row = Row(0, First(count));
        EXPECT_EQ(kDumpRowLength - kDumpRowBytes + count, row.size()) << row;
        EXPECT_EQ(std::string_view("Dialwright... ..").substr(0, count), row.substr(60, count)) << row;
        EXPECT_EQ("\r\n", row.substr(60 + count));
    }
    EXPECT_EQ(78U, kDumpRowLength);
}

TEST(PutDumpRow, ShowsTheOffsetInEightDigits) {
    const auto offset = [](std::size_t value) { return Row(value, {'x'}).substr(0, 13); };
    EXPECT_EQ("00000000  78 ", offset(0));
    EXPECT_EQ("00000001  78 ", offset(1));
    EXPECT_EQ("00000FF0  78 ", offset(0xFF0));
    EXPECT_EQ("01234567  78 ", offset(0x1234567));
    EXPECT_EQ("89ABCDEF  78 ", offset(0x89ABCDEF));
    EXPECT_EQ("FFFFFFF0  78 ", offset(0xFFFFFFF0));
}

TEST(PutDumpRow, ShowsTheLowerHalfOfALargerOffset) {
    EXPECT_EQ("23456789  78 ", Row(0x123456789, {'x'}).substr(0, 13));
}

TEST(PutDumpRow, ShowsEveryByteInHexAndThePrintableOnesAsTheyAre) {
    for (int value = 0; value <= 0xFF; ++value) {
        std::array<char, 8> hex{};
        (void)std::snprintf(hex.data(), hex.size(), "%02X ", static_cast<unsigned>(value));
        const bool printable = value >= 0x20 && value <= 0x7E;
        const std::string shown(16, printable ? static_cast<char>(value) : '.');
        std::string expected = "00000000  ";
        for (int i = 0; i < 16; ++i) expected += hex.data();
        expected += "  " + shown + "\r\n";
        EXPECT_EQ(expected, Row(0, std::vector<unsigned char>(16, static_cast<unsigned char>(value)))) << value;
    }
}

TEST(PutDumpRow, ShowsAllByteValuesInSixteenRows) {
    std::vector<unsigned char> all(256);
    std::iota(all.begin(), all.end(), static_cast<unsigned char>(0));
    const auto row = [&](std::size_t index) {
        const std::span<const unsigned char> bytes = std::span(all).subspan(index * 16, 16);
        return Row(index * 16, {bytes.begin(), bytes.end()});
    };
    EXPECT_EQ("00000000  00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F   ................\r\n", row(0));
    EXPECT_EQ("00000010  10 11 12 13 14 15 16 17 18 19 1A 1B 1C 1D 1E 1F   ................\r\n", row(1));
    EXPECT_EQ("00000020  20 21 22 23 24 25 26 27 28 29 2A 2B 2C 2D 2E 2F    !\"#$%&'()*+,-./\r\n", row(2));
    EXPECT_EQ("00000050  50 51 52 53 54 55 56 57 58 59 5A 5B 5C 5D 5E 5F   PQRSTUVWXYZ[\\]^_\r\n", row(5));
    EXPECT_EQ("00000070  70 71 72 73 74 75 76 77 78 79 7A 7B 7C 7D 7E 7F   pqrstuvwxyz{|}~.\r\n", row(7));
    EXPECT_EQ("00000080  80 81 82 83 84 85 86 87 88 89 8A 8B 8C 8D 8E 8F   ................\r\n", row(8));
    EXPECT_EQ("000000F0  F0 F1 F2 F3 F4 F5 F6 F7 F8 F9 FA FB FC FD FE FF   ................\r\n", row(15));
}

TEST(PutDumpRow, AppendsToWhatIsThere) {
    std::array<char, 2 * kDumpRowLength> area{};
    BoundedText text(area);
    PutDumpRow(text, 0, kSixteen);
    PutDumpRow(text, 16, kSixteen);
    EXPECT_EQ(2 * kDumpRowLength, text.Size());
    EXPECT_EQ(Row(0, kSixteen) + Row(16, kSixteen), text.View());
}

TEST(PutDumpRow, IsCutWhereTheAreaEnds) {
    const std::string whole = Row(0x10, kSixteen);
    for (std::size_t room = 0; room <= whole.size() + 1; ++room) {
        EXPECT_EQ(whole.substr(0, room), Row(0x10, kSixteen, room)) << room;
    }
}

}  // namespace
}  // namespace dialwright
