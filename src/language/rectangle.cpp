#include "language/rectangle.h"

#include <cstdint>
#include <cstdlib>

namespace dialwright {
namespace {

/// In 64 bits, since a target edge may lie anywhere in the 32-bit range.
bool WithinTolerance(int actual, int target, int tolerance) {
    return std::abs(static_cast<std::int64_t>(actual) - target) <= tolerance;
}

/// Wraps around instead of overflowing: a window far outside the screen gives a wrong number, never undefined
/// behaviour.
int Minus(int left, int right) {
    return static_cast<int>(static_cast<std::uint32_t>(left) - static_cast<std::uint32_t>(right));
}

}  // namespace

std::wstring FormatRectangle(const Rectangle& rectangle) {
    return L"[" + std::to_wstring(rectangle.left) + L"," + std::to_wstring(rectangle.top) + L"]-[" +
           std::to_wstring(rectangle.right) + L"," + std::to_wstring(rectangle.bottom) + L"]";
}

bool EdgesWithinTolerance(const Rectangle& actual, const Rectangle& target, int tolerance) {
    return WithinTolerance(actual.left, target.left, tolerance) && WithinTolerance(actual.top, target.top, tolerance) &&
           WithinTolerance(actual.right, target.right, tolerance) &&
           WithinTolerance(actual.bottom, target.bottom, tolerance);
}

Rectangle RelativeTo(const Rectangle& absolute, const Rectangle& parent) {
    return {.left = Minus(absolute.left, parent.left),
            .top = Minus(absolute.top, parent.top),
            .right = Minus(absolute.right, parent.left),
            .bottom = Minus(absolute.bottom, parent.top)};
}

}  // namespace dialwright
