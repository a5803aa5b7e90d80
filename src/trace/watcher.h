#pragma once

namespace dialwright {

/// The body of the watcher's thread: writes buffered lines out after a pause and polls the settings key. Returns when
/// the watcher is stopped.
void TraceWatcher() noexcept;

}  // namespace dialwright
