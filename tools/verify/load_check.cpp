// Loading and freeing the library: how long it takes, and what it leaves behind.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "verify/checks.h"
#include "verify/library.h"
#include "verify/process_figures.h"

namespace dialwright::verify {
namespace {

/// The system's own first-time costs are paid after so many rounds.
struct Rounds {
    int settled;
    int all;
    [[nodiscard]] int Counted() const { return all - settled; }
};

struct Times {
    std::vector<double> load;
    std::vector<double> free;
};

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

void OneRound(const Setting& setting, int number, Times& times) {
    const auto loading = Clock::now();
    Clock::time_point freeing;
    {
        const Library library(setting);
        times.load.push_back(MillisecondsSince(loading));
        // With and without a call in between: the trace has been opened or not.
        if (number % 2 == 0) library->validateCommand(L"Window.Close c t");
        freeing = Clock::now();
    }
    times.free.push_back(MillisecondsSince(freeing));
}

Verdict JudgeTimes(std::vector<double> times) {
    constexpr double kMostMs = 5000;
    std::ranges::sort(times);
    const auto text = [](double value) {
        std::array<char, 32> shown{};
        std::snprintf(shown.data(), shown.size(), "%.1f ms", value);
        return std::string(shown.data());
    };
    return PassedIf(times.back() < kMostMs, "shortest " + text(times.front()) + ", middle " +
                                                text(times[times.size() / 2]) + ", longest " + text(times.back()));
}

/// Threads of the system's pool leave when they have been idle for some seconds, and their stacks a little later.
ProcessFigures AfterRest(std::uint64_t mostThreads, std::uint64_t mostBytes, int looks) {
    ProcessFigures now = ProcessFigures::Now();
    for (int look = 0; look < looks && (now.threads > mostThreads || now.privateBytes > mostBytes); ++look) {
        ::Sleep(500);  // between two looks at the condition
        now = ProcessFigures::Now();
    }
    return now;
}

Verdict JudgeGrowth(std::uint64_t before, std::uint64_t after, std::uint64_t most) {
    return PassedIf(after <= before + most, "from " + std::to_string(before) + " to " + std::to_string(after) +
                                                "; more by " + std::to_string(most) + " would still do");
}

/// What a load and a free may leave behind on average, so that the system's own ups and downs are not held against us.
constexpr std::uint64_t kMostBytesARound = 8192;
constexpr std::uint64_t kMostBytesAtAll = 2097152;

}  // namespace

void CheckLoading(const Setting& setting, Journal& journal) {
    const Rounds rounds = setting.quick ? Rounds{.settled = 4, .all = 12} : Rounds{.settled = 20, .all = 100};
    Times times;
    ProcessFigures before;
    journal.Do("load and free " + std::to_string(rounds.all) + " times", [&] {
        for (int round = 0; round < rounds.all; ++round) {
            if (round == rounds.settled) before = ProcessFigures::Now();
            OneRound(setting, round, times);
        }
        return Passed("done");
    });
    if (times.free.size() < static_cast<std::size_t>(rounds.all)) return;
    journal.Do("time of a load", [&] { return JudgeTimes(times.load); });
    journal.Do("time of a free", [&] { return JudgeTimes(times.free); });
    const auto counted = static_cast<std::uint64_t>(rounds.Counted());
    const std::uint64_t mostGrowth = kMostBytesAtAll + kMostBytesARound * counted;
    const ProcessFigures after = AfterRest(before.threads, before.privateBytes + mostGrowth, setting.quick ? 16 : 60);
    journal.Do("threads", [&] { return JudgeGrowth(before.threads, after.threads, counted / 4); });
    journal.Do("handles", [&] { return JudgeGrowth(before.handles, after.handles, counted / 2); });
    journal.Do("private bytes", [&] { return JudgeGrowth(before.privateBytes, after.privateBytes, mostGrowth); });
}

}  // namespace dialwright::verify
