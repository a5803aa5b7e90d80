#pragma once

#include <atomic>
#include <memory>
#include <shared_mutex>
#include <string>
#include <vector>

#include "dialwright/dialwright_loader.h"
#include "random_commands.h"
#include "support/practice_window.h"
#include "trace_check.h"

namespace dialwright::testing {

/// The real library, loaded for as long as this lives: its trace is whole when it is gone.
class Library {
public:
    Library();
    ~Library() { DialwrightFree(&library); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    [[nodiscard]] int Execute(const std::wstring& line) const { return library.executeCommand(line.c_str()); }

private:
    DialwrightLibrary library{};
};

/// What a target holds of the system, as it says itself.
struct TargetFigures {
    int threads = 0;
    int handles = 0;
    int privateKiB = 0;
    int guiObjects = 0;
};

class Worker;
using Workers = std::vector<std::unique_ptr<Worker>>;

/// What the workers of a run share.
struct SoakRun {
    const Library& library;
    Workers& workers;
    std::atomic<bool> failed = false;
    /// Held alone by what takes the focus from other windows.
    std::shared_mutex focus;
};

/// A window of its own and the commands for it.
class Worker {
public:
    Worker(bool isDialog, std::uint64_t seed);

    /// Carries out so many commands more, on the calling thread; stops at the first fault of any worker.
    void Run(SoakRun& run, int count);

    [[nodiscard]] TargetFigures FiguresOfTarget();
    [[nodiscard]] int Done() const { return done; }
    /// What went wrong, with the lines and messages before; empty where all is right.
    [[nodiscard]] const std::string& Fault() const { return fault; }
    /// The one that it has run on, always the same.
    [[nodiscard]] DWORD Thread() const { return thread; }
    [[nodiscard]] WorkerTrace Trace() const { return {fixture, seed, done}; }

private:
    [[nodiscard]] std::string FaultOf(const RandomCommand& command, SoakRun& run);
    [[nodiscard]] std::string FaultOfResult(const RandomCommand& command, const Library& library) const;
    [[nodiscard]] std::string FaultOfFixture(const RandomCommand& command);
    void Settle() { target.Do(L"mark settled"); }
    [[nodiscard]] std::string LastWords();

    std::uint64_t seed;
    PracticeWindow target;
    Fixture fixture;
    RandomCommands commands;
    std::atomic<int> done = 0;
    std::string fault;
    DWORD thread = 0;
    /// Since all was checked last.
    std::string lastLines;
    std::vector<std::string> events;
};

}  // namespace dialwright::testing
