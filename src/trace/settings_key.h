#pragma once

#include <cstdint>
#include <optional>

namespace dialwright {

/// What the settings key holds. A value that is missing or no 4-byte number is left out.
struct StoredSettings {
    std::optional<std::uint32_t> flag;
    std::optional<std::uint32_t> size;
};

/// Reads "flag" and "size" of a key under HKEY_LOCAL_MACHINE; a key that cannot be opened has neither.
[[nodiscard]] StoredSettings ReadSettingsKey(const char* keyPath) noexcept;

}  // namespace dialwright
