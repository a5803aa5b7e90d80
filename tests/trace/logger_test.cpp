#include "trace/logger.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <mutex>
#include <regex>
#include <string>

#include "support/child_process.h"
#include "support/wait.h"
#include "trace/logger_state.h"
#include "trace/trace.h"
#include "trace_fixture.h"

namespace dialwright {
namespace {

using testing::FileExists;
using testing::ReadMessages;
using testing::ReadTrace;
using Lines = std::vector<std::string>;

class LoggerStart : public TraceFixture {};
class LoggerStop : public TraceFixture {};
class WriteBuffer : public TraceFixture {};
class ErrorFile : public TraceFixture {};

TEST_F(LoggerStart, SucceedsOnceAndThenSaysThatItRan) {
    ::SetLastError(0);
    EXPECT_EQ(1, TraceStart(folder.NarrowPath().c_str(), "x.log", "Dialwright"));
    EXPECT_EQ(1, TraceStart(folder.NarrowPath().c_str(), "y.log", "Another"));
    EXPECT_EQ(DWORD{ERROR_ALREADY_EXISTS}, ::GetLastError());
    StopAndRelease();
    EXPECT_FALSE(FileExists(File(L"y_1.log")));
}

TEST_F(LoggerStart, RefusesADirectoryWithoutAFinalBackslash) {
    EXPECT_EQ(0, TraceStart("C:\\here", "x.log", "Dialwright"));
    EXPECT_EQ(21U, ::GetLastError());
    // Looked at before whether a logger runs and what it is called.
    EXPECT_EQ(0, TraceStart("C:\\here", "x.log", nullptr));
    EXPECT_EQ(21U, ::GetLastError());
    Start();
    EXPECT_EQ(0, TraceStart("C:\\here", "x.log", "Dialwright"));
    EXPECT_EQ(21U, ::GetLastError());
}

TEST_F(LoggerStart, RefusesALoggerWithoutAName) {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        ::SetLastError(0);
        EXPECT_EQ(0, TraceStart(folder.NarrowPath().c_str(), "x.log", name));
        EXPECT_EQ(87U, ::GetLastError());
    }
    TraceLog("tag", LOG_ERROR, "lost");
    EXPECT_FALSE(FileExists(File(L"x_1_error.log")));
    EXPECT_EQ("tag: lost\n", log.Text());
}

TEST_F(LoggerStart, WritesAHeaderThatTellsTheSettings) {
    Start();
    StopAndRelease();
    const Lines lines = ReadTrace(File(L"x_1.log"));
    ASSERT_EQ(2U, lines.size());
    const std::regex header(
        R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{7} UTC[+-]\d\d:\d\d\] \[\d+:\d+\] \[Dialwright  1359    info\] )"
        R"(\(Time Zone: [^)]+\) \([A-Z][a-z]{2} [A-Z][a-z]{2} [ 1-3]\d \d\d:\d\d:\d\d \d{4}, \d+s\) )"
        R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} type: 0x10f size: 512 memory: 0x0{16})");
    EXPECT_TRUE(std::regex_match(lines[0], header)) << lines[0];
    const std::regex stopped(R"(\[[^\]]+\] \[\d+:\d+\] \[Dialwright  1418    info\] trace stopped)");
    EXPECT_TRUE(std::regex_match(lines[1], stopped)) << lines[1];
    EXPECT_EQ("", log.Text());
}

TEST_F(LoggerStart, WritesNoFileWithoutAPlainFileName) {
    for (const char* name : {static_cast<const char*>(nullptr), "", "sub\\x.log"}) {
        EXPECT_EQ(1, TraceStart(folder.NarrowPath().c_str(), name, "Dialwright"));
        TraceLog("tag", LOG_INFO | LOG_ERROR, "nowhere");
        StopAndRelease();
    }
    EXPECT_FALSE(FileExists(File(L"_1.log")));
    EXPECT_FALSE(FileExists(File(L"sub")));
    EXPECT_FALSE(FileExists(File(L"x_1.log")));
}

TEST_F(LoggerStart, WithoutADirectoryWritesBesideTheHostProgram) {
    const std::wstring beside = testing::ProgramFolder() + L"logs\\trace\\logger_test_1.log";
    for (const char* directory : {static_cast<const char*>(nullptr), ""}) {
        ::DeleteFileW(beside.c_str());
        EXPECT_EQ(1, TraceStart(directory, "logger_test.log", "Dialwright"));
        StopAndRelease();
        EXPECT_TRUE(FileExists(beside));
    }
    ::DeleteFileW(beside.c_str());
}

