#include "look/position_rule.h"

#include <gtest/gtest.h>

#include <limits>

namespace dialwright::tools {
namespace {

constexpr Rectangle At(int left, int top) { return {.left = left, .top = top, .right = left + 50, .bottom = top + 20}; }

TEST(ToleranceThatFinds, IsEightWhereNothingIsNear) {
    EXPECT_EQ(8, ToleranceThatFinds({At(0, 0)}, 0));
    EXPECT_EQ(8, ToleranceThatFinds({At(0, 0), At(9, 0)}, 1));
}

TEST(ToleranceThatFinds, StaysBelowTheDistanceOfTheNearestBefore) {
    EXPECT_EQ(7, ToleranceThatFinds({At(0, 0), At(8, 0)}, 1));
    EXPECT_EQ(2, ToleranceThatFinds({At(0, 0), At(100, 3), At(100, 0)}, 2));
    EXPECT_EQ(0, ToleranceThatFinds({At(0, 1), At(0, 0)}, 1));
}

TEST(ToleranceThatFinds, DoesNotMindWhatComesAfter) { EXPECT_EQ(8, ToleranceThatFinds({At(0, 0), At(0, 0)}, 0)); }

TEST(ToleranceThatFinds, IsNoneForTheSecondInOnePlace) {
    EXPECT_EQ(std::nullopt, ToleranceThatFinds({At(0, 0), At(0, 0)}, 1));
}

TEST(ToleranceThatFinds, DoesNotOverflow) {
    constexpr int kFar = (std::numeric_limits<int>::max)() - 50;
    EXPECT_EQ(8, ToleranceThatFinds({At(kFar, kFar - 20), At(-kFar, -kFar)}, 1));
}

}  // namespace
}  // namespace dialwright::tools
