#include "trace_reader/memory_log_search.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "trace/memory_log.h"

namespace dialwright::tools {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kLabel = "TraceMemLogHead\0"sv;
constexpr std::size_t kCounterAt = offsetof(TraceMemLog, counter);
constexpr std::size_t kSlotsAt = offsetof(TraceMemLog, slots);

/// No process writes more. The bytes behind the label where it stands in an image are no such number.
constexpr std::uint64_t kMostLines = std::uint64_t{1} << 40U;

/// What lies behind a label, or nothing where that is no memory log.
std::optional<MemoryLines> ReadBlock(std::string_view block) {
    MemoryLines found;
    std::memcpy(&found.counter, block.data() + kCounterAt, sizeof found.counter);
    if (found.counter == 0 || found.counter > kMostLines) return std::nullopt;
    const std::uint64_t count = (std::min)(found.counter, std::uint64_t{kMemoryLogSlots});
    for (std::uint64_t number = found.counter - count; number < found.counter; ++number) {
        const std::string_view slot =
            block.substr(kSlotsAt + number % kMemoryLogSlots * kMemoryLogSlotBytes, kMemoryLogSlotBytes);
        const std::size_t end = slot.find('\0');
        if (end == std::string_view::npos) return std::nullopt;
        found.lines.emplace_back(slot.substr(0, end));
    }
    return found;
}

}  // namespace

void MemoryLogSearch::Feed(std::string_view bytes) {
    waiting += bytes;
    std::size_t at = 0;
    while ((at = waiting.find(kLabel, at)) != std::string::npos && waiting.size() - at >= sizeof(TraceMemLog)) {
        const auto found = ReadBlock(std::string_view(waiting).substr(at, sizeof(TraceMemLog)));
        if (found) take(*found);
        at += found ? sizeof(TraceMemLog) : kLabel.size();
    }
    // A label may begin in this piece and end in the next.
    const std::size_t rest = (std::min)(waiting.size(), kLabel.size() - 1);
    waiting.erase(0, at == std::string::npos ? waiting.size() - rest : at);
}

}  // namespace dialwright::tools