TEST_F(LoggerStart, FindsTheUsersLocalApplicationData) {
    const std::wstring local = ::_wgetenv(L"LOCALAPPDATA");
    const std::wstring file = local + L"\\Harbelle\\logs\\trace\\logger_test_1.log";
    for (const char* directory : {"%localappdata%", "%LocalAppData%"}) {
        ::DeleteFileW(file.c_str());
        EXPECT_EQ(1, TraceStart(directory, "logger_test.log", "Dialwright"));
        StopAndRelease();
        EXPECT_TRUE(FileExists(file));
    }
    ::DeleteFileW(file.c_str());
}

TEST_F(LoggerStart, CreatesMissingFoldersWhenItFirstWrites) {
    const std::string below = folder.NarrowPath() + "one\\two\\";
    ASSERT_EQ(1, TraceStart(below.c_str(), "x.log", "Dialwright"));
    {
        const std::lock_guard watcherWaits(Logger().lock);
        // Unless the watcher was quicker than this test, the header still waits.
        if (Logger().used != 0) EXPECT_FALSE(FileExists(File(L"one")));
    }
    StopAndRelease();
    EXPECT_TRUE(FileExists(File(L"one\\two\\x_1.log")));
}

TEST_F(LoggerStart, BeginsAnewAfterAStop) {
    Start();
    TraceLog("tag", LOG_ERROR, "first");
    TraceStop();
    // The files of the first are still open; the lines of the second must not end there.
    ASSERT_EQ(1, TraceStart(folder.NarrowPath().c_str(), "y.log", "Second"));
    TraceLog("tag", LOG_ERROR, "second");
    StopAndRelease();
    EXPECT_EQ((Lines{"tag: first"}), ReadMessages(File(L"x_1_error.log")));
    EXPECT_EQ((Lines{"tag: second"}), ReadMessages(File(L"y_1_error.log")));
    const Lines lines = ReadTrace(File(L"y_1.log"));
    ASSERT_EQ(3U, lines.size());
    EXPECT_NE(std::string::npos, lines[1].find("[Second  43   error] tag: second"));
}

TEST_F(LoggerStart, CutsALongNameTo31Characters) {
    ASSERT_EQ(1, TraceStart(folder.NarrowPath().c_str(), "x.log", "0123456789012345678901234567890123456789"));
    StopAndRelease();
    const Lines lines = ReadTrace(File(L"x_1.log"));
    ASSERT_EQ(2U, lines.size());
    EXPECT_NE(std::string::npos, lines[1].find("[0123456789012345678901234567890  1418    info]"));
}

TEST_F(LoggerStop, LeavesTheFilesOpenUntilTheLibraryGoes) {
    Start();
    TraceLog("tag", LOG_ERROR, "line");
    TraceStop();
    EXPECT_FALSE(testing::CanBeWritten(File(L"x_1.log")));
    EXPECT_FALSE(testing::CanBeWritten(File(L"x_1_error.log")));
    const Lines messages = ReadMessages(File(L"x_1.log"));
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ("trace stopped", messages.back());
    ReleaseTrace();
    EXPECT_TRUE(testing::CanBeWritten(File(L"x_1.log")));
    EXPECT_TRUE(testing::CanBeWritten(File(L"x_1_error.log")));
}

TEST_F(LoggerStop, DropsWhatIsLoggedAfterIt) {
    Start();
    TraceStop();
    TraceLog("tag", LOG_INFO | LOG_ERROR, "late");
    EXPECT_EQ("tag: late\n", log.Text());
    ReleaseTrace();
    EXPECT_EQ((Lines{}), MessagesOfMainFile());
    EXPECT_FALSE(FileExists(File(L"x_1_error.log")));
    EXPECT_EQ(0U, Logger().settings);
}

TEST_F(LoggerStop, DoesNothingToALoggerThatNeverStarted) {
    TraceStop();
    TraceStopAtExit();
    EXPECT_FALSE(FileExists(File(L"x_1.log")));
}

TEST_F(LoggerStop, GivesLinesUnderWayATenthOfASecond) {
    Start();
    // Not the tick count, which moves in steps of up to 16 ms.
    const auto before = std::chrono::steady_clock::now();
    TraceStop();
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(95));
}

