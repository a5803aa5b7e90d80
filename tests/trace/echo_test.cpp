#include <gtest/gtest.h>

#include <array>
#include <mutex>
#include <string>

#include "support/child_process.h"
#include "support/wait.h"
#include "trace/line_writer.h"
#include "trace/logger_state.h"
#include "trace/trace_files.h"
#include "trace_fixture.h"

namespace dialwright {
namespace {

std::string debuggerText;

/// What a program passes to a debugger is raised as an exception where there is none.
LONG CALLBACK CatchDebuggerText(EXCEPTION_POINTERS* info) {
    constexpr DWORD kDebugPrint = 0x40010006;
    const EXCEPTION_RECORD& record = *info->ExceptionRecord;
    if (record.ExceptionCode != kDebugPrint || record.NumberParameters < 2) return EXCEPTION_CONTINUE_SEARCH;
    debuggerText += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    return EXCEPTION_CONTINUE_EXECUTION;
}

class Echo : public TraceFixture {
protected:
    void SetUp() override {
        debuggerText.clear();
        Start();
        // A buffer as it is in a new process.
        const std::lock_guard lock(Logger().lock);
        TraceFlush(Logger());
        Logger().writeBuffer.fill('\0');
    }

    static void Set(std::uint64_t settings) { Logger().settings = settings; }

    /// The text without its time stamp and its IDs.
    static std::string WithoutIds(const std::string& text) {
        const std::size_t tag = text.find("[Dialwright");
        return tag == std::string::npos ? text : text.substr(tag);
    }
};

TEST_F(Echo, PrintsEachLineToStandardOutput) {
    Set(kSettingsAtStart | TRACE_CONSOLE);
    TraceLine(nullptr, 0, 40, "   info", "one");
    TraceLine(nullptr, 0, 42, "warning", "two");
    EXPECT_EQ("[Dialwright  40    info] one\r\n", WithoutIds(log.Text()).substr(0, 30));
    EXPECT_NE(std::string::npos, log.Text().find("[Dialwright  42 warning] two\r\n"));
    EXPECT_EQ("", debuggerText);
}

TEST_F(Echo, PassesEachLineToTheDebugger) {
    void* const handler = ::AddVectoredExceptionHandler(1, &CatchDebuggerText);
    Set(kSettingsAtStart | TRACE_DEBUGGER);
    TraceLine(nullptr, 0, 40, "   info", "one");
    TraceLine(nullptr, 0, 42, "warning", "two");
    ::RemoveVectoredExceptionHandler(handler);
    EXPECT_EQ("[Dialwright  40    info] one\r\n", WithoutIds(debuggerText).substr(0, 30));
    EXPECT_TRUE(debuggerText.ends_with("[Dialwright  42 warning] two\r\n")) << debuggerText;
    EXPECT_EQ("", log.Text());
}

TEST_F(Echo, ShowsOlderTextThatStillFollowsInTheBuffer) {
    // Kept on purpose: the echo reads up to a zero byte, and a refilled buffer has none behind the line.
    Set(kSettingsAtStart | TRACE_NO_TIME | TRACE_NO_PID | TRACE_NO_TID);
    const std::lock_guard lock(Logger().lock);
    TraceLine(nullptr, 0, 40, "   info", "first, which is long");
    TraceLine(nullptr, 0, 40, "   info", "second");
    TraceFlush(Logger());
    Set(Logger().settings | TRACE_CONSOLE);
    TraceLine(nullptr, 0, 40, "   info", "short");
    EXPECT_TRUE(log.Text().starts_with("[Dialwright  40    info] short\r\n")) << log.Text();
    EXPECT_NE(std::string::npos, log.Text().find("second\r\n"));
}

TEST_F(Echo, EndsAtTheEndOfTheBuffer) {
    LoggerState& logger = Logger();
    const std::lock_guard lock(logger.lock);
    logger.writeBuffer.fill('x');
    logger.writeBuffer.back() = '\0';
    logger.used = kWriteOutAbove - 100;
    Set(kSettingsAtStart | TRACE_CONSOLE);
    TraceLine(nullptr, 0, 42, "warning", "line");
    EXPECT_EQ(kWriteBufferBytes - (kWriteOutAbove - 100), log.Text().size());
    logger.writeBuffer.fill('\0');
    logger.used = 0;
}

TEST(EchoColors, AreForWarningsAlone) {
    // Kept on purpose: the other level texts begin with a blank, so that even errors have the default colour.
    const testing::TemporaryFolder folder;
    testing::ChildProcess host(L"console_host.exe", {folder.Path() + L"\\"});
    // info, warning, error, a warning with the row of its dump, a warning without colours
    EXPECT_EQ("7 14 7 14 7 7 ", host.ReadLine(testing::kPatienceMs));
}

TEST_F(Echo, OfADumpComesWithItsRows) {
    Set(kSettingsAtStart | TRACE_CONSOLE | TRACE_NO_TIME | TRACE_NO_PID | TRACE_NO_TID);
    std::array<unsigned char, 20> data{};
    for (std::size_t i = 0; i < data.size(); ++i) data[i] = static_cast<unsigned char>(0x3C + i);
    TraceLine(data.data(), data.size(), 40, "   info", "block");
    const std::string expected =
        "[Dialwright  40    info] block length=20\r\n"
        "00000000  3C 3D 3E 3F 40 41 42 43 44 45 46 47 48 49 4A 4B   <=>?@ABCDEFGHIJK\r\n"
        "00000010  4C 4D 4E 4F                                       LMNO\r\n";
    EXPECT_EQ(expected, log.Text());
    StopAndRelease();
    EXPECT_NE(std::string::npos, testing::ReadFile(File(L"x_1.log")).find(expected));
}

TEST_F(Echo, OfALongDumpLosesAndRepeatsNoRow) {
    Set(kSettingsAtStart | TRACE_CONSOLE | TRACE_NO_TIME | TRACE_NO_PID | TRACE_NO_TID);
    const std::vector<unsigned char> data(std::size_t{1000} * 16, 0x41);
    {
        const std::lock_guard watcherWaits(Logger().lock);
        TraceLine(data.data(), data.size(), 40, "   info", "block");
    }
    const auto lines = testing::SplitLines(log.Text());
    ASSERT_EQ(1001U, lines.size());
    EXPECT_TRUE(lines[1].starts_with("00000000  41 "));
    EXPECT_TRUE(lines[1000].starts_with("00003E70  41 "));
    StopAndRelease();
    EXPECT_EQ(1003U, testing::ReadTrace(File(L"x_1.log")).size());
}

}  // namespace
}  // namespace dialwright
