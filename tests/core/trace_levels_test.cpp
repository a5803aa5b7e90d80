#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "script/dialog_script_manager.h"
#include "support/log_capture.h"
#include "trace/line_writer.h"
#include "trace/trace.h"
#include "window/window.h"

// What TraceLog hands to the line writer. This program brings a line writer of its own, which keeps the lines, in place
// of the library's.
namespace dialwright {
namespace {

struct Line {
    int sourceLine;
    std::string level;
    std::string text;

    bool operator==(const Line&) const = default;
};

std::vector<Line> lines;
std::uint64_t settings = 0x10F;

}  // namespace

std::uint64_t TraceSettings() noexcept { return settings; }

void TraceLine(const void* data, std::size_t dataLength, int sourceLine, const char* levelText, const char* format,
               ...) noexcept {
    EXPECT_EQ(nullptr, data);
    EXPECT_EQ(0U, dataLength);
    lines.push_back({.sourceLine = sourceLine, .level = levelText, .text = format});
}

namespace {

using testing::LogCapture;

class TraceLevels : public ::testing::Test {
protected:
    void SetUp() override {
        lines.clear();
        settings = 0x10F;
    }
};

TEST_F(TraceLevels, EachLevelOfTheMaskGetsALineLowestFirst) {
    const LogCapture log;
    TraceLog("tag", LOG_INFO | LOG_DEBUG, "one");
    TraceLog("tag", LOG_WARNING | LOG_ERROR, "two");
    EXPECT_EQ((std::vector<Line>{{40, "   info", "tag: one"},
                                 {41, "  debug", "tag: one"},
                                 {42, "warning", "tag: two"},
                                 {43, "  error", "tag: two"}}),
              lines);
    EXPECT_EQ("tag: one\ntag: two\n", log.Text());
}

TEST_F(TraceLevels, ALevelThatTheSettingsLackGetsNoLineButItsCopy) {
    settings = 0x10E;
    const LogCapture log;
    TraceLog("tag", LOG_INFO, "quiet");
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ("tag: quiet\n", log.Text());
}

TEST_F(TraceLevels, TheFinishedLineGoesOnAsAFormat) {
    const std::string indent(80, ' ');
    const LogCapture log;
    TraceLog("tag", LOG_INFO, "%d%%%%\nmore", 100);
    EXPECT_EQ((std::vector<Line>{{40, "   info", "tag: 100%%\n" + indent + "more"}}), lines);
    EXPECT_EQ("tag: 100%%\n" + indent + "more\n", log.Text());
}

TEST_F(TraceLevels, TheLibrarysMessagesHaveTheirLevels) {
    const LogCapture log;
    EXPECT_EQ(nullptr, Window(L"NoSuchClass", L"none", 1, true).hwndWindow);
    DialogScriptManager manager;
    EXPECT_EQ(0, manager.ExecuteScript(L"Window.ClickButton c t abc"));
    std::vector<std::string> levels;
    for (const Line& line : lines) levels.push_back(line.level + " " + line.text.substr(0, line.text.find(": ")));
    EXPECT_EQ((std::vector<std::string>{
                  "   info Window::Window",
                  "  error Window::Window",
                  "   info DialogScriptManager::ExecuteScript",
                  "  error DialogScriptManager::ParseInt",
                  "  error DialogScriptManager::ExecuteCommand",
                  "  error DialogScriptManager::ExecuteScript",
              }),
              levels);
}

TEST_F(TraceLevels, ActionsTellTheirStepsAsInfoAndDebug) {
    const LogCapture log;
    (void)Window::ClickHelper(nullptr);
    (void)Window::ClearTextHelper(reinterpret_cast<HWND>(std::uintptr_t{0xDEAD}));
    ASSERT_EQ(2U, lines.size());
    EXPECT_EQ("  error", lines[0].level);
    EXPECT_EQ("  debug", lines[1].level);
}

}  // namespace
}  // namespace dialwright
