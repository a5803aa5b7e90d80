#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/windows.h"

namespace dialwright::testing {

/// A program beside this test, or elsewhere by its full path, started with arguments; its standard output is read line
/// by line as it comes. Ended by the destructor, by closing its input first.
class ChildProcess {
public:
    ChildProcess(const std::wstring& program, const std::vector<std::wstring>& arguments);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    void WriteLine(const std::string& line);
    void CloseInput();

    /// The next line, or nothing when the program ended or the deadline passed.
    [[nodiscard]] std::optional<std::string> ReadLine(DWORD deadlineMs);

    [[nodiscard]] DWORD Id() const { return ::GetProcessId(process); }

    void Kill();

    /// The exit code, or nothing when the program still runs at the deadline.
    [[nodiscard]] std::optional<DWORD> WaitForExit(DWORD deadlineMs);

private:
    void CollectLines(HANDLE output);

    HANDLE process = nullptr;
    HANDLE input = nullptr;
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<std::string> lines;
    bool ended = false;
    std::thread reader;
};

/// The folder of this test program, with a final backslash.
[[nodiscard]] std::wstring ProgramFolder();

}  // namespace dialwright::testing
