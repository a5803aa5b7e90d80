#pragma once

#include <cstdlib>

namespace dialwright::testing {

/// Whether this is the long run, ./dev soak, in which the same tests go many more rounds.
[[nodiscard]] inline bool IsSoak() { return std::getenv("DIALWRIGHT_SOAK") != nullptr; }

[[nodiscard]] inline int Rounds(int inSuite, int inSoak) { return IsSoak() ? inSoak : inSuite; }

}  // namespace dialwright::testing
