#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "language/rectangle.h"

namespace dialwright::tools {

/// 0xRRGGBB.
using Colour = std::uint32_t;

/// Pixels in rows from the top.
struct Picture {
    Picture() = default;
    Picture(int pixelsWide, int pixelsHigh);

    [[nodiscard]] Colour At(int x, int y) const { return pixels[Index(x, y)]; }
    void Set(int x, int y, Colour colour) { pixels[Index(x, y)] = colour; }

    int width = 0;
    int height = 0;
    std::vector<Colour> pixels;

private:
    [[nodiscard]] std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
};

// What lies outside the picture is left out.

void FillRectangle(Picture& picture, const Rectangle& rectangle, Colour colour);

/// The rectangle's edge, inwards.
void DrawFrame(Picture& picture, const Rectangle& rectangle, int thickness, Colour colour);

/// Digits of DigitsSize, with the left top corner at x, y.
void DrawDigits(Picture& picture, std::string_view digits, int x, int y, int scale, Colour colour);

struct Size {
    int width = 0;
    int height = 0;
};
[[nodiscard]] Size DigitsSize(std::string_view digits, int scale);

/// Also true for a picture without pixels.
[[nodiscard]] bool IsOneColour(const Picture& picture);

/// How many pixels differ from the one to their left: what would be hidden if something was put there.
[[nodiscard]] int DetailIn(const Picture& picture, const Rectangle& rectangle);

}  // namespace dialwright::tools
