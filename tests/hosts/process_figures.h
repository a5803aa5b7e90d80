#pragma once

#include <string>

namespace dialwright::testing {

/// What this process holds of the system.
struct ProcessFigures {
    unsigned threads = 0;
    unsigned handles = 0;
    unsigned long long addressSpace = 0;
    unsigned long long privateBytes = 0;
    /// Of the graphics and of the windows together. Wine counts none.
    unsigned guiObjects = 0;

    [[nodiscard]] static ProcessFigures Now();
    /// Threads, handles and address space.
    [[nodiscard]] std::string Text() const;
};

}  // namespace dialwright::testing
