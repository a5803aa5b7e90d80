#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <regex>
#include <string>

#include "host_folder.h"
#include "support/settings_key.h"
#include "support/soak.h"
#include "support/wait.h"
#include "trace/memory_log.h"
#include "trace/settings_word.h"

namespace dialwright {
namespace {

using testing::ChildProcess;

// Less than the time limit of a test, so that a hang is told as what it is.
constexpr DWORD kDumpPatienceMs = 100000;
constexpr bool kToolIsThere = TOOL_IS_THERE;

std::wstring Wide(const std::string& text) { return {text.begin(), text.end()}; }

std::vector<std::wstring> DumpsIn(const std::wstring& folder) {
    std::vector<std::wstring> dumps;
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW((folder + L"*.dmp").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return dumps;
    do dumps.emplace_back(found.cFileName);
    while (::FindNextFileW(search, &found));
    ::FindClose(search);
    return dumps;
}

class Crash : public ::testing::Test {
protected:
    void ExpectCrash(const std::wstring& where) {
        ChildProcess process(host.CrashHost(), {Wide(key.Path()), where});
        const auto code = process.WaitForExit(kDumpPatienceMs);
        // Wine passes on the low byte of the exception's code.
        EXPECT_TRUE(code == DWORD{EXCEPTION_ACCESS_VIOLATION} || code == 5U) << code.value_or(0);
    }

    const HostFolder host;
    const testing::SettingsKey key;
};

TEST_F(Crash, WritesNoDumpWithoutTheSetting) {
    key.Set("flag", static_cast<DWORD>(kSettingsAtStart));
    ExpectCrash(L"main");
    EXPECT_TRUE(DumpsIn(host.Folder().Path()).empty());
}

/// The block of the memory log in a dump: the label stands in the program's image too, but without a counter behind it.
std::unique_ptr<TraceMemLog> FindMemoryLog(const std::string& dump) {
    auto log = std::make_unique<TraceMemLog>();
    for (std::size_t at = 0; (at = dump.find("TraceMemLogHead", at)) != std::string::npos; ++at) {
        if (dump.size() - at < sizeof(TraceMemLog)) return nullptr;
        std::memcpy(log.get(), dump.data() + at, sizeof(TraceMemLog));
        if (log->counter > 0 && log->counter < 100'000) return log;
    }
    return nullptr;
}

/// The program around the library reads the same from the dump.
void ExpectMemlogToShow(const std::wstring& dump, const std::string& lastLine) {
    ChildProcess tool(L"dialwright.exe", {L"trace", L"memlog", dump});
    std::vector<std::string> lines;
    while (const auto line = tool.ReadLine(kDumpPatienceMs)) lines.push_back(*line);
    EXPECT_EQ(0U, tool.WaitForExit(testing::kPatienceMs));
    ASSERT_EQ(kMemoryLogSlots, lines.size());
    EXPECT_TRUE(lines.back().ends_with(lastLine)) << lines.back();
    EXPECT_TRUE(lines.front().ends_with("Crash: line 979")) << lines.front();
}

TEST_F(Crash, InAnotherThreadLeavesADumpWithTheLastLines) {
    key.Set("flag", static_cast<DWORD>(kSettingsAtStart | TRACE_CRASH_DUMP | TRACE_MEMORY));
    ExpectCrash(L"thread");
    const auto dumps = DumpsIn(host.Folder().Path());
    ASSERT_EQ(1U, dumps.size());
    const std::wregex name(LR"(crash_host\.exe \[\d+\.\d+\] \d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d\.dmp)");
    EXPECT_TRUE(std::regex_match(dumps[0], name));
    const std::string dump = testing::ReadFile(host.Folder().File(dumps[0]));
    ASSERT_TRUE(dump.starts_with("MDMP"));
    const auto log = FindMemoryLog(dump);
    ASSERT_NE(nullptr, log);
    const std::uint64_t counter = log->counter;
    // "setting changed", 2,000 lines, the host's path, "trace stopped".
    EXPECT_EQ(2003U, counter);
    EXPECT_TRUE(std::string(log->slots[(counter - 1) % kMemoryLogSlots].data()).ends_with("trace stopped"));
    EXPECT_TRUE(std::string(log->slots[(counter - 3) % kMemoryLogSlots].data()).ends_with("Crash: line 2000"));
    if (kToolIsThere) ExpectMemlogToShow(host.Folder().File(dumps[0]), "trace stopped");
    const auto lines = testing::ReadTrace(host.TraceFolder() + L"crash_1.log");
    ASSERT_EQ(2004U, lines.size());
    EXPECT_NE(std::string::npos, lines[2002].find("[Dialwright  400    info] "));
    EXPECT_TRUE(lines[2002].ends_with("\\crash_host.exe")) << lines[2002];
    EXPECT_TRUE(lines[2003].ends_with("[Dialwright  1418    info] trace stopped")) << lines[2003];
}

TEST_F(Crash, InTheMainThreadLeavesADumpToo) {
    if (!testing::IsSoak()) GTEST_SKIP() << "a dump takes its time; ./dev soak writes this one";
    key.Set("flag", static_cast<DWORD>(kSettingsAtStart | TRACE_CRASH_DUMP));
    ExpectCrash(L"main");
    EXPECT_EQ(1U, DumpsIn(host.Folder().Path()).size());
}

}  // namespace
}  // namespace dialwright
