#pragma once

#include <cstdint>

namespace dialwright {

/// Passes text to the debugger and to standard output, as far as the settings say. `text` is zero-terminated; it is
/// cut for a moment and restored. `continuation` is true only for the rows of a dump.
void EchoText(std::uint64_t settings, const char* levelText, bool continuation, char* text) noexcept;

}  // namespace dialwright
