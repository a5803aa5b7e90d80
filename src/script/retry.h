#pragma once

#include <concepts>

#include "window/window.h"

namespace dialwright {

/// Repeats the attempt every 100 ms until it succeeds (1) or the window's time is used up (0). A window that was
/// not found has no time left, so no attempt is made.
template <std::predicate Attempt>
int RetryUntilTimeout(const Window& window, Attempt attempt) {
    while (window.HasTimeLeft()) {
        if (attempt()) return 1;
        SleepForPollInterval();
    }
    return 0;
}

}  // namespace dialwright
