#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "dialwright/dialwright_loader.h"
#include "platform/text_encoding.h"
#include "process_figures.h"
#include "random_commands.h"
#include "support/practice_window.h"
#include "support/soak.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "trace_check.h"

#include <fcntl.h>
#include <io.h>

namespace dialwright::testing {
namespace {

constexpr int kWorkers = 4;
constexpr int kCheckAllEvery = 50;

std::uint64_t Seed() {
    if (const char* const given = std::getenv("DIALWRIGHT_SOAK_SEED")) return std::strtoull(given, nullptr, 10);
    return IsSoak() ? std::random_device()() : 1;
}

/// Nobody reads the library's copies of its messages here.
class OutputToNowhere {
public:
    OutputToNowhere() {
        std::fflush(stdout);
        const int nowhere = ::_open("NUL", _O_WRONLY | _O_BINARY);
        ::_dup2(nowhere, 1);
        ::_close(nowhere);
    }
    ~OutputToNowhere() {
        std::fflush(stdout);
        ::_dup2(saved, 1);
        ::_close(saved);
    }
    OutputToNowhere(const OutputToNowhere&) = delete;
    OutputToNowhere& operator=(const OutputToNowhere&) = delete;

private:
    int saved = ::_dup(1);
};

/// The real library, loaded for as long as this lives: its trace is whole when it is gone.
class Library {
public:
    Library() { EXPECT_EQ(1, DialwrightLoad(&library, nullptr, nullptr, 0)); }
    ~Library() { DialwrightFree(&library); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    [[nodiscard]] int Execute(const std::wstring& line) const { return library.executeCommand(line.c_str()); }

private:
    DialwrightLibrary library{};
};

struct TargetFigures {
    int threads = 0;
    int handles = 0;
};

struct Figures {
    ProcessFigures host;
    std::vector<TargetFigures> targets;
};

/// A window of its own and the commands for it.
class Worker {
public:
    Worker(bool isDialog, std::uint64_t itsSeed)
        : seed(itsSeed),
          target(isDialog ? kDialogClass : kPlainClass),
          fixture(ReadFixture(target.Handle(), isDialog ? kDialogClass : kPlainClass, target.Title())),
          commands(fixture, seed) {}

    /// Carries out so many commands more, on the calling thread; stops at the first fault of any worker.
    void Run(const Library& library, int count, std::atomic<bool>& failed) {
        threads.push_back(::GetCurrentThreadId());
        for (int i = 0; i < count && !failed; ++i) {
            const RandomCommand command = commands.Next();
            const int result = library.Execute(command.line);
            const std::string wrong =
                result == command.result ? FaultAfter(command) : "the result is " + std::to_string(result);
            ++done;
            lastLines += "\n" + ToUtf8(command.line);
            if (wrong.empty()) continue;
            failed = true;
            fault = "command " + std::to_string(done) + ": " + wrong + LastWords();
        }
    }

    /// What the target holds of the system, as it says itself.
    [[nodiscard]] TargetFigures FiguresOfTarget() {
        (void)target.TakeAllEvents();
        target.Do(L"figures");
        std::istringstream line(target.TakeAllEvents().front());
        std::string word;
        TargetFigures figures;
        line >> word >> figures.threads >> figures.handles;
        return figures;
    }

    [[nodiscard]] int Done() const { return done; }
    [[nodiscard]] const std::string& Fault() const { return fault; }
    [[nodiscard]] const std::vector<DWORD>& Threads() const { return threads; }
    [[nodiscard]] WorkerTrace Trace() const { return {fixture, seed, done}; }

private:
    /// The lines and messages since all was checked last, for whoever has to find out why.
    std::string LastWords() {
        std::string words = lastLines;
        for (const std::string& event : target.TakeAllEvents()) words += "\n    " + event;
        return words;
    }

    std::string FaultAfter(const RandomCommand& command) {
        // A click that is posted must be handled before the next one is sent.
        if (command.clicks) target.Do(L"mark handled");
        const Model& model = commands.Expected();
        std::string wrong = command.control ? model.FaultOf(*command.control) : model.FaultOfWindow();
        if (!wrong.empty() || (done + 1) % kCheckAllEvery != 0) return wrong;
        lastLines.clear();
        wrong = model.FaultOfAll();
        std::vector<std::string> events = target.TakeAllEvents();
        std::erase_if(events, [](const std::string& event) { return event.starts_with("mark "); });
        return wrong.empty() ? commands.Expected().FaultOfMessages(events) : wrong;
    }

