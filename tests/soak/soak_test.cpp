#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "process_figures.h"
#include "support/diverted_output.h"
#include "support/soak.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "worker.h"

#include <fcntl.h>
#include <io.h>

namespace dialwright::testing {
namespace {

constexpr int kWorkers = 4;

std::uint64_t Seed() {
    if (const char* const given = std::getenv("DIALWRIGHT_SOAK_SEED")) return std::strtoull(given, nullptr, 10);
    return IsSoak() ? std::random_device()() : 1;
}

/// Nobody reads the library's copies of its messages here.
class OutputToNowhere {
public:
    OutputToNowhere() { ::_close(nowhere); }

private:
    int nowhere = ::_open("NUL", _O_WRONLY | _O_BINARY);
    DivertedOutput output{nowhere};
};

struct Figures {
    ProcessFigures host;
    std::vector<TargetFigures> targets;
};

int DoneOfAll(const Workers& workers) {
    int sum = 0;
    for (const auto& worker : workers) sum += worker->Done();
    return sum;
}

/// A thread for each worker, the same ones throughout: they tell the workers apart in the trace.
class Crew {
public:
    Crew(SoakRun& soakRun, const Workers& all) : run(soakRun), workers(all) {
        for (const auto& worker : workers) threads.emplace_back([this, &worker] { Serve(*worker); });
    }
    ~Crew() {
        next = 0;
        gate.arrive_and_wait();
        for (std::thread& thread : threads) thread.join();
    }
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;

    /// Lets each worker carry out so many commands. Says how it goes every few seconds.
    void CarryOut(int each) {
        const int before = DoneOfAll(workers);
        next = each;
        running = kWorkers;
        gate.arrive_and_wait();
        const ULONGLONG begin = ::GetTickCount64();
        constexpr DWORD kBetweenWordsMs = 5000;
        while (!WaitUntil([&] { return running == 0; }, kBetweenWordsMs)) {
            const int done = DoneOfAll(workers) - before;
            std::fprintf(stderr, "%d of %d commands, %llu a second\n", done, each * kWorkers,
                         static_cast<unsigned long long>(done) * 1000 / (::GetTickCount64() - begin));
            std::fflush(stderr);
        }
        gate.arrive_and_wait();
    }

private:
    void Serve(Worker& worker) {
        for (;;) {
            gate.arrive_and_wait();
            if (next == 0) return;
            worker.Run(run, next);
            --running;
            gate.arrive_and_wait();
        }
    }

