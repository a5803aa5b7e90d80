#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <string>

#include "host_folder.h"
#include "support/settings_key.h"
#include "support/soak.h"
#include "support/wait.h"
#include "trace/settings_word.h"

namespace dialwright {
namespace {

using testing::ChildProcess;
using testing::kPatienceMs;

struct Growth {
    int threads = 0;
    int handles = 0;
    long long addressSpace = 0;
};

/// How much more a host holds after so many cycles than before them.
Growth RunCycles(const HostFolder& host, int count, const std::wstring& way) {
    ChildProcess process(host.LoadHost(), {L"cycles", std::to_wstring(count), way});
    std::istringstream figures(process.ReadLine(kPatienceMs + static_cast<DWORD>(count) * 1000).value_or(""));
    Growth before;
    Growth after;
    EXPECT_TRUE(figures >> before.threads >> before.handles >> before.addressSpace >> after.threads >> after.handles >>
                after.addressSpace);
    EXPECT_EQ(0U, process.WaitForExit(kPatienceMs));
    return {.threads = after.threads - before.threads,
            .handles = after.handles - before.handles,
            .addressSpace = after.addressSpace - before.addressSpace};
}

std::size_t CountEndingIn(const std::vector<std::string>& lines, const std::string& ending) {
    return static_cast<std::size_t>(
        std::ranges::count_if(lines, [&](const std::string& line) { return line.ends_with(ending); }));
}

class LoadAndFree : public ::testing::TestWithParam<const wchar_t*> {};

TEST_P(LoadAndFree, LeavesNothingBehindAndLogsEachTime) {
    const int cycles = testing::Rounds(60, 1000);
    const HostFolder host;
    const Growth growth = RunCycles(host, cycles, GetParam());
    std::printf("%d cycles: threads %+d, handles %+d, address space %+lld KiB\n", cycles, growth.threads,
                growth.handles, growth.addressSpace / 1024);
    EXPECT_LE(growth.threads, 0);
    EXPECT_LE(growth.handles, 0);
    // The heap may take a little. A lost image, stack or memory block each cycle would be 50 MiB and more.
    EXPECT_LE(growth.addressSpace, 8 * 1024 * 1024);
    // Three cycles come before the first look.
    EXPECT_EQ(static_cast<std::size_t>(cycles) + 3,
              CountEndingIn(testing::ReadTrace(host.TraceFile()), "trace stopped"));
    if (GetParam() != std::wstring(L"call")) return;
    EXPECT_EQ(1U, CountEndingIn(testing::ReadTrace(host.TraceFile(L"_error")), "Bogus." + std::to_string(cycles - 1)));
}

INSTANTIATE_TEST_SUITE_P(By, LoadAndFree, ::testing::Values(L"none", L"pause", L"call"), [](const auto& info) {
    const std::wstring way = info.param;
    return std::string(way == L"none"    ? "FreeingAtOnce"
                       : way == L"pause" ? "FreeingAfterAMoment"
                                         : "FreeingAfterACall");
});

TEST(Unload, RemovesTheCrashFilter) {
    const HostFolder host;
    const testing::SettingsKey key;
    key.Set("flag", static_cast<DWORD>(kSettingsAtStart | TRACE_CRASH_DUMP));
    ChildProcess process(host.LoadHost(), {L"filter", std::wstring(key.Path().begin(), key.Path().end())});
    EXPECT_EQ("was installed", process.ReadLine(kPatienceMs));
    EXPECT_EQ("is gone", process.ReadLine(kPatienceMs));
    EXPECT_EQ(0U, process.WaitForExit(kPatienceMs));
}

TEST(Load, NamesTheFilesAfterHostAndSession) {
    const HostFolder host;
    ChildProcess process(host.LoadHost(), {L"calls"});
    ASSERT_EQ("ready", process.ReadLine(kPatienceMs));
    process.WriteLine("");
    EXPECT_EQ("logged", process.ReadLine(kPatienceMs));
    EXPECT_TRUE(testing::WaitUntil([&] { return testing::FileExists(host.TraceFile()); }));
    EXPECT_EQ(1U, testing::ReadTrace(host.TraceFile(L"_error")).size());
}

TEST(Load, WritesTheHeaderThoughNobodyCalls) {
    const HostFolder host;
    const ChildProcess process(host.LoadHost(), {L"calls"});
    EXPECT_TRUE(testing::WaitUntil([&] {
        const auto lines = testing::ReadTrace(host.TraceFile());
        return lines.size() == 1 && lines[0].find("[Dialwright  1359    info] (Time Zone: ") != std::string::npos;
    }));
}

}  // namespace
}  // namespace dialwright
