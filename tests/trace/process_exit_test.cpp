#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "host_folder.h"
#include "support/patience.h"
#include "support/soak.h"
#include "support/wait.h"

namespace dialwright {
namespace {

using testing::ChildProcess;

constexpr int kThreads = 8;

struct Ending {
    /// Nothing when the host hung.
    std::optional<DWORD> exitCode;
    /// How many lines each thread had logged before the exit began.
    std::vector<int> logged;
    bool wineFailed = false;
};

Ending RunOnce(const HostFolder& host, const std::wstring& way) {
    ChildProcess process(host.LoadHost(), {L"exit", way, std::to_wstring(kThreads), L"2000"});
    Ending ending;
    std::istringstream counts(process.ReadLine(60000).value_or(""));
    for (int count = 0; counts >> count;) ending.logged.push_back(count);
    ending.exitCode = process.WaitForExit(60000);
    if (!ending.exitCode) process.Kill();
    while (const auto line = process.ReadLine(testing::kPatienceMs)) {
        ending.wineFailed = ending.wineFailed || line->find("wine client error") != std::string::npos;
    }
    return ending;
}

/// Wine itself fails once in a hundred such exits, and says so; then, and only then, once more.
Ending LeaveWhileLogging(const HostFolder& host, const std::wstring& way) {
    Ending ending = RunOnce(host, way);
    if (!ending.wineFailed) return ending;
    ::DeleteFileW(host.TraceFile().c_str());
    return RunOnce(host, way);
}

/// The line numbers of each thread, in the order of the file.
std::map<int, std::vector<int>> LinesOfThreads(const std::vector<std::string>& lines) {
    std::map<int, std::vector<int>> numbers;
    for (const std::string& line : lines) {
        int thread = 0;
        int number = 0;
        const std::size_t message = line.find("Probe: thread ");
        if (message == std::string::npos) continue;
        if (std::sscanf(line.c_str() + message, "Probe: thread %d line %d", &thread, &number) == 2) {
            numbers[thread].push_back(number);
        }
    }
    return numbers;
}

class ProcessExit : public ::testing::TestWithParam<const wchar_t*> {};

TEST_P(ProcessExit, UnderLoggingThreadsKeepsEveryLineAndTheExitCode) {
    const bool isKilled = GetParam() == std::wstring(L"TerminateProcess");
    if (testing::IsEmulated() && !isKilled) {
        GTEST_SKIP() << "Wine under the emulator dies of threads that compute while their process exits";
    }
    const int rounds = testing::Rounds(10, 100);
    for (int round = 0; round < rounds; ++round) {
        const HostFolder host;
        const Ending ending = LeaveWhileLogging(host, GetParam());
        ASSERT_EQ(7U, ending.exitCode);
        ASSERT_EQ(static_cast<std::size_t>(kThreads), ending.logged.size());
        if (isKilled) continue;  // without a word to the library; only what was written out before is there
        const std::vector<std::string> lines = testing::ReadTrace(host.TraceFile());
        ASSERT_FALSE(lines.empty());
        EXPECT_TRUE(lines.back().ends_with("[Dialwright  1418    info] trace stopped")) << lines.back();
        auto numbers = LinesOfThreads(lines);
        for (int thread = 0; thread < kThreads; ++thread) {
            const std::vector<int>& own = numbers[thread];
            EXPECT_GE(own.size(), static_cast<std::size_t>(ending.logged[static_cast<std::size_t>(thread)]));
            for (std::size_t i = 0; i < own.size(); ++i) ASSERT_EQ(static_cast<int>(i) + 1, own[i]) << thread;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(By, ProcessExit,
                         ::testing::Values(L"ExitProcess", L"exit", L"_exit", L"return", L"TerminateProcess"),
                         [](const auto& info) {
                             std::string name;
                             for (const wchar_t* c = info.param; *c != 0; ++c) {
                                 if (*c != L'_') name.push_back(static_cast<char>(*c));
                             }
                             return info.index == 2 ? "Underscore" + name : name;
                         });

}  // namespace
}  // namespace dialwright
