#pragma once

#include <string>

#include "platform/windows.h"

namespace practice {

/// Carries out one command on the practice target, on the window's own thread. Commands:
///
///   mark TEXT                         prints "mark TEXT"; what was posted before has been handled
///   after MS COMMAND                  carries the command out later
///   create KIND ID X,Y,W,H PARENT TEXT   adds a control; PARENT is a control ID or 0
///   destroy ID | enable ID 0|1 | show ID 0|1 | move ID X,Y,W,H   a direct child of the window
///   title TEXT | window SW_NUMBER | front | place X,Y,W,H
///   open CLASS TITLE                  one more top-level window, without controls
///   hang MS                           stops answering for so long
///   die                               ends at once, as a program does that crashes
///   figures                           prints "figures THREADS HANDLES"
///
/// Prints "error ..." for anything else.
void RunCommand(HWND window, const std::wstring& line);

/// Takes commands for the window from standard input, one a line in UTF-8, from now on; the end of the input ends
/// the message pump. Reading happens on a thread of its own, running on the caller's, also within a modal dialog.
void TakeCommands(HWND window);

}  // namespace practice
