#pragma once

#include "platform/windows.h"

namespace dialwright::tools {

/// Lets Ctrl-C, Ctrl-Break and the closing of the console end the program with 130.
void EndWhenInterrupted();

/// Takes the first of them over for as long as it lives, so that the program can end in order. One at a time.
class Interrupt {
public:
    Interrupt();
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    /// Waits so long; whether the user has asked for the end.
    [[nodiscard]] bool ComesWithin(DWORD milliseconds) const;

private:
    HANDLE asked;
};

}  // namespace dialwright::tools
