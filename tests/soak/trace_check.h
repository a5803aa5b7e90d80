#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "random_commands.h"
#include "trace_reader/trace_line.h"

namespace dialwright::testing {

/// Reads the records of one worker against the commands that it gave, which are made once more from their seed.
class WorkerTrace {
public:
    WorkerTrace(const Fixture& fixture, std::uint64_t seed, int commandCount)
        : commands(fixture, seed), commandsLeft(commandCount) {}

    /// What is wrong with the worker's next record; empty where it is the one that must come.
    [[nodiscard]] std::string Take(const tools::TraceFields& record);
    /// The same at the end of the trace.
    [[nodiscard]] std::string TakeEnd() const;

private:
    [[nodiscard]] bool IsWhole() const { return run == current.trace.size(); }
    [[nodiscard]] std::string BeginCommand(const tools::TraceFields& record);
    [[nodiscard]] std::string EndRun();

    RandomCommands commands;
    int commandsLeft;
    RandomCommand current;
    std::size_t run = 0;
    int taken = 0;
    /// A position search looks at the same windows each time.
    std::map<std::size_t, int> enumerated;
};

struct TraceVerdict {
    std::string fault;
    unsigned long long records = 0;
    unsigned long long bytes = 0;
    int rotations = 0;
};

/// Reads both files of the host's trace, and its error file: no record is lost, torn, doubled or out of order.
/// `workerOfThread` tells whose record it is.
[[nodiscard]] TraceVerdict CheckTrace(const std::wstring& mainFile,
                                      const std::map<std::uint32_t, std::size_t>& workerOfThread,
                                      std::vector<WorkerTrace>& workers);

}  // namespace dialwright::testing
