#include "script/position_target.h"

#include "script/retry.h"

namespace dialwright {

HWND FindControl(const Window& window, const PositionTarget& target) {
    return window.FindControlByPosition(target.left, target.top, target.right, target.bottom, target.tolerance);
}

int RetryCheckByPosition(Window& window, const PositionTarget& target, int state, const wchar_t* label) {
    const auto begin = std::chrono::steady_clock::now();
    const int result =
        RetryUntilTimeout(window, [&] { return Window::SetCheckState(FindControl(window, target), state, label); });
    // Kept on purpose: `timeoutMs` then holds less than the command asked for.
    if (result == 0) window.timeoutMs -= static_cast<std::uint64_t>(ElapsedMs(begin));
    return result;
}

}  // namespace dialwright
