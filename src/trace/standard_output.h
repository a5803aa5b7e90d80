#pragma once

#include <string_view>

namespace dialwright {

/// Writes to the host's standard output stream and flushes it. A stream that is missing, closed, full or broken
/// loses the text silently; the host's invalid-parameter handler is never called.
void WriteStandardOutput(std::string_view text) noexcept;

}  // namespace dialwright
