#pragma once

#include <cstdlib>

#include "platform/windows.h"

namespace dialwright::testing {

/// Whether the processor is an emulated one, as scripts/wine-run-arm64 says: programs then take several times as long.
[[nodiscard]] inline bool IsEmulated() noexcept { return std::getenv("DIALWRIGHT_EMULATED") != nullptr; }

/// That many milliseconds of a processor of its own, on the one that there is.
[[nodiscard]] inline DWORD Patient(DWORD milliseconds) noexcept {
    constexpr DWORD kSlowdown = 6;
    return IsEmulated() ? milliseconds * kSlowdown : milliseconds;
}

}  // namespace dialwright::testing
