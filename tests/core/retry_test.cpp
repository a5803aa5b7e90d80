#include "script/retry.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "script/check_state.h"
#include "script/position_target.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/windows_of_others.h"
#include "window/window.h"

namespace dialwright {
namespace {

using testing::kPlainClass;
using testing::LogCapture;
using testing::PracticeWindow;

Window Found(const PracticeWindow& target) {
    const LogCapture unseen;
    return {kPlainClass, target.Title(), 20000, false};
}

PositionTarget At(const Rectangle& r, int tolerance) {
    return {.left = r.left, .top = r.top, .right = r.right, .bottom = r.bottom, .tolerance = tolerance};
}

TEST(RetryUntilTimeout, MakesNoAttemptWhenNoTimeIsLeft) {
    const PracticeWindow target(kPlainClass);
    Window window = Found(target);
    window.timeoutMs = 0;
    int attempts = 0;
    const LogCapture log;
    EXPECT_EQ(0, RetryUntilTimeout(window, [&] { return ++attempts > 0; }));
    EXPECT_EQ(0, attempts);
    EXPECT_EQ("", log.Text());
}

TEST(RetryCheckByPosition, ChargesItsTimeToTheWindowWhenItFails) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    Window window(kPlainClass, target.Title(), 1500, false);
    ASSERT_NE(nullptr, window.hwndWindow);
    const std::int64_t searched = ElapsedMs(window.searchStart);
    EXPECT_EQ(0, RetryCheckByPosition(window, At({5000, 5000, 5001, 5001}, 0), kChecked, kRadioLabel));
    const std::int64_t retried = ElapsedMs(window.searchStart) - searched;
    // Reckoned between two looks at the clock, so a few milliseconds may lie in between.
    EXPECT_NEAR(static_cast<double>(1500 - retried), static_cast<double>(static_cast<std::int64_t>(window.timeoutMs)),
                200);
    EXPECT_FALSE(window.HasTimeLeft());
    EXPECT_EQ("Window::SetCheckState: Radio button control not found", log.Messages().back());
}

TEST(RetryCheckByPosition, ChargesNothingWhenItSucceeds) {
    const PracticeWindow target(kPlainClass);
    Window window = Found(target);
    const LogCapture log;
    const PositionTarget place = At(testing::RelativeRectOf(target.Control(31)), 0);
    EXPECT_EQ(1, RetryCheckByPosition(window, place, kChecked, kCheckboxLabel));
    EXPECT_EQ(20000U, window.timeoutMs);
    EXPECT_EQ(1, testing::CheckStateOf(target.Control(31)));
}

}  // namespace
}  // namespace dialwright
