#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/windows.h"

namespace dialwright::tools {

/// Programs with more rights than this one are to be met: it does not run as administrator.
[[nodiscard]] bool OthersMayHaveMoreRights();

/// The system drops our messages to a window of a program with more rights, and tells nobody. False also where it
/// cannot be told.
[[nodiscard]] bool HasMoreRightsThanWe(HWND window);

/// The window has not answered for some seconds.
[[nodiscard]] bool DoesNotAnswer(HWND window);

/// The dialog that a window waits for; null where it waits for none.
[[nodiscard]] HWND OpenDialogOf(HWND window);

/// Tells when a click has opened a dialog: the window must have waited for one for a while, as a passing message box or
/// a moment between two windows is no dialog to stay.
class DialogWatch {
public:
    /// A dialog that the line cannot have opened, or null.
    explicit DialogWatch(HWND openBefore) : before(openBefore) {}

    /// The dialog's title, once it is one to stay.
    [[nodiscard]] std::optional<std::wstring> Look(HWND window);

private:
    HWND before;
    std::optional<std::chrono::steady_clock::time_point> since;
};

}  // namespace dialwright::tools
