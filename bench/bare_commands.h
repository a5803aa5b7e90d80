#pragma once

#include "platform/windows.h"

namespace dialwright::bench {

/// What a command names.
struct BareTarget {
    const wchar_t* className;
    const wchar_t* title;
    int controlId;
};

// The platform calls and the messages of one command, in its order, and nothing else: no tokens, no patterns, no log.
// Each tells whether it has worked.

[[nodiscard]] bool BareClick(const BareTarget& target);
[[nodiscard]] bool BareClear(const BareTarget& target);
[[nodiscard]] bool BareSelect(const BareTarget& target, const wchar_t* item);
[[nodiscard]] bool BareCheck(const BareTarget& target, int state);

/// The first top-level window of the class with the title, or null.
[[nodiscard]] HWND BareWindow(const wchar_t* className, const wchar_t* title);

/// What a window search has to do before it may read a rectangle.
void BareDpiCall();

}  // namespace dialwright::bench
