#include "look/picture.h"

#include <gtest/gtest.h>

#include <string>

#include "look/png.h"
#include "png_reader.h"

namespace dialwright::tools {
namespace {

constexpr Colour kInk = 0x102030;

/// One character for each pixel, a line for each row.
std::string Drawing(const Picture& picture) {
    std::string drawing;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) drawing.push_back(picture.At(x, y) == kInk ? '#' : '.');
        drawing.push_back('\n');
    }
    return drawing;
}

TEST(Picture, IsFilledWhereItIs) {
    Picture picture(4, 3);
    FillRectangle(picture, {.left = -5, .top = 1, .right = 2, .bottom = 9}, kInk);
    EXPECT_EQ(
        "....\n"
        "##..\n"
        "##..\n",
        Drawing(picture));
    FillRectangle(picture, {.left = 3, .top = 2, .right = 1, .bottom = 0}, kInk);
    FillRectangle(picture, {.left = 7, .top = 7, .right = 9, .bottom = 9}, kInk);
    EXPECT_EQ("....\n##..\n##..\n", Drawing(picture));
}

TEST(Picture, GetsFramesThatStayWithinTheirRectangle) {
    Picture picture(6, 5);
    DrawFrame(picture, {.left = 1, .top = 1, .right = 5, .bottom = 4}, 1, kInk);
    EXPECT_EQ(
        "......\n"
        ".####.\n"
        ".#..#.\n"
        ".####.\n"
        "......\n",
        Drawing(picture));
    Picture thin(4, 2);
    DrawFrame(thin, {.left = 1, .top = 0, .right = 2, .bottom = 1}, 3, kInk);
    EXPECT_EQ(".#..\n....\n", Drawing(thin));
}

TEST(Picture, GetsDigits) {
    const Size size = DigitsSize("17", 1);
    Picture picture(size.width, size.height);
    DrawDigits(picture, "17", 0, 0, 1, kInk);
    EXPECT_EQ(
        "..##..#####\n"
        ".###.....##\n"
        "####....##.\n"
        "..##....##.\n"
        "..##...##..\n"
        "..##...##..\n"
        "..##...##..\n",
        Drawing(picture));
    EXPECT_EQ(2 * size.width, DigitsSize("17", 2).width);
}

TEST(Picture, IsOneColourUntilAnyPixelDiffers) {
    EXPECT_TRUE(IsOneColour(Picture()));
    Picture picture(3, 3);
    EXPECT_TRUE(IsOneColour(picture));
    picture.Set(2, 2, kInk);
    EXPECT_FALSE(IsOneColour(picture));
}

TEST(Picture, HasDetailWhereNeighboursDiffer) {
    Picture picture(5, 1);
    EXPECT_EQ(0, DetailIn(picture, {.left = 0, .top = 0, .right = 5, .bottom = 1}));
    picture.Set(2, 0, kInk);
    EXPECT_EQ(2, DetailIn(picture, {.left = -3, .top = -1, .right = 9, .bottom = 4}));
    EXPECT_EQ(1, DetailIn(picture, {.left = 0, .top = 0, .right = 3, .bottom = 1}));
}

TEST(Png, HoldsThePictureToThePixel) {
    Picture picture(7, 5);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) picture.Set(x, y, static_cast<Colour>(x * 0x240000 + y * 0x3300 + x * y * 9));
    }
    const std::string png = EncodePng(picture);
    EXPECT_TRUE(png.starts_with("\x89PNG\r\n\x1A\n"));
    const Picture read = testing::DecodePng(png);
    EXPECT_EQ(7, read.width);
    EXPECT_EQ(5, read.height);
    EXPECT_EQ(picture.pixels, read.pixels);
}

TEST(Png, CannotHoldAPictureWithoutPixels) { EXPECT_THROW((void)EncodePng(Picture()), std::runtime_error); }

}  // namespace
}  // namespace dialwright::tools
