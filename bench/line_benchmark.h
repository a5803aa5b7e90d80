#pragma once

#include <cstdio>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "arguments.h"
#include "measuring.h"

namespace dialwright::bench {

// What both writers write: the same line, but for the language of the format.
inline constexpr const char* kLoggerName = "Dialwright";
inline constexpr int kSourceLine = 40;
inline constexpr const char* kWindowName = "Sign in";

/// Of one length for every line.
constexpr int Control(int index) { return 100'000 + index; }

// Before the clock starts: both have their file open then, and their caches filled.
inline constexpr int kWarmUpLines = 1000;

/// Seconds from the first line until every line of all threads is in the file.
template <class Write, class Flush>
double SecondsFor(int threadCount, int linesOfEach, Write write, Flush flush) {
    std::latch ready(threadCount);
    std::latch go(1);
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&] {
            ready.count_down();
            go.wait();
            for (int line = 0; line < linesOfEach; ++line) write(line);
        });
    }
    ready.wait();
    const Stopwatch watch;
    go.count_down();
    for (std::thread& thread : threads) thread.join();
    flush();
    return watch.Seconds();
}

/// Writes as the arguments say, and prints what that took.
template <class Write, class Flush>
void RunLineBenchmark(const Arguments& arguments, Write write, Flush flush) {
    const int lines = arguments.Number("--lines");
    const int threads = arguments.Number("--threads");
    for (int line = 0; line < kWarmUpLines; ++line) write(line);
    flush();
    const std::string mode = arguments.Text("--measure");
    if (mode == "throughput") {
        const int linesOfEach = lines / threads;
        const double seconds = SecondsFor(threads, linesOfEach, write, flush);
        std::printf("{\"lines\": %d, \"written\": %d, \"seconds\": %.9f}\n", linesOfEach * threads,
                    linesOfEach * threads + kWarmUpLines, seconds);
    } else if (mode == "calls" && threads == 1) {
        const CallTimes times = TimeEachCall(lines, write);
        flush();
        std::printf("{\"lines\": %d, \"written\": %d, \"p50\": %.1f, \"p99\": %.1f, \"p999\": %.1f}\n", lines,
                    lines + kWarmUpLines, times.p50Ns, times.p99Ns, times.p999Ns);
    } else {
        arguments.Refuse("--measure wants throughput, or calls with one thread");
    }
}

inline Arguments ReadLineArguments(int count, char** values, const std::string& program) {
    return {
        count,
        values,
        "usage: " + program +
            " --measure throughput|calls --threads N --lines N --folder FOLDER\n\n"
            "Writes lines to a log file in the folder, whose name ends in a backslash, and prints one line of JSON.\n",
        {"--measure", "--threads", "--lines", "--folder"}};
}

}  // namespace dialwright::bench
