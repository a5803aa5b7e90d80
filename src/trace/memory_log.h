#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace dialwright {

inline constexpr std::size_t kMemoryLogSlots = 1024;
inline constexpr std::size_t kMemoryLogSlotBytes = 1024;

/// The last lines, to be found in a memory dump by the label. The counter tells which slot is the newest.
struct TraceMemLog {
    std::array<char, 16> label;
    /// Lines ever stored; line n lies in slot n mod 1024, zero-terminated, cut to 1,023 characters.
    std::uint64_t counter;
    std::array<std::array<char, kMemoryLogSlotBytes>, kMemoryLogSlots> slots;
};

static_assert(sizeof(TraceMemLog) == 1048600);
static_assert(offsetof(TraceMemLog, counter) == 16);
static_assert(offsetof(TraceMemLog, slots) == 24);

/// Null when there is no memory. To be freed with FreeMemoryLog.
[[nodiscard]] TraceMemLog* AllocateMemoryLog() noexcept;
void FreeMemoryLog(TraceMemLog* log) noexcept;

void StoreInMemoryLog(TraceMemLog& log, std::string_view line) noexcept;

}  // namespace dialwright
