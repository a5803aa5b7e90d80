#pragma once

#include <string>

namespace dialwright::testing {

/// What this process holds of the system.
struct ProcessFigures {
    unsigned threads = 0;
    unsigned handles = 0;
    unsigned long long addressSpace = 0;

    [[nodiscard]] static ProcessFigures Now();
    [[nodiscard]] std::string Text() const;
};

}  // namespace dialwright::testing
