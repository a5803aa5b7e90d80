#pragma once

#include <cstdint>

namespace dialwright::verify {

/// What this process holds of the system.
struct ProcessFigures {
    unsigned threads = 0;
    unsigned handles = 0;
    std::uint64_t privateBytes = 0;

    [[nodiscard]] static ProcessFigures Now();
};

}  // namespace dialwright::verify
