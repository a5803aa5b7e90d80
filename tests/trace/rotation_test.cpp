#include <gtest/gtest.h>

#include <mutex>
#include <regex>
#include <string>

#include "trace/logger_state.h"
#include "trace/trace.h"
#include "trace/trace_files.h"
#include "trace_fixture.h"

namespace dialwright {
namespace {

using testing::FileExists;
using testing::FileSizeOf;

constexpr unsigned long long kMib = 1024ULL * 1024;

/// A file of this size without content, last changed so many minutes ago.
void MakeFile(const std::wstring& path, unsigned long long size, unsigned minutesAgo) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    ::SetFilePointerEx(file, end, nullptr, FILE_BEGIN);
    ::SetEndOfFile(file);
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    ULARGE_INTEGER time{.u = {.LowPart = now.dwLowDateTime, .HighPart = now.dwHighDateTime}};
    time.QuadPart -= minutesAgo * 60ULL * 10'000'000;
    const FILETIME modified{.dwLowDateTime = time.u.LowPart, .dwHighDateTime = time.u.HighPart};
    ::SetFileTime(file, nullptr, nullptr, &modified);
    ::CloseHandle(file);
}

class Rotation : public TraceFixture {
protected:
    void StartWithLimit(std::uint64_t sizeLimitMiB) {
        Start();
        const std::lock_guard lock(Logger().lock);
        Logger().sizeLimitMiB = sizeLimitMiB;
    }

    /// More than a megabyte of lines of this level, each with its number.
    static void LogAMegabyte(std::uint32_t level, char letter) {
        const std::string filler(1000, letter);
        for (int line = 0; line < 1100; ++line) TraceLog("tag", level, "%d %s", line, filler.c_str());
    }
};

class FileChoice : public TraceFixture {
protected:
    /// Nothing of what was there before, only the header and the end of this run.
    void ExpectToBeAnew(const std::wstring& name) const {
        EXPECT_TRUE(testing::ReadFile(File(name)).starts_with("[20"));
        EXPECT_EQ(2U, testing::ReadTrace(File(name)).size());
    }
};

TEST_F(Rotation, BeginsTheOtherFileWithALineThatSaysSo) {
    StartWithLimit(1);
    LogAMegabyte(LOG_INFO, 'a');
    StopAndRelease();
    EXPECT_GE(FileSizeOf(File(L"x_1.log")), kMib);
    const auto lines = testing::ReadTrace(File(L"x_2.log"));
    ASSERT_FALSE(lines.empty());
    const std::regex rotated(
        R"(\(Time Zone: [^)]+\) \([A-Z][a-z]{2} [A-Z][a-z]{2} [ 1-3]\d \d\d:\d\d:\d\d \d{4}, \d+s\) log rotated at )"
        R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} type: 0x10f size: 1 memory: 0x[0-9A-F]{16})");
    EXPECT_TRUE(std::regex_match(lines[0], rotated)) << lines[0];
    // Kept on purpose: the place of the pointer, which is never null.
    EXPECT_FALSE(lines[0].ends_with("0x0000000000000000"));
}

TEST_F(Rotation, GoesToAndFroAndDeletesTheOlderFile) {
    StartWithLimit(1);
    LogAMegabyte(LOG_INFO, 'a');
    LogAMegabyte(LOG_INFO, 'b');
    LogAMegabyte(LOG_INFO, 'c');
    StopAndRelease();
    const std::string first = testing::ReadFile(File(L"x_1.log"));
    EXPECT_EQ(std::string::npos, first.find("aaaa"));
    EXPECT_NE(std::string::npos, first.find("log rotated at"));
    EXPECT_NE(std::string::npos, (first + testing::ReadFile(File(L"x_2.log"))).find("cccc"));
}

