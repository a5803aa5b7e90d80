#pragma once

namespace dialwright {

/// When this library was built, as 24 characters: "Mon Sep  8 14:05:23 2025".
[[nodiscard]] const char* BuildTimestamp() noexcept;

}  // namespace dialwright
