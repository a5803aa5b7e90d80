#include "language/rectangle.h"

#include <gtest/gtest.h>

#include <limits>

namespace dialwright {
namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

TEST(FormatRectangle, PrintsCornersInBrackets) {
    EXPECT_EQ(L"[10,20]-[110,45]", FormatRectangle({10, 20, 110, 45}));
    EXPECT_EQ(L"[-1,0]-[-2147483648,2147483647]", FormatRectangle({-1, 0, kLeast, kMost}));
}

TEST(EdgesWithinTolerance, HoldsForEachEdgeAlone) {
    const Rectangle target{10, 20, 110, 45};
    EXPECT_TRUE(EdgesWithinTolerance({12, 18, 108, 47}, target, 5));
    EXPECT_TRUE(EdgesWithinTolerance({15, 20, 110, 45}, target, 5));
    EXPECT_FALSE(EdgesWithinTolerance({16, 20, 110, 45}, target, 5));
    EXPECT_FALSE(EdgesWithinTolerance({10, 14, 110, 45}, target, 5));
    EXPECT_FALSE(EdgesWithinTolerance({10, 20, 116, 45}, target, 5));
    EXPECT_FALSE(EdgesWithinTolerance({10, 20, 110, 51}, target, 5));
}

TEST(EdgesWithinTolerance, MatchesOnlyTheSameRectangleAtZero) {
    EXPECT_TRUE(EdgesWithinTolerance({1, 2, 3, 4}, {1, 2, 3, 4}, 0));
    EXPECT_FALSE(EdgesWithinTolerance({1, 2, 3, 4}, {1, 2, 3, 5}, 0));
}

TEST(EdgesWithinTolerance, NeverMatchesANegativeTolerance) {
    EXPECT_FALSE(EdgesWithinTolerance({1, 2, 3, 4}, {1, 2, 3, 4}, -1));
    EXPECT_FALSE(EdgesWithinTolerance({1, 2, 3, 4}, {1, 2, 3, 4}, kLeast));
}

TEST(EdgesWithinTolerance, ReckonsRightAtTheLimits) {
    EXPECT_FALSE(EdgesWithinTolerance({100, 100, 100, 100}, {kLeast, kLeast, kLeast, kLeast}, kMost));
    EXPECT_FALSE(EdgesWithinTolerance({-2, 0, 0, 0}, {kMost, 0, 0, 0}, kMost));
    EXPECT_TRUE(EdgesWithinTolerance({0, 0, 0, 0}, {kMost, kMost, -kMost, -kMost}, kMost));
    EXPECT_TRUE(EdgesWithinTolerance({kLeast, kMost, kLeast, kMost}, {kLeast, kMost, kLeast, kMost}, 0));
}

TEST(RelativeTo, SubtractsTheParentsCorner) {
    EXPECT_EQ((Rectangle{12, 18, 108, 47}), RelativeTo({112, 218, 208, 247}, {100, 200, 900, 900}));
    EXPECT_EQ((Rectangle{kLeast, 0, 0, 0}), RelativeTo({kMost, 0, -1, 0}, {-1, 0, 0, 0}));  // wraps, no overflow
}

}  // namespace
}  // namespace dialwright
