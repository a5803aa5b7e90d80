#include "trace/memory_log.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>

namespace dialwright {

TraceMemLog* AllocateMemoryLog() noexcept {
    auto* const log = static_cast<TraceMemLog*>(std::malloc(sizeof(TraceMemLog)));
    if (log == nullptr) return nullptr;
    std::memcpy(log->label.data(), "TraceMemLogHead", log->label.size());
    log->counter = 0;
    return log;
}

void FreeMemoryLog(TraceMemLog* log) noexcept { std::free(log); }

void StoreInMemoryLog(TraceMemLog& log, std::string_view line) noexcept {
    auto& slot = log.slots[log.counter % kMemoryLogSlots];
    const std::size_t length = (std::min)(line.size(), kMemoryLogSlotBytes - 1);
    std::memcpy(slot.data(), line.data(), length);
    slot[length] = '\0';
    ++log.counter;
    // Nobody in this process reads the block; an optimizer must not drop the stores that only a dump shows.
    std::atomic_signal_fence(std::memory_order_seq_cst);
}

}  // namespace dialwright
