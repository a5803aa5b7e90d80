#pragma once

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "look/unique_handle.h"

namespace dialwright::verify {

struct ChildStart {
    std::filesystem::path program;
    std::vector<std::wstring> arguments = {};
    /// The rights that it gets; null for our own.
    HANDLE token = nullptr;
};

/// The system cannot start the program; says with which error.
class StartError : public std::runtime_error {
public:
    StartError(const std::filesystem::path& program, DWORD error);
    [[nodiscard]] DWORD Code() const { return code; }

private:
    DWORD code;
};

/// A program with pipes as its standard input and output, the latter read line by line as it comes. It and what it
/// starts live no longer than this object, nor than this process.
class ChildProgram {
public:
    /// Throws StartError.
    explicit ChildProgram(const ChildStart& start);
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    void WriteLine(const std::string& line);

    /// The next line, or nothing when none came in time or the program has closed its output.
    [[nodiscard]] std::optional<std::string> ReadLine(DWORD deadlineMs);

    /// The exit code, or nothing when it still runs then.
    [[nodiscard]] std::optional<DWORD> WaitForEnd(DWORD deadlineMs);

    /// Ends it and what it has started.
    void End();

    [[nodiscard]] HANDLE Process() const { return process.get(); }
    [[nodiscard]] DWORD Id() const { return ::GetProcessId(process.get()); }

private:
    void CollectLines();

    tools::UniqueHandle job;
    tools::UniqueHandle process;
    tools::UniqueHandle input;
    tools::UniqueHandle output;
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<std::string> lines;
    bool ended = false;
    std::thread reader;
};

/// All that a program prints, and what it ends with.
struct Output {
    DWORD exitCode = 0;
    std::string text;
};

/// Runs it to its end; throws where it has not ended by then.
[[nodiscard]] Output RunToEnd(const ChildStart& start, DWORD deadlineMs);

}  // namespace dialwright::verify
