#pragma once

#include "trace/fixed_text.h"

namespace dialwright {

/// The folder of the trace files, as TraceStart's `directory` names it; empty when it cannot be had.
[[nodiscard]] TracePath ComposeTraceDirectory(const char* directory) noexcept;

}  // namespace dialwright
