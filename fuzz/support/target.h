#pragma once

#include "input.h"

namespace dialwright::fuzz {

/// One try; each target defines it. What must hold is said with Require.
void Try(Input input);

/// Ends the process where something that must hold does not; the fuzzer then keeps the input.
void Require(bool holds, const char* property);

}  // namespace dialwright::fuzz
