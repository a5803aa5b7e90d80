#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host_folder.h"
#include "support/diverted_output.h"
#include "support/wait.h"
#include "trace/logger_state.h"
#include "trace/trace.h"
#include "trace_fixture.h"

namespace dialwright {
namespace {

using testing::ChildProcess;
using testing::FileExists;
using testing::kPatienceMs;
using testing::WaitUntil;

/// A host that logs an error line each time it is told to.
class LoggingHost {
public:
    explicit LoggingHost(const HostFolder& folder) : process(folder.LoadHost(), {L"calls"}) {
        EXPECT_EQ("ready", process.ReadLine(kPatienceMs));
    }
    void Log() {
        process.WriteLine("");
        EXPECT_EQ("logged", process.ReadLine(kPatienceMs));
    }
    void ExpectToLiveOn() { Log(); }

private:
    ChildProcess process;
};

class Trouble : public TraceFixture {};

TEST_F(Trouble, AFolderThatCannotBeMadeCostsTheLinesAndNothingElse) {
    testing::WriteFile(File(L"logs"), "a file where a folder should be");
    ASSERT_EQ(1, TraceStart((folder.NarrowPath() + "logs\\trace\\").c_str(), "x.log", "Dialwright"));
    TraceLog("tag", LOG_ERROR, "lost");
    EXPECT_TRUE(WaitUntil([] { return Logger().used == 0; }));
    EXPECT_EQ("tag: lost\n", log.Text());
    // The next line tries anew.
    ::DeleteFileW(File(L"logs").c_str());
    TraceLog("tag", LOG_ERROR, "kept");
    StopAndRelease();
    EXPECT_EQ(1U, testing::ReadTrace(File(L"logs\\trace\\x_1_error.log")).size());
    const auto lines = testing::ReadMessages(File(L"logs\\trace\\x_1.log"));
    EXPECT_EQ((std::vector<std::string>{"tag: kept", "trace stopped"}), lines);
}

TEST_F(Trouble, AFileThatAnotherHoldsIsWrittenWhenItIsFree) {
    const HANDLE held = ::CreateFileW(File(L"x_1.log").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    Start();
    TraceLog("tag", LOG_INFO, "lost");
    EXPECT_TRUE(WaitUntil([] { return Logger().used == 0; }));
    ::CloseHandle(held);
    TraceLog("tag", LOG_INFO, "kept");
    StopAndRelease();
    EXPECT_EQ((std::vector<std::string>{"tag: kept"}), MessagesOfMainFile());
}

TEST_F(Trouble, AHostThatClosedItsStandardOutputGetsNoCopyOfTheLogInItsTrace) {
    testing::DivertedOutput closed(-1);
    Start();
    TraceLog("tag", LOG_ERROR, "first");
    TraceLog("tag", LOG_ERROR, "second");
    StopAndRelease();
    closed.GiveBack();
    EXPECT_EQ((std::vector<std::string>{"tag: first", "tag: second"}), MessagesOfMainFile());
    EXPECT_EQ((std::vector<std::string>{"tag: first", "tag: second"}), testing::ReadMessages(File(L"x_1_error.log")));
}

TEST_F(Trouble, AProgramThatTheHostStartsKeepsNoTraceFileOpen) {
    Start();
    TraceLog("tag", LOG_ERROR, "line");
    ASSERT_TRUE(WaitUntil([&] { return FileExists(File(L"x_1.log")) && FileExists(File(L"x_1_error.log")); }));
    const HostFolder elsewhere;
    const LoggingHost child(elsewhere);
    StopAndRelease();
    EXPECT_TRUE(::DeleteFileW(File(L"x_1.log").c_str()));
    EXPECT_TRUE(::DeleteFileW(File(L"x_1_error.log").c_str()));
}

TEST_F(Trouble, TheLimitOfPathsIsSurvivedOneByOne) {
    // The folder's name grows until the paths of the files are cut, and the folder cannot even be composed.
    for (std::size_t length = 225; length <= 262; ++length) {
        const std::string start = folder.NarrowPath();
        const std::string directory = start + std::string(length - start.size() - 1, 'd') + "\\";
        if (TraceStart(directory.c_str(), "host.exe_1_Dialwright.log", "Dialwright") == 0) {
            EXPECT_EQ(21U, ::GetLastError());
            EXPECT_GT(length, 259U);
            continue;
        }
        EXPECT_LE(length, 259U);
        TraceLog("tag", LOG_ERROR, "line");
        StopAndRelease();
    }
}

TEST(TwoHostsOfOneName, ShareNoFileAndTheSecondWritesWhenTheFirstIsGone) {
    const HostFolder folder;
    LoggingHost second(folder);  // which opens its files only when it first writes
    {
        LoggingHost first(folder);
        ASSERT_TRUE(WaitUntil([&] { return FileExists(folder.TraceFile()); }));
        first.Log();
        second.Log();
        second.ExpectToLiveOn();
    }
    const std::size_t before = testing::ReadTrace(folder.TraceFile(L"_error")).size();
    second.Log();
    EXPECT_TRUE(WaitUntil([&] { return testing::ReadTrace(folder.TraceFile(L"_error")).size() == before + 1; }));
}

TEST(HostFolderNames, MayHoldLettersThatAreNoUtf8) {
    // U+00E9, one byte in the ANSI code page and no valid UTF-8 by itself.
    const HostFolder folder(L"-caf\x00E9");
    LoggingHost host(folder);
    host.Log();
    EXPECT_EQ(1U, testing::ReadTrace(folder.TraceFile(L"_error")).size());
    EXPECT_TRUE(WaitUntil([&] { return FileExists(folder.TraceFile()); }));
}

TEST(HostFolderNames, ThatTheCodePageCannotSpellCostTheTraceAndNothingElse) {
    const HostFolder folder(L"-\x65E5\x672C");
    LoggingHost host(folder);
    host.Log();
    host.ExpectToLiveOn();
}

TEST(HostFolderNames, GivenInUtf8AreOpenedInUtf8) {
    const testing::TemporaryFolder folder(L"-caf\x00E9");
    const std::wstring& wide = folder.Path();
    std::string utf8(3 * wide.size(), '\0');
    utf8.resize(
        static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, wide.c_str(), static_cast<int>(wide.size()),
                                                       utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr)));
    ASSERT_EQ(1, TraceStart((utf8 + "deep\\er\\").c_str(), "x.log", "Dialwright"));
    TraceStop();
    ReleaseTrace();
    EXPECT_TRUE(FileExists(folder.File(L"deep\\er\\x_1.log")));
}

}  // namespace
}  // namespace dialwright
