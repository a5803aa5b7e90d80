#pragma once

namespace dialwright {

/// Asks for per-monitor DPI awareness, so that rectangles are physical pixels. The platform refuses where the
/// host has chosen already; that is ignored. Loads the scaling library on the first call.
void RequestPerMonitorDpiAwareness() noexcept;

}  // namespace dialwright
