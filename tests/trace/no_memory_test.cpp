#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "refused_malloc.h"
#include "support/settings_key.h"
#include "trace/line_writer.h"
#include "trace/logger_state.h"
#include "trace/settings_key.h"
#include "trace/trace.h"
#include "trace_fixture.h"

// Blocks that the trace takes from the C runtime; what it takes by operator new fails in tests of commands.
namespace dialwright {
namespace {

using testing::ReadMessages;
using testing::RefusedMalloc;
using Lines = std::vector<std::string>;

class NoMemory : public TraceFixture {};

TEST_F(NoMemory, CostsTheErrorFileALineAndTheTraceNone) {
    Start();
    TraceLine(nullptr, 0, 43, "  error", "first");
    {
        const RefusedMalloc refused;
        TraceLine(nullptr, 0, 43, "  error", "second");
        EXPECT_EQ(1, RefusedMalloc::Refusals());
    }
    TraceLine(nullptr, 0, 43, "  error", "third");
    StopAndRelease();
    EXPECT_EQ((Lines{"first", "second", "third"}), MessagesOfMainFile());
    EXPECT_EQ((Lines{"first", "third"}), ReadMessages(File(L"x_1_error.log")));
}

TEST_F(NoMemory, LeavesTheTraceWithoutItsMemoryLogUntilTheNextChange) {
    constexpr DWORD kUsual = 0x10F;
    Start();
    const testing::SettingsKey key;
    key.Set("size", 512);
    SetTraceSettingsKey(key.Path().c_str());
    key.Set("flag", kUsual | TRACE_MEMORY);
    {
        const RefusedMalloc refused;
        PollTraceSettings();
        EXPECT_EQ(1, RefusedMalloc::Refusals());
    }
    EXPECT_EQ(nullptr, Logger().memoryLog);
    TraceLine(nullptr, 0, 40, "   info", "goes on");
    key.Set("flag", kUsual | TRACE_MEMORY | TRACE_NO_TID);
    PollTraceSettings();
    EXPECT_NE(nullptr, Logger().memoryLog);
    StopAndRelease();
    const Lines messages = MessagesOfMainFile();
    EXPECT_EQ(1, std::ranges::count(messages, "goes on"));
}

}  // namespace
}  // namespace dialwright
