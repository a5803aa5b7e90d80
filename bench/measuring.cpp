#include "measuring.h"

#include <algorithm>

namespace dialwright::bench {

CallTimes SummarizeCalls(std::vector<std::uint64_t> ticks, std::uint64_t ticksInAll, double seconds) {
    std::ranges::sort(ticks);
    const double nsPerTick = seconds * 1e9 / static_cast<double>(ticksInAll);
    const auto percentile = [&](double share) {
        const auto index = static_cast<std::size_t>(share * static_cast<double>(ticks.size() - 1));
        return static_cast<double>(ticks[index]) * nsPerTick;
    };
    return {.p50Ns = percentile(0.5), .p99Ns = percentile(0.99), .p999Ns = percentile(0.999)};
}

}  // namespace dialwright::bench