    SoakRun& run;
    const Workers& workers;
    std::barrier<> gate{kWorkers + 1};
    std::atomic<int> next = 0;
    std::atomic<int> running = 0;
    std::vector<std::thread> threads;
};

Figures TakeFigures(const Workers& workers) {
    Figures figures;
    for (const auto& worker : workers) figures.targets.push_back(worker->FiguresOfTarget());
    figures.host = ProcessFigures::Now();
    return figures;
}

std::wstring TraceFile() {
    DWORD session = 0;
    ::ProcessIdToSessionId(::GetCurrentProcessId(), &session);
    return ProgramFolder() + L"logs\\trace\\soak_tests.exe_" + std::to_wstring(session) + L"_Dialwright_1.log";
}

void DeleteTrace() {
    const std::wstring stem = TraceFile().substr(0, TraceFile().size() - 6);
    for (const wchar_t* end : {L"_1.log", L"_2.log", L"_1_error.log", L"_2_error.log"}) {
        ::DeleteFileW((stem + end).c_str());
        EXPECT_FALSE(FileExists(stem + end));
    }
}

void ExpectNoMoreObjects(const Figures& before, const Figures& after) {
    EXPECT_LE(after.host.threads, before.host.threads);
    EXPECT_LE(after.host.handles, before.host.handles);
    EXPECT_LE(after.host.guiObjects, before.host.guiObjects);
    constexpr int kFew = 8;
    for (std::size_t i = 0; i < before.targets.size(); ++i) {
        EXPECT_LE(after.targets[i].threads, before.targets[i].threads);
        EXPECT_LE(after.targets[i].handles, before.targets[i].handles + kFew);
        EXPECT_LE(after.targets[i].guiObjects, before.targets[i].guiObjects + kFew);
    }
}

std::vector<long long> PrivateKiB(const Figures& figures) {
    std::vector<long long> sizes{static_cast<long long>(figures.host.privateBytes / 1024)};
    for (const TargetFigures& target : figures.targets) sizes.push_back(target.privateKiB);
    return sizes;
}

/// What leaks grows in both halves of the run; a heap that takes a large piece from the system does so in one.
void ExpectNoMoreMemory(const Figures& before, const Figures& halfWay, const Figures& after) {
    const std::vector<long long> first = PrivateKiB(before);
    const std::vector<long long> second = PrivateKiB(halfWay);
    const std::vector<long long> third = PrivateKiB(after);
    for (std::size_t i = 0; i < first.size(); ++i) {
        // In the soak less than the smallest block for each command. The suite's few commands cannot tell a leak of a
        // target from the megabytes that Wine 10 takes for its heaps.
        const long long allowance = i == 0 ? Rounds(256, 2048) : Rounds(8192, 512);
        EXPECT_LE(std::min(second[i] - first[i], third[i] - second[i]), allowance) << "process " << i;
    }
}

void ExpectCompleteTrace(const Workers& workers) {
    std::map<std::uint32_t, std::size_t> workerOfThread;
    std::vector<WorkerTrace> traces;
    for (const auto& worker : workers) {
        workerOfThread[worker->Thread()] = traces.size();
        traces.push_back(worker->Trace());
    }
    const TraceVerdict verdict = CheckTrace(TraceFile(), workerOfThread, traces);
    EXPECT_EQ("", verdict.fault);
    std::fprintf(stderr, "trace: %llu records, %llu MB, %d rotations\n", verdict.records, verdict.bytes / 1'000'000,
                 verdict.rotations);
}

void Report(int count, ULONGLONG milliseconds, const Figures& before, const Figures& after) {
    const double seconds = static_cast<double>(milliseconds) / 1000;
    std::fprintf(stderr, "%d commands in %.1f s, %.0f a second\n", count, seconds, count / seconds);
    std::fprintf(
        stderr, "host: threads %u to %u, handles %u to %u, private memory %llu to %llu KiB, GUI objects %u to %u\n",
        before.host.threads, after.host.threads, before.host.handles, after.host.handles,
        before.host.privateBytes / 1024, after.host.privateBytes / 1024, before.host.guiObjects, after.host.guiObjects);
    for (std::size_t i = 0; i < before.targets.size(); ++i) {
        const TargetFigures& first = before.targets[i];
        const TargetFigures& last = after.targets[i];
        std::fprintf(
            stderr,
            "target %zu: threads %d to %d, handles %d to %d, private memory %d to %d KiB, GUI objects %d to %d\n", i,
            first.threads, last.threads, first.handles, last.handles, first.privateKiB, last.privateKiB,
            first.guiObjects, last.guiObjects);
    }
}

TEST(Soak, RandomCommandsFromFourThreadsEachHaveTheRightResultAndLeaveATraceAndNothingElse) {
    const std::uint64_t seed = Seed();
    std::fprintf(stderr, "DIALWRIGHT_SOAK_SEED=%llu\n", static_cast<unsigned long long>(seed));
    const int warmUp = Rounds(100, 2'500);
    const int half = Rounds(200, 25'000);
    DeleteTrace();
    Workers workers;
    {
        const OutputToNowhere quiet;
        const Library library;
        for (int i = 0; i < kWorkers; ++i) {
            workers.push_back(std::make_unique<Worker>(i % 2 == 0, seed * kWorkers + static_cast<std::uint64_t>(i)));
        }
        SoakRun run{.library = library, .workers = workers, .failed = false, .focus = {}};
        Crew crew(run, workers);
        crew.CarryOut(warmUp);
        const Figures before = TakeFigures(workers);
        const ULONGLONG begin = ::GetTickCount64();
        crew.CarryOut(half);
        const Figures halfWay = TakeFigures(workers);
        crew.CarryOut(half);
        const ULONGLONG end = ::GetTickCount64();
        const Figures after = TakeFigures(workers);
        Report(2 * half * kWorkers, end - begin, before, after);
        ExpectNoMoreObjects(before, after);
        ExpectNoMoreMemory(before, halfWay, after);
    }
    for (const auto& worker : workers) EXPECT_EQ("", worker->Fault());
    ExpectCompleteTrace(workers);
    if (!HasFailure()) DeleteTrace();
}

}  // namespace
}  // namespace dialwright::testing
