#pragma once

#include <string>

#include "platform/windows.h"

namespace dialwright::testing {

/// A program that nobody here wrote, started without our pipes; ended when the test is over, whatever became of it.
/// Tests that run side by side take turns: such programs have the same titles and dialogs, and some come up but once.
class OtherProgram {
public:
    explicit OtherProgram(std::wstring commandLine);
    ~OtherProgram();
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    [[nodiscard]] bool HasEnded() const;

    /// Its visible top-level window of this class, once there is one; null when none comes up in time.
    [[nodiscard]] HWND WaitForWindow(const wchar_t* className) const;

private:
    HANDLE turn;
    HANDLE process = nullptr;
    DWORD processId = 0;
};

}  // namespace dialwright::testing
