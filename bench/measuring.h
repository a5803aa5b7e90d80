#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include <intrin.h>

namespace dialwright::bench {

class Stopwatch {
public:
    [[nodiscard]] double Seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    }

private:
    std::chrono::steady_clock::time_point began = std::chrono::steady_clock::now();
};

struct CallTimes {
    double p50Ns;
    double p99Ns;
    double p999Ns;
};

/// `ticks`, the length of every call in ticks of the processor's clock, of which `ticksInAll` passed in `seconds`.
[[nodiscard]] CallTimes SummarizeCalls(std::vector<std::uint64_t> ticks, std::uint64_t ticksInAll, double seconds);

/// Times each call by itself, with the processor's clock: the platform's has steps of 100 ns.
template <class Call>
CallTimes TimeEachCall(int calls, Call call) {
    std::vector<std::uint64_t> ticks(static_cast<std::size_t>(calls));
    const Stopwatch watch;
    const std::uint64_t began = __rdtsc();
    for (int i = 0; i < calls; ++i) {
        const std::uint64_t before = __rdtsc();
        call(i);
        ticks[static_cast<std::size_t>(i)] = __rdtsc() - before;
    }
    const std::uint64_t inAll = __rdtsc() - began;
    return SummarizeCalls(std::move(ticks), inAll, watch.Seconds());
}

}  // namespace dialwright::bench