TEST_F(Rotation, TurnsTheErrorFileByItself) {
    StartWithLimit(1);
    LogAMegabyte(LOG_ERROR, 'e');
    EXPECT_TRUE(FileExists(File(L"x_2_error.log")));
    StopAndRelease();
    const auto lines = testing::ReadTrace(File(L"x_2_error.log"));
    ASSERT_GE(lines.size(), 2U);
    EXPECT_NE(std::string::npos, lines[0].find("log rotated at"));
}

TEST_F(Rotation, NeverHappensWithoutALimit) {
    StartWithLimit(0);
    LogAMegabyte(LOG_INFO, 'a');
    LogAMegabyte(LOG_INFO, 'b');
    StopAndRelease();
    EXPECT_GT(FileSizeOf(File(L"x_1.log")), 2 * kMib);
    EXPECT_FALSE(FileExists(File(L"x_2.log")));
}

TEST_F(Rotation, WithoutTheFileSinkWaitsForTheNextLineToOpenTheFile) {
    StartWithLimit(1);
    Logger().settings = 0xF | TRACE_MEMORY;
    {
        const std::lock_guard lock(Logger().lock);
        LogAMegabyte(LOG_INFO, 'a');
        TraceFlush(Logger());
        if (Logger().main.file != nullptr) LogAMegabyte(LOG_INFO, 'b');
    }
    StopAndRelease();
    EXPECT_EQ(std::string::npos, testing::ReadFile(File(L"x_2.log")).find("log rotated at"));
}

TEST_F(FileChoice, GoesOnInTheNewerFileBelowTheLimit) {
    MakeFile(File(L"x_1.log"), 100, 1);
    MakeFile(File(L"x_2.log"), 100, 9);
    Start();
    StopAndRelease();
    EXPECT_GT(FileSizeOf(File(L"x_1.log")), 100U);
    EXPECT_EQ(100U, FileSizeOf(File(L"x_2.log")));
}

TEST_F(FileChoice, GoesOnInTheSecondFileWhenThatIsNewer) {
    MakeFile(File(L"x_1.log"), 100, 9);
    MakeFile(File(L"x_2.log"), 100, 1);
    Start();
    StopAndRelease();
    EXPECT_EQ(100U, FileSizeOf(File(L"x_1.log")));
    EXPECT_GT(FileSizeOf(File(L"x_2.log")), 100U);
}

TEST_F(FileChoice, BeginsTheOlderFileAnewWhenTheNewerIsFull) {
    MakeFile(File(L"x_1.log"), 512 * kMib, 1);
    MakeFile(File(L"x_2.log"), 100, 9);
    Start();
    StopAndRelease();
    EXPECT_EQ(512 * kMib, FileSizeOf(File(L"x_1.log")));
    ExpectToBeAnew(L"x_2.log");
}

TEST_F(FileChoice, BeginsTheFirstFileAnewWhenTheSecondIsFull) {
    MakeFile(File(L"x_1.log"), 100, 9);
    MakeFile(File(L"x_2.log"), 512 * kMib, 1);
    Start();
    StopAndRelease();
    ExpectToBeAnew(L"x_1.log");
    EXPECT_EQ(512 * kMib, FileSizeOf(File(L"x_2.log")));
}

TEST_F(FileChoice, IsMadeForTheErrorFileToo) {
    MakeFile(File(L"x_1_error.log"), 512 * kMib, 1);
    Start();
    TraceLog("tag", LOG_ERROR, "line");
    StopAndRelease();
    EXPECT_EQ(1U, testing::ReadTrace(File(L"x_2_error.log")).size());
}

TEST_F(FileChoice, AFullFileThatGrowsOverTheLimitIsRotatedAtOnce) {
    MakeFile(File(L"x_1.log"), 512 * kMib - 10, 1);
    Start();
    StopAndRelease();
    EXPECT_GE(FileSizeOf(File(L"x_1.log")), 512 * kMib);
    EXPECT_NE(std::string::npos, testing::ReadFile(File(L"x_2.log")).find("size: 512"));
}

}  // namespace
}  // namespace dialwright
