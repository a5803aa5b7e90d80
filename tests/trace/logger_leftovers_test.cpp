#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <vector>

#include "support/settings_key.h"
#include "trace/crash_dump.h"
#include "trace/line_writer.h"
#include "trace/logger_state.h"
#include "trace/trace.h"
#include "trace/trace_files.h"
#include "trace_fixture.h"

namespace dialwright {
namespace {

using Lines = std::vector<std::string>;

/// What a logger leaves to the next one, to a dump, or to lines that take longer than its stop.
class Leftovers : public TraceFixture {
protected:
    void StartWithMemoryLog() {
        Start();
        const std::lock_guard lock(Logger().lock);
        Logger().memoryLog = AllocateMemoryLog();
        Logger().settings = kSettingsAtStart | TRACE_MEMORY;
    }
};

class DumpedData : public TraceFixture {};

TEST_F(Leftovers, OfAStopHoldNoMemoryLog) {
    StartWithMemoryLog();
    TraceStop();
    EXPECT_EQ(nullptr, Logger().memoryLog);
}

TEST_F(Leftovers, OfAStopForADumpHoldTheMemoryLogUntilTheLibraryGoes) {
    StartWithMemoryLog();
    TraceStopForDump();
    ASSERT_NE(nullptr, Logger().memoryLog);
    EXPECT_TRUE(std::string(Logger().memoryLog->slots[0].data()).ends_with("trace stopped"));
    ReleaseTrace();
    EXPECT_EQ(nullptr, Logger().memoryLog);
}

TEST_F(Leftovers, IncludeTheLockForALineThatTakesLonger) {
    Start();
    ++Logger().linesUnderWay;
    TraceStop();
    EXPECT_TRUE(Logger().lockIsThere);
    --Logger().linesUnderWay;
    // The next stop takes the lock away.
    Start();
    TraceLog("tag", LOG_INFO, "line");
    TraceStop();
    EXPECT_FALSE(Logger().lockIsThere);
    EXPECT_EQ((Lines{"tag: line"}), MessagesOfMainFile());
}

TEST_F(Leftovers, AreNoFilesForALoggerWithoutAFileName) {
    Start();
    TraceLog("tag", LOG_ERROR, "first");
    StopAndRelease();
    const auto size = testing::FileSizeOf(File(L"x_1.log"));
    ASSERT_EQ(1, TraceStart(folder.NarrowPath().c_str(), nullptr, "Dialwright"));
    TraceLog("tag", LOG_ERROR, "second");
    StopAndRelease();
    EXPECT_EQ((Lines{"tag: first"}), testing::ReadMessages(File(L"x_1_error.log")));
    EXPECT_EQ(size, testing::FileSizeOf(File(L"x_1.log")));
}

TEST_F(Leftovers, AreNoSizeLimit) {
    Start();
    Logger().sizeLimitMiB = 1;
    StopAndRelease();
    Start();
    EXPECT_EQ(512U, Logger().sizeLimitMiB);
}

TEST_F(Leftovers, OfAStopThatDeletesIncludeTheErrorFileThatIsOpen) {
    // Kept on purpose: only the main file is closed for it.
    Start();
    const testing::SettingsKey key;
    SetTraceSettingsKey(key.Path().c_str());
    TraceLog("tag", LOG_ERROR, "line");
    key.Set("flag", 0xF);
    TraceStop();
    EXPECT_FALSE(testing::FileExists(File(L"x_1.log")));
    EXPECT_TRUE(testing::FileExists(File(L"x_1_error.log")));
}

LONG WINAPI FilterOfTheHost(EXCEPTION_POINTERS*) { return EXCEPTION_CONTINUE_SEARCH; }

TEST_F(Leftovers, OfAChangeHoldNoFilterNotEvenTheHostsOwn) {
    // Kept on purpose: whoever has set it.
    Start();
    const testing::SettingsKey key;
    SetTraceSettingsKey(key.Path().c_str());
    key.Set("flag", static_cast<DWORD>(kSettingsAtStart | TRACE_CRASH_DUMP));
    PollTraceSettings();
    ::SetUnhandledExceptionFilter(&FilterOfTheHost);
    key.Set("flag", static_cast<DWORD>(kSettingsAtStart));
    PollTraceSettings();
    EXPECT_EQ(nullptr, ::SetUnhandledExceptionFilter(nullptr));
}

TEST_F(DumpedData, TellsALengthOfZeroAndNoLengthWithoutData) {
    Start();
    TraceLine("", 0, 40, "   info", "empty");
    TraceLine(nullptr, 5, 40, "   info", "missing");
    StopAndRelease();
    EXPECT_EQ((Lines{"empty length=0", "missing"}), MessagesOfMainFile());
}

TEST_F(DumpedData, IsNotInTheErrorFile) {
    Start();
    TraceLine("data", 4, 43, "  error", "block");
    StopAndRelease();
    EXPECT_EQ((Lines{"block"}), testing::ReadMessages(File(L"x_1_error.log")));
}

TEST_F(DumpedData, MayBeLongerThanTheBuffer) {
    Start();
    Logger().settings = kSettingsAtStart | kNoTagField;
    const std::vector<unsigned char> data(std::size_t{4000} * 16, 0x41);
    TraceLine(data.data(), data.size(), 40, "   info", "block");
    StopAndRelease();
    Lines rows = testing::ReadTrace(File(L"x_1.log"));
    std::erase_if(rows, [](const std::string& row) { return !row.ends_with("AAAAAAAAAAAAAAAA"); });
    ASSERT_EQ(4000U, rows.size());
    EXPECT_TRUE(rows[0].starts_with("00000000  41 "));
    for (std::size_t row = 1; row < rows.size(); ++row) ASSERT_LT(rows[row - 1], rows[row]);
    EXPECT_TRUE(rows[3999].starts_with("0000F9F0  41 "));
}

}  // namespace
}  // namespace dialwright
