#pragma once

#include <string>

#include "platform/windows.h"

// What the practice target's windows receive, one line an event on standard output:
//
//   posted 12 WM_LBUTTONDOWN 80,11 keys 1   a message from the queue
//   sent 12 WM_CHAR U+0061                  a message that somebody waited for
//   inner window WM_COMMAND 12 EN_CHANGE    one that arose while another was being handled
//
// The second word is the receiver: a control ID, or "window" for a top-level window.
namespace practice {

/// Prints one line and flushes it, so that a reader sees it at once.
void Print(const std::string& line);

/// Makes the recorder see every message of this window, before its own procedure.
void Record(HWND hwnd);

/// Hands a message from the queue to its window, remembered as posted. `dialog` gets its keyboard handling.
void DispatchPosted(MSG& message, HWND dialog);

}  // namespace practice
