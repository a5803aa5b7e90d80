#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "script/dialog_script_manager.h"
#include "trace/line_writer.h"
#include "trace/trace.h"
#include "trace_fixture.h"

namespace dialwright {
namespace {

// Readers split a trace file at CR LF and know that a line that begins with 80 blanks continues the one before. No text
// from outside may look like a line of its own then.

constexpr const wchar_t* kForged =
    L"[2025-09-08 14:05:23.1234567 UTC+02:00] [4312:8876] [Dialwright  43   error] DialogScriptManager: all is well";

class ForgedLines : public TraceFixture {
protected:
    void SetUp() override { Start(); }

    [[nodiscard]] std::vector<std::string> RawLines() {
        StopAndRelease();
        return testing::ReadTrace(File(L"x_1.log"));
    }

    /// Only lines of the logger's own, each with our process in front, and continuations.
    void ExpectOnlyRealLines(std::size_t expected) {
        const std::regex real(R"(\[\d{4}-[^\]]+\] \[)" + std::to_string(::GetCurrentProcessId()) + R"(:\d+\] \[[^]*)");
        const std::string indent(80, ' ');
        std::size_t count = 0;
        for (const std::string& line : RawLines()) {
            if (line.starts_with(indent)) continue;
            ++count;
            EXPECT_TRUE(std::regex_match(line.substr(0, 200), real)) << line;
        }
        EXPECT_EQ(expected + 2, count);
    }
};

TEST_F(ForgedLines, ALineFeedInATextGetsTheIndent) {
    for (const wchar_t* separator : {L"\n", L"\r\n", L"\n\n", L"\r\n\r\n", L"\n\r", L"%\n", L"\r%\n", L"%\r\n"}) {
        const std::wstring text = std::wstring(L"title") + separator + kForged;
        TraceLog("tag", LOG_INFO, "%ls", text.c_str());
    }
    ExpectOnlyRealLines(8);
}

TEST_F(ForgedLines, ATitleOrPathOfACommandIsNoLine) {
    DialogScriptManager manager;
    const std::wstring forged = std::wstring(L"x\r\n") + kForged;
    EXPECT_EQ(0, manager.ExecuteCommand((L"Window.Close \"" + forged + L"\" \"" + forged + L"\" 1").c_str()));
    EXPECT_EQ(0, manager.ExecuteCommand((L"Window.Bogus\r\n" + forged).c_str()));
    const std::regex real(R"(\[\d{4}-[^\]]+\] \[\d+:\d+\] \[Dialwright  \d+ [ a-z]{7}\] [^]*)");
    for (const std::string& line : RawLines()) {
        EXPECT_TRUE(line.starts_with(std::string(80, ' ')) || std::regex_match(line, real)) << line;
        EXPECT_FALSE(line.starts_with("[2025")) << line;
    }
}

TEST_F(ForgedLines, ATextIsNeverReadAsAFormatWithArguments) {
    TraceLog("tag", LOG_ERROR, "%ls", L"%s%n%S%ws%p%999999999d%*d%c%ll");
    ExpectOnlyRealLines(1);
}

TEST_F(ForgedLines, ALoneCarriageReturnStaysAsItIs) {
    // Kept on purpose: only line feeds are indented. Who shows the file must not take it for the end of a line.
    TraceLog("tag", LOG_INFO, "a\rb");
    const auto lines = RawLines();
    ASSERT_EQ(3U, lines.size());
    EXPECT_TRUE(lines[1].ends_with("tag: a\rb"));
}

TEST_F(ForgedLines, ACarriageReturnAndLineFeedAtTheEndLeaveAnEmptyLine) {
    // Kept on purpose: nothing follows that an indent could stand before.
    TraceLog("tag", LOG_INFO, "a\r\n");
    const auto lines = RawLines();
    ASSERT_EQ(4U, lines.size());
    EXPECT_TRUE(lines[1].ends_with("tag: a"));
    EXPECT_EQ("", lines[2]);
}

TEST_F(ForgedLines, AMessageThatIsCutWithinTheIndentStartsNoLine) {
    for (std::size_t before = 4000; before < 4096; ++before) {
        TraceLog("tag", LOG_INFO, "%s\r\n%ls", std::string(before - 5, 'x').c_str(), kForged);
    }
    for (const std::string& line : RawLines()) EXPECT_FALSE(line.starts_with("[2025")) << line;
}

}  // namespace
}  // namespace dialwright
