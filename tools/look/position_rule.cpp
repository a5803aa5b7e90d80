#include "look/position_rule.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace dialwright::tools {
namespace {

// As much as a frame or a font of another machine moves things.
constexpr std::int64_t kMostTolerance = 8;

std::int64_t Apart(int one, int other) { return std::abs(std::int64_t{one} - other); }

/// The tolerance from which on the one is taken for the other.
std::int64_t LargestEdgeDistance(const Rectangle& one, const Rectangle& other) {
    return (std::max)({Apart(one.left, other.left), Apart(one.top, other.top), Apart(one.right, other.right),
                       Apart(one.bottom, other.bottom)});
}

}  // namespace

std::optional<int> ToleranceThatFinds(const std::vector<Rectangle>& places, std::size_t wanted) {
    std::int64_t tolerance = kMostTolerance;
    for (std::size_t i = 0; i < wanted; ++i) {
        tolerance = (std::min)(tolerance, LargestEdgeDistance(places[i], places[wanted]) - 1);
    }
    if (tolerance < 0) return std::nullopt;
    return static_cast<int>(tolerance);
}

}  // namespace dialwright::tools
