#include "look/picture.h"

#include <algorithm>
#include <array>

namespace dialwright::tools {
namespace {

Rectangle Clip(const Picture& picture, const Rectangle& rectangle) {
    return {.left = (std::max)(rectangle.left, 0),
            .top = (std::max)(rectangle.top, 0),
            .right = (std::min)(rectangle.right, picture.width),
            .bottom = (std::min)(rectangle.bottom, picture.height)};
}

constexpr int kDigitWidth = 5;
constexpr int kDigitHeight = 7;

/// Rows from the top, the leftmost pixel in the highest of five bits.
constexpr std::array<std::array<std::uint8_t, kDigitHeight>, 10> kDigits = {{
    {0b01110, 0b11011, 0b11011, 0b11011, 0b11011, 0b11011, 0b01110},
    {0b00110, 0b01110, 0b11110, 0b00110, 0b00110, 0b00110, 0b00110},
    {0b01110, 0b11011, 0b00011, 0b00110, 0b01100, 0b11000, 0b11111},
    {0b01110, 0b11011, 0b00011, 0b00110, 0b00011, 0b11011, 0b01110},
    {0b00011, 0b00111, 0b01111, 0b11011, 0b11111, 0b00011, 0b00011},
    {0b11111, 0b11000, 0b11110, 0b00011, 0b00011, 0b11011, 0b01110},
    {0b01110, 0b11000, 0b11110, 0b11011, 0b11011, 0b11011, 0b01110},
    {0b11111, 0b00011, 0b00110, 0b00110, 0b01100, 0b01100, 0b01100},
    {0b01110, 0b11011, 0b11011, 0b01110, 0b11011, 0b11011, 0b01110},
    {0b01110, 0b11011, 0b11011, 0b11011, 0b01111, 0b00011, 0b01110},
}};

void DrawDigit(Picture& picture, int digit, int x, int y, int scale, Colour colour) {
    for (int row = 0; row < kDigitHeight; ++row) {
        const unsigned bits = kDigits[static_cast<std::size_t>(digit)][static_cast<std::size_t>(row)];
        for (int column = 0; column < kDigitWidth; ++column) {
            if ((bits >> static_cast<unsigned>(kDigitWidth - 1 - column) & 1U) == 0) continue;
            const int left = x + column * scale;
            const int top = y + row * scale;
            FillRectangle(picture, {.left = left, .top = top, .right = left + scale, .bottom = top + scale}, colour);
        }
    }
}

}  // namespace

Picture::Picture(int pixelsWide, int pixelsHigh)
    : width(pixelsWide),
      height(pixelsHigh),
      pixels(static_cast<std::size_t>(pixelsWide) * static_cast<std::size_t>(pixelsHigh)) {}

void FillRectangle(Picture& picture, const Rectangle& rectangle, Colour colour) {
    const Rectangle inside = Clip(picture, rectangle);
    for (int y = inside.top; y < inside.bottom; ++y) {
        for (int x = inside.left; x < inside.right; ++x) picture.Set(x, y, colour);
    }
}

void DrawFrame(Picture& picture, const Rectangle& rectangle, int thickness, Colour colour) {
    const auto& [left, top, right, bottom] = rectangle;
    FillRectangle(picture, {.left = left, .top = top, .right = right, .bottom = (std::min)(top + thickness, bottom)},
                  colour);
    FillRectangle(picture, {.left = left, .top = (std::max)(bottom - thickness, top), .right = right, .bottom = bottom},
                  colour);
    FillRectangle(picture, {.left = left, .top = top, .right = (std::min)(left + thickness, right), .bottom = bottom},
                  colour);
    FillRectangle(picture, {.left = (std::max)(right - thickness, left), .top = top, .right = right, .bottom = bottom},
                  colour);
}

Size DigitsSize(std::string_view digits, int scale) {
    const int count = static_cast<int>(digits.size());
    return {.width = (count * (kDigitWidth + 1) - 1) * scale, .height = kDigitHeight * scale};
}

void DrawDigits(Picture& picture, std::string_view digits, int x, int y, int scale, Colour colour) {
    for (const char digit : digits) {
        DrawDigit(picture, digit - '0', x, y, scale, colour);
        x += (kDigitWidth + 1) * scale;
    }
}

bool IsOneColour(const Picture& picture) {
    return std::ranges::all_of(picture.pixels, [&](Colour colour) { return colour == picture.pixels.front(); });
}

int DetailIn(const Picture& picture, const Rectangle& rectangle) {
    const Rectangle inside = Clip(picture, rectangle);
    int count = 0;
    for (int y = inside.top; y < inside.bottom; ++y) {
        for (int x = (std::max)(inside.left, 1); x < inside.right; ++x) {
            if (picture.At(x, y) != picture.At(x - 1, y)) ++count;
        }
    }
    return count;
}

}  // namespace dialwright::tools
