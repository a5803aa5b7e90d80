#include "trace_check.h"

#include <utility>

#include "trace_reader/file_pairs.h"
#include "trace_reader/record_source.h"

namespace dialwright::testing {
namespace {

bool IsOf(const tools::TraceFields& record, std::string_view function) {
    if (function != kEnumeration) return record.function == function;
    return record.function == "Window::GetLocalCoordinates" || record.function == "Window::EnumAllChildrenProc";
}

bool BeginsACommand(const tools::TraceFields& record) {
    return record.message.starts_with("Initializing window search") ||
           record.function.starts_with("DialogScriptManager::");
}

std::string Shown(const tools::TraceFields& record) {
    return "'" + std::string(record.function) + ": " + std::string(record.message.substr(0, 200)) + "'";
}

bool IsRotationLine(const std::string& record) {
    return record.starts_with("(Time Zone: ") && record.find("log rotated at") != std::string::npos;
}

/// The main file's records one by one, and beside them the error file's, which must be the errors among them.
class TraceReading {
public:
    TraceReading(const tools::TracePair& main, const tools::TracePair& error,
                 const std::map<std::uint32_t, std::size_t>& workerOfThread, std::vector<WorkerTrace>& workers)
        : records(main), errors(error), workerOfThread(workerOfThread), workers(workers) {}

    TraceVerdict Run() {
        while (verdict.fault.empty()) {
            const auto record = records.Next();
            if (!record) break;
            ++verdict.records;
            verdict.bytes += record->size() + 2;
            verdict.fault = Take(*record);
        }
        if (verdict.fault.empty()) verdict.fault = TakeEnd();
        return verdict;
    }

private:
    std::string Take(const std::string& record) {
        if (IsRotationLine(record)) {
            ++verdict.rotations;
            return {};
        }
        const tools::TraceFields fields = tools::ReadFields(record);
        if (!fields.thread || !fields.level || fields.time.empty()) return "a torn record: '" + record + "'";
        if (fields.level == tools::TraceLevel::Error && errors.Next() != record) {
            return "not next in the error file: '" + record + "'";
        }
        if (fields.function.empty()) return {};  // the logger's own
        const auto worker = workerOfThread.find(*fields.thread);
        return worker == workerOfThread.end() ? "a record of an unknown thread: '" + record + "'"
                                              : workers[worker->second].Take(fields);
    }

    std::string TakeEnd() {
        if (!records.Broken().empty()) return "a file could not be read to its end";
        if (const auto more = errors.Next()) return "only in the error file: '" + *more + "'";
        for (const WorkerTrace& worker : workers) {
            if (std::string fault = worker.TakeEnd(); !fault.empty()) return fault;
        }
        return {};
    }

    tools::PairRecords records;
    tools::PairRecords errors;
    const std::map<std::uint32_t, std::size_t>& workerOfThread;
    std::vector<WorkerTrace>& workers;
    TraceVerdict verdict;
};

}  // namespace

std::string WorkerTrace::Take(const tools::TraceFields& record) {
    for (;;) {
        if (IsWhole()) {
            if (current.mayLeaveMore && !BeginsACommand(record)) return {};
            if (std::string fault = BeginCommand(record); !fault.empty()) return fault;
        }
        const FunctionRun& expected = current.trace[run];
        if (IsOf(record, expected.function)) {
            if (++taken == expected.count) return EndRun();
            return {};
        }
        if (expected.count != kAnyCount || taken == 0) {
            return "after " + current.mark + " comes " + Shown(record) + ", not a record of " +
                   std::string(expected.function);
        }
        if (std::string fault = EndRun(); !fault.empty()) return fault;
    }
}

std::string WorkerTrace::BeginCommand(const tools::TraceFields& record) {
    const std::string before = current.mark;
    if (commandsLeft-- == 0) return "after the last command comes " + Shown(record);
    current = commands.Next();
    run = 0;
    taken = 0;
    if (record.message.find(current.mark) != std::string_view::npos) return {};
    return "after " + before + " comes " + Shown(record) + ", not " + current.mark;
}

std::string WorkerTrace::EndRun() {
    const bool isEnumeration = current.trace[run].count == kAnyCount;
    ++run;
    const int count = std::exchange(taken, 0);
    if (!isEnumeration || !current.control) return {};
    const auto [known, isNew] = enumerated.emplace(*current.control, count);
    if (known->second == count) return {};
    return "the position search of " + current.mark + " left " + std::to_string(count) + " records, not " +
           std::to_string(known->second);
}

std::string WorkerTrace::TakeEnd() const {
    if (commandsLeft != 0) return std::to_string(commandsLeft) + " commands left no record after " + current.mark;
    return IsWhole() ? "" : "the trace ends within " + current.mark;
}

TraceVerdict CheckTrace(const std::wstring& mainFile, const std::map<std::uint32_t, std::size_t>& workerOfThread,
                        std::vector<WorkerTrace>& workers) {
    const std::wstring ending = L".log";
    const std::wstring errorFile = mainFile.substr(0, mainFile.size() - ending.size()) + L"_error" + ending;
    return TraceReading(tools::PairOf(mainFile), tools::PairOf(errorFile), workerOfThread, workers).Run();
}

}  // namespace dialwright::testing
