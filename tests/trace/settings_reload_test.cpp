#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "support/settings_key.h"
#include "support/wait.h"
#include "trace/crash_dump.h"
#include "trace/logger.h"
#include "trace/logger_state.h"
#include "trace/settings_key.h"
#include "trace/trace.h"
#include "trace_fixture.h"

namespace dialwright {
namespace {

using testing::FileExists;
using Lines = std::vector<std::string>;

constexpr DWORD kUsual = 0x10F;

/// A started logger whose settings lie in a registry key; the key holds what is in force already.
class SettingsReload : public TraceFixture {
protected:
    void SetUp() override {
        Start();
        key.Set("flag", kUsual);
        key.Set("size", 512);
        SetTraceSettingsKey(key.Path().c_str());
    }

    void PollWithFlag(DWORD flag) {
        key.Set("flag", flag);
        PollTraceSettings();
    }

    [[nodiscard]] bool SomeFileIsThere() const {
        bool found = false;
        for (const wchar_t* name : {L"x.log", L"x_error.log", L"x_1.log", L"x_2.log", L"x_1_error.log"}) {
            found = found || FileExists(File(name));
        }
        return found;
    }

    const testing::SettingsKey key;
};

TEST_F(SettingsReload, ChangesNothingWhileTheKeyHoldsWhatIsInForce) {
    TraceLog("tag", LOG_INFO, "line");
    PollTraceSettings();
    StopAndRelease();
    EXPECT_EQ((Lines{"tag: line"}), MessagesOfMainFile());
}

TEST_F(SettingsReload, ChangesNothingWithoutAKey) {
    TraceLog("tag", LOG_ERROR, "line");
    SetTraceSettingsKey("");
    PollTraceSettings();
    EXPECT_EQ(kSettingsAtStart, Logger().settings);
    StopAndRelease();
    PollTraceSettings();
    SetTraceSettingsKey(key.Path().c_str());
    EXPECT_TRUE(Logger().settingsKey.Empty());
    EXPECT_EQ((Lines{"tag: line"}), MessagesOfMainFile());
}

TEST_F(SettingsReload, TellsOfAChange) {
    PollWithFlag(0x10E);
    EXPECT_EQ(0x10EU, Logger().settings);
    TraceLog("tag", LOG_INFO, "now off");
    TraceLog("tag", LOG_WARNING, "still on");
    StopAndRelease();
    const Lines messages = MessagesOfMainFile();
    ASSERT_EQ(2U, messages.size());
    // The line itself is written with bit 0x1 set, whatever the key says.
    const std::regex changed(
        R"(\([A-Z][a-z]{2} [A-Z][a-z]{2} [ 1-3]\d \d\d:\d\d:\d\d \d{4}, \d+s\) setting changed at )"
        R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} type: 0x10f size: 512 memory: 0x0{16})");
    EXPECT_TRUE(std::regex_match(messages[0], changed)) << messages[0];
    EXPECT_EQ("tag: still on", messages[1]);
    const std::string line = testing::ReadTrace(File(L"x_1.log"))[1];
    EXPECT_NE(std::string::npos, line.find("[Dialwright  689    info] "));
}

TEST_F(SettingsReload, DeletesTheFilesWhenTheFileSinkGoes) {
    TraceLog("tag", LOG_ERROR, "line");
    TraceLog("tag", LOG_INFO, "still buffered");
    testing::WriteFile(File(L"x.log"), "of a time without a size limit");
    testing::WriteFile(File(L"x_2.log"), "old");
    PollWithFlag(0xF);
    EXPECT_FALSE(SomeFileIsThere());
    TraceLog("tag", LOG_ERROR, "nowhere");
    StopAndRelease();
    EXPECT_FALSE(FileExists(File(L"x_1_error.log")));
}

TEST_F(SettingsReload, AMissingKeySwitchesAllOffAndDeletesTheFiles) {
    TraceLog("tag", LOG_ERROR, "line");
    SetTraceSettingsKey("Software\\DialwrightTest-nowhere");
    PollTraceSettings();
    EXPECT_EQ(0U, Logger().settings);
    EXPECT_EQ(512U, Logger().sizeLimitMiB);
    EXPECT_FALSE(SomeFileIsThere());
}

TEST_F(SettingsReload, AValueThatIsMissingOrNoNumberCountsAsItsDefault) {
    key.SetText("flag", "271");
    key.Set("size", 7);
    PollTraceSettings();
    EXPECT_EQ(0U, Logger().settings);
    EXPECT_EQ(7U, Logger().sizeLimitMiB);
    key.Set("flag", kUsual);
    key.Remove("size");
    PollTraceSettings();
    EXPECT_EQ(kUsual, Logger().settings);
    EXPECT_EQ(512U, Logger().sizeLimitMiB);
}

TEST_F(SettingsReload, SwitchesTheMemoryLogOnAndOff) {
    EXPECT_EQ(nullptr, Logger().memoryLog);
    PollWithFlag(kUsual | TRACE_MEMORY);
    const TraceMemLog* const memory = Logger().memoryLog;
    ASSERT_NE(nullptr, memory);
    EXPECT_STREQ("TraceMemLogHead", memory->label.data());
    const std::uint64_t before = memory->counter;
    for (int line = 0; line < 2000; ++line) TraceLog("tag", LOG_INFO, "line %d", line);
    EXPECT_EQ(before + 2000, memory->counter);
    const std::string newest = memory->slots[(memory->counter - 1) % 1024].data();
    EXPECT_TRUE(newest.ends_with("[Dialwright  40    info] tag: line 1999")) << newest;
    PollWithFlag(kUsual);
    EXPECT_EQ(nullptr, Logger().memoryLog);
}

TEST_F(SettingsReload, KeepsTheMemoryLogOverAnotherChange) {
    PollWithFlag(kUsual | TRACE_MEMORY);
    const TraceMemLog* const memory = Logger().memoryLog;
    PollWithFlag(kUsual | TRACE_MEMORY | TRACE_NO_TID);
    EXPECT_EQ(memory, Logger().memoryLog);
    EXPECT_EQ(2U, memory->counter);
}

TEST_F(SettingsReload, InstallsAndRemovesTheCrashFilter) {
    PollWithFlag(kUsual | TRACE_CRASH_DUMP);
    EXPECT_EQ(&TraceCrashFilter, ::SetUnhandledExceptionFilter(&TraceCrashFilter));
    PollWithFlag(kUsual);
    EXPECT_EQ(nullptr, ::SetUnhandledExceptionFilter(nullptr));
}

LONG WINAPI FilterOfTheHost(EXCEPTION_POINTERS*) { return EXCEPTION_CONTINUE_SEARCH; }

TEST_F(SettingsReload, LeavesTheHostsFilterWhenTheLibraryGoes) {
    PollWithFlag(kUsual | TRACE_CRASH_DUMP);
    ::SetUnhandledExceptionFilter(&FilterOfTheHost);
    StopAndRelease();
    EXPECT_EQ(&FilterOfTheHost, ::SetUnhandledExceptionFilter(nullptr));
}

TEST_F(SettingsReload, RemovesItsFilterWhenTheLibraryGoes) {
    PollWithFlag(kUsual | TRACE_CRASH_DUMP);
    StopAndRelease();
    EXPECT_EQ(nullptr, ::SetUnhandledExceptionFilter(nullptr));
}

TEST_F(SettingsReload, ANewSizeLimitChoosesTheNamesAnew) {
    key.Set("size", 0);
    PollTraceSettings();
    TraceLog("tag", LOG_ERROR, "without a limit");
    StopAndRelease();
    EXPECT_EQ((Lines{"tag: without a limit"}), testing::ReadMessages(File(L"x_error.log")));
    // What was buffered goes where the next write goes: header, change, line, stop.
    EXPECT_EQ(4U, testing::ReadMessages(File(L"x.log")).size());
}

TEST_F(SettingsReload, TheProcessIdCanStandInTheNames) {
    key.Set("flag", kUsual | TRACE_PID_IN_NAME);
    key.Set("size", 10);
    PollTraceSettings();
    TraceLog("tag", LOG_ERROR, "line");
    StopAndRelease();
    const std::wstring suffix = L"_pid_" + std::to_wstring(::GetCurrentProcessId()) + L".log";
    EXPECT_TRUE(FileExists(File(L"x_1" + suffix)));
    EXPECT_TRUE(FileExists(File(L"x_1_error" + suffix)));
}

TEST_F(SettingsReload, StoppingDeletesTheFilesThatAreNotWanted) {
    TraceLog("tag", LOG_INFO, "line");
    key.Set("flag", 0xF);  // not polled yet
    TraceStop();
    EXPECT_FALSE(FileExists(File(L"x_1.log")));
    EXPECT_TRUE(Logger().settingsKey.Empty());
}

TEST_F(SettingsReload, StoppingKeepsTheFilesWhenTheKeyIsGone) {
    TraceLog("tag", LOG_INFO, "line");
    SetTraceSettingsKey("Software\\DialwrightTest-nowhere");
    TraceStop();
    EXPECT_TRUE(FileExists(File(L"x_1.log")));
}

TEST_F(SettingsReload, HappensByItselfEvery11Seconds) {
    key.Set("flag", 0x10E);
    const ULONGLONG begin = ::GetTickCount64();
    EXPECT_TRUE(testing::WaitUntil([] { return Logger().settings == 0x10EU; }));
    EXPECT_GE(::GetTickCount64() - begin, 9000U);
}

}  // namespace
}  // namespace dialwright
