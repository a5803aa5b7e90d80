#pragma once

#include <atomic>

namespace dialwright::tools {

/// Becomes true when somebody presses Ctrl-C or closes the console, and keeps this program from ending at once: it has
/// a worker to end and reports to write. The first call begins to listen.
[[nodiscard]] const std::atomic<bool>& Interruption();

}  // namespace dialwright::tools