TEST_F(WriteBuffer, KeepsLinesUntilMoreThan96KibWait) {
    Start();
    const std::string message(1000, 'x');
    const std::lock_guard watcherWaits(Logger().lock);
    // The watcher may have written the header out before.
    const auto before = testing::FileSizeOf(File(L"x_1.log"));
    while (Logger().used + message.size() + 200 <= kWriteOutAbove) TraceLog("tag", LOG_INFO, "%s", message.c_str());
    EXPECT_EQ(before, testing::FileSizeOf(File(L"x_1.log")));
    TraceLog("tag", LOG_INFO, "%s", message.c_str());
    TraceLog("tag", LOG_INFO, "%s", message.c_str());
    EXPECT_GT(testing::FileSizeOf(File(L"x_1.log")), kWriteOutAbove);
}

TEST_F(WriteBuffer, IsWrittenOutOnlyAboveTheMark) {
    Start();
    LoggerState& logger = Logger();
    const std::lock_guard watcherWaits(logger.lock);
    logger.settings = kSettingsAtStart | TRACE_NO_TIME | TRACE_NO_PID | TRACE_NO_TID;
    const auto size = testing::FileSizeOf(File(L"x_1.log"));
    const std::size_t before = logger.used;
    TraceLog("tag", LOG_INFO, "line");
    const std::size_t length = logger.used - before;
    logger.used = kWriteOutAbove - length;
    TraceLog("tag", LOG_INFO, "line");
    EXPECT_EQ(98304U, logger.used.load());
    EXPECT_EQ(size, testing::FileSizeOf(File(L"x_1.log")));
    logger.used = kWriteOutAbove - length + 1;
    TraceLog("tag", LOG_INFO, "line");
    EXPECT_EQ(0U, logger.used.load());
    EXPECT_EQ(size + kWriteOutAbove + 1, testing::FileSizeOf(File(L"x_1.log")));
}

TEST_F(WriteBuffer, IsWrittenOutSoonAfterTheLastLine) {
    Start();
    TraceLog("tag", LOG_INFO, "burst");
    EXPECT_TRUE(testing::WaitUntil([&] { return MessagesOfMainFile() == Lines{"tag: burst"}; }));
}

TEST_F(WriteBuffer, StaysWhileLinesKeepComing) {
    Start();
    LoggerState& logger = Logger();
    // Longer than the watcher sleeps: it sees a line each time that is younger than its pause.
    const ULONGLONG end = ::GetTickCount64() + 700;
    ULONGLONG longestGap = 0;
    for (ULONGLONG last = ::GetTickCount64(); last < end;) {
        TraceLog("tag", LOG_INFO, "steady");
        ::Sleep(1);  // the pace that this test is about
        const ULONGLONG now = ::GetTickCount64();
        longestGap = (std::max)(longestGap, now - last);
        last = now;
    }
    if (longestGap < 80) EXPECT_FALSE(FileExists(File(L"x_1.log")));
    EXPECT_TRUE(testing::WaitUntil([&] { return logger.used == 0; }));
}

TEST_F(ErrorFile, HasEachErrorLineAtOnceAndNoOther) {
    Start();
    TraceLog("tag", LOG_INFO, "info");
    TraceLog("tag", LOG_DEBUG, "debug");
    TraceLog("tag", LOG_WARNING, "warning");
    EXPECT_FALSE(FileExists(File(L"x_1_error.log")));
    TraceLog("tag", LOG_ERROR, "error");
    EXPECT_EQ((Lines{"tag: error"}), ReadMessages(File(L"x_1_error.log")));
    StopAndRelease();
    EXPECT_EQ((Lines{"tag: info", "tag: debug", "tag: warning", "tag: error"}), MessagesOfMainFile());
    const Lines lines = ReadTrace(File(L"x_1.log"));
    ASSERT_EQ(6U, lines.size());
    EXPECT_EQ((Lines{lines[4]}), ReadTrace(File(L"x_1_error.log")));
}

TEST_F(ErrorFile, NeverDamagesTheMainFileByTheSharedBuffer) {
    Start();
    for (int line = 0; line < 1300; ++line) {
        TraceLog("tag", line % 100 == 99 ? LOG_ERROR : LOG_INFO, "line %d %s", line, std::string(90, 'x').c_str());
    }
    StopAndRelease();
    const Lines messages = MessagesOfMainFile();
    ASSERT_EQ(1300U, messages.size());
    for (int line = 0; line < 1300; ++line) {
        EXPECT_EQ("tag: line " + std::to_string(line) + " " + std::string(90, 'x'),
                  messages[static_cast<std::size_t>(line)]);
    }
    EXPECT_EQ(13U, ReadMessages(File(L"x_1_error.log")).size());
}

}  // namespace
}  // namespace dialwright
