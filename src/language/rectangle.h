#pragma once

#include <string>

namespace dialwright {

/// Four signed pixels, in the order in which commands write them. Nothing requires left <= right.
struct Rectangle {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool operator==(const Rectangle&) const = default;
};

/// "[left,top]-[right,bottom]" in decimal.
[[nodiscard]] std::wstring FormatRectangle(const Rectangle& rectangle);

/// Whether each edge differs by at most the tolerance; a negative tolerance never matches.
[[nodiscard]] bool EdgesWithinTolerance(const Rectangle& actual, const Rectangle& target, int tolerance);

/// `absolute` seen from the top-left corner of `parent`.
[[nodiscard]] Rectangle RelativeTo(const Rectangle& absolute, const Rectangle& parent);

}  // namespace dialwright
