#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <thread>
#include <vector>

#include "support/log_capture.h"
#include "trace/trace.h"

namespace dialwright {
namespace {

using testing::LogCapture;

TEST(TraceLog, CopiesTagAndMessageToStandardOutput) {
    const LogCapture log;
    TraceLog("Window::Window", LOG_INFO, "Found %ls after %dms", L"it", 5);
    EXPECT_EQ("Window::Window: Found it after 5ms\n", log.Text());
}

TEST(TraceLog, CopiesWhateverTheLevelsAre) {
    const LogCapture log;
    TraceLog("tag", 0, "none");
    TraceLog("tag", LOG_INFO | LOG_ERROR, "two levels, one copy");
    EXPECT_EQ("tag: none\ntag: two levels, one copy\n", log.Text());
}

TEST(TraceLog, IndentsContinuationLinesBy80Blanks) {
    const std::string indent(80, ' ');
    const LogCapture log;
    TraceLog("tag", LOG_INFO, "one\ntwo\n");
    TraceLog("tag", LOG_INFO, "one\ntwo");
    EXPECT_EQ("tag: one\n" + indent + "two\n\ntag: one\n" + indent + "two\n", log.Text());
}

TEST(TraceLog, ShowsPercentSignsUnharmed) {
    const LogCapture log;
    TraceLog("tag", LOG_INFO, "%ls", L"100% %s%n%% done");
    EXPECT_EQ("tag: 100% %s%n%% done\n", log.Text());
}

TEST(TraceLog, LeavesTheHostsErrnoAlone) {
    const LogCapture log;
    errno = 42;
    TraceLog("tag", LOG_INFO, "%ls", std::wstring(5000, L'x').c_str());
    EXPECT_EQ(42, errno);
}

TEST(TraceLog, MayBeCalledFromManyThreads) {
    const LogCapture log;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([i] {
            for (int line = 0; line < 200; ++line) TraceLog("tag", LOG_INFO, "thread %d line %d", i, line);
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(8U * 200U, log.MessagesFrom("tag: thread ").size());
}

}  // namespace
}  // namespace dialwright
