#pragma once

#include <cstdint>
#include <optional>

#include "platform/windows.h"

namespace dialwright::tools {

/// How much a process may do, as the system counts it; nothing where it does not tell.
[[nodiscard]] std::optional<std::uint32_t> IntegrityOf(HANDLE process);

}  // namespace dialwright::tools