    std::uint64_t seed;
    PracticeWindow target;
    Fixture fixture;
    RandomCommands commands;
    std::atomic<int> done = 0;
    std::string fault;
    std::string lastLines;
    std::vector<DWORD> threads;
};

using Workers = std::vector<std::unique_ptr<Worker>>;

int DoneOfAll(const Workers& workers) {
    int sum = 0;
    for (const auto& worker : workers) sum += worker->Done();
    return sum;
}

/// Lets each worker carry out so many commands on a thread of its own. Says how it goes every few seconds.
void RunAll(Workers& workers, const Library& library, int each) {
    std::atomic<bool> failed = false;
    std::atomic<int> running = kWorkers;
    const int before = DoneOfAll(workers);
    std::vector<std::thread> threads;
    for (const auto& worker : workers) {
        threads.emplace_back([&] {
            worker->Run(library, each, failed);
            --running;
        });
    }
    const ULONGLONG begin = ::GetTickCount64();
    constexpr DWORD kBetweenWordsMs = 5000;
    while (!WaitUntil([&] { return running == 0; }, kBetweenWordsMs)) {
        const int done = DoneOfAll(workers) - before;
        std::fprintf(stderr, "%d of %d commands, %llu a second\n", done, each * kWorkers,
                     static_cast<unsigned long long>(done) * 1000 / (::GetTickCount64() - begin));
    }
    for (std::thread& thread : threads) thread.join();
}

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
    }
}

void ExpectNoGrowth(const Figures& before, const Figures& after) {
    EXPECT_LE(after.host.threads, before.host.threads);
    EXPECT_LE(after.host.handles, before.host.handles);
    EXPECT_LE(after.host.guiObjects, before.host.guiObjects);
    constexpr unsigned long long kAllowance = 4ULL * 1024 * 1024;
    EXPECT_LE(after.host.privateBytes, before.host.privateBytes + kAllowance);
    constexpr int kFewHandles = 8;
    for (std::size_t i = 0; i < before.targets.size(); ++i) {
        EXPECT_LE(after.targets[i].threads, before.targets[i].threads);
        EXPECT_LE(after.targets[i].handles, before.targets[i].handles + kFewHandles);
    }
}

void ExpectCompleteTrace(const Workers& workers) {
    std::map<std::uint32_t, std::size_t> workerOfThread;
    std::vector<WorkerTrace> traces;
    for (const auto& worker : workers) {
        for (const DWORD thread : worker->Threads()) workerOfThread[thread] = traces.size();
        traces.push_back(worker->Trace());
    }
    const TraceVerdict verdict = CheckTrace(TraceFile(), workerOfThread, traces);
    EXPECT_EQ("", verdict.fault);
    std::fprintf(stderr, "trace: %llu records, %llu MB, %d rotations\n", verdict.records, verdict.bytes / 1'000'000,
                 verdict.rotations);
}

void Report(int count, ULONGLONG milliseconds, const Figures& before, const Figures& after) {
    std::fprintf(
        stderr,
        "%d commands in %.1f s, %.0f a second; host: threads %u to %u, handles %u to %u, private %llu to %llu KiB\n",
        count, static_cast<double>(milliseconds) / 1000, count * 1000.0 / static_cast<double>(milliseconds),
        before.host.threads, after.host.threads, before.host.handles, after.host.handles,
        before.host.privateBytes / 1024, after.host.privateBytes / 1024);
    for (std::size_t i = 0; i < before.targets.size(); ++i) {
        std::fprintf(stderr, "target %zu: threads %d to %d, handles %d to %d\n", i, before.targets[i].threads,
                     after.targets[i].threads, before.targets[i].handles, after.targets[i].handles);
    }
}

TEST(Soak, RandomCommandsFromFourThreadsEachHaveTheRightResultAndLeaveATraceAndNothingElse) {
    const std::uint64_t seed = Seed();
    std::fprintf(stderr, "DIALWRIGHT_SOAK_SEED=%llu\n", static_cast<unsigned long long>(seed));
    const int warmUp = Rounds(100, 2'500);
    const int each = Rounds(400, 50'000);
    DeleteTrace();
    Workers workers;
    {
        const OutputToNowhere quiet;
        const Library library;
        for (int i = 0; i < kWorkers; ++i) {
            workers.push_back(std::make_unique<Worker>(i % 2 == 0, seed * kWorkers + static_cast<std::uint64_t>(i)));
        }
        RunAll(workers, library, warmUp);
        const Figures before = TakeFigures(workers);
        const ULONGLONG begin = ::GetTickCount64();
        RunAll(workers, library, each);
        const ULONGLONG end = ::GetTickCount64();
        const Figures after = TakeFigures(workers);
        Report(each * kWorkers, end - begin, before, after);
        ExpectNoGrowth(before, after);
    }
    for (const auto& worker : workers) EXPECT_EQ("", worker->Fault());
    ExpectCompleteTrace(workers);
    if (!HasFailure()) DeleteTrace();
}

}  // namespace
}  // namespace dialwright::testing
