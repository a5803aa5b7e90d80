#pragma once

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "look/unique_handle.h"
#include "run/host_place.h"
#include "run/wire.h"

namespace dialwright::tools {

/// The process that has loaded the library and calls it for us, so that a call that never returns can be ended. It does
/// not outlive this object; programs that it has launched do.
class Worker {
public:
    /// Starts it. Throws std::runtime_error, with a text for people, when it or the library cannot be started. A place
    /// in which no program may run is given up.
    Worker(HostPlace& place, const std::filesystem::path& library);
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void Send(const Request& request);

    /// The next line of its standard output, or nothing when none came before the deadline or the worker has ended.
    [[nodiscard]] std::optional<std::string> NextLine(DWORD deadlineMs);
    /// No more lines will come.
    [[nodiscard]] bool HasEnded();

    [[nodiscard]] const std::string& Word() const { return word; }

private:
    void Start(HostPlace& place);
    void CollectLines(HANDLE output);
    void Begin(const std::filesystem::path& library);
    void End();

    std::string word;
    UniqueHandle job;
    UniqueHandle process;
    UniqueHandle input;
    UniqueHandle lifeline;
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<std::string> lines;
    bool ended = false;
    std::thread reader;
};

}  // namespace dialwright::tools
