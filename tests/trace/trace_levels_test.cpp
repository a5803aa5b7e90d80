#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "script/dialog_script_manager.h"
#include "trace/logger_state.h"
#include "trace/trace.h"
#include "trace_fixture.h"
#include "window/window.h"

namespace dialwright {
namespace {

using Lines = std::vector<std::string>;

class TraceLevels : public TraceFixture {
protected:
    void SetUp() override { Start(); }

    /// From the source line number on: "40    info] tag: message".
    [[nodiscard]] Lines LinesFromNumber() {
        StopAndRelease();
        Lines lines;
        for (const std::string& line : testing::ReadTrace(File(L"x_1.log"))) {
            const std::size_t name = line.find("[Dialwright  ");
            lines.push_back(line.substr(name + 13));
        }
        if (lines.size() < 2) return {};
        return {lines.begin() + 1, lines.end() - 1};
    }
};

TEST_F(TraceLevels, EachLevelOfTheMaskGetsALineLowestFirst) {
    TraceLog("tag", LOG_INFO | LOG_DEBUG, "one");
    TraceLog("tag", LOG_WARNING | LOG_ERROR, "two");
    EXPECT_EQ((Lines{"40    info] tag: one", "41   debug] tag: one", "42 warning] tag: two", "43   error] tag: two"}),
              LinesFromNumber());
    EXPECT_EQ("tag: one\ntag: two\n", log.Text());
}

TEST_F(TraceLevels, ALevelThatTheSettingsLackGetsNoLineButItsCopy) {
    Logger().settings = 0x10E;
    TraceLog("tag", LOG_INFO, "quiet");
    TraceLog("tag", LOG_INFO | LOG_WARNING, "half");
    EXPECT_EQ((Lines{"42 warning] tag: half"}), LinesFromNumber());
    EXPECT_EQ("tag: quiet\ntag: half\n", log.Text());
}

TEST_F(TraceLevels, WithoutAnySinkNothingIsWritten) {
    Logger().settings = 0xF;
    TraceLog("tag", LOG_INFO | LOG_ERROR, "nowhere");
    Logger().settings = kSettingsAtStart;
    EXPECT_EQ((Lines{}), LinesFromNumber());
    EXPECT_FALSE(testing::FileExists(File(L"x_1_error.log")));
}

TEST_F(TraceLevels, TheFinishedLineIsReadAsAFormatOnceMore) {
    const std::string indent(80, ' ');
    TraceLog("tag", LOG_INFO, "%d%%%%\nmore", 100);
    TraceLog("tag", LOG_INFO, "%ls", L"100% done, %s%n%p%S%*d");
    EXPECT_EQ((Lines{"40    info] tag: 100%\n" + indent + "more", "40    info] tag: 100one, "}), LinesFromNumber());
    EXPECT_EQ("tag: 100%%\n" + indent + "more\ntag: 100% done, %s%n%p%S%*d\n", log.Text());
}

TEST_F(TraceLevels, ALongMessageIsCutAfter4092Bytes) {
    const auto messageOf = [](std::size_t length) { return std::string(length - 5, 'x'); };  // behind "tag: "
    for (const std::size_t length : {4095U, 4096U, 5000U}) TraceLog("tag", LOG_INFO, "%s", messageOf(length).c_str());
    const std::string start = "40    info] ";
    EXPECT_EQ((Lines{start + "tag: " + messageOf(4095), start + "tag: " + messageOf(4092) + "...",
                     start + "tag: " + messageOf(4092) + "..."}),
              LinesFromNumber());
}

TEST_F(TraceLevels, TheCutMaySplitACharacter) {
    const std::wstring text = std::wstring(4092 - 5 - 1, L'x') + L"\x65E5" + std::wstring(10, L'y');
    TraceLog("tag", LOG_INFO, "%ls", text.c_str());
    EXPECT_EQ((Lines{"40    info] tag: " + std::string(4086, 'x') + "\xE6..."}), LinesFromNumber());
}

TEST_F(TraceLevels, TheLibrarysMessagesHaveTheirLevels) {
    EXPECT_EQ(nullptr, Window(L"NoSuchClass", L"none", 1, true).hwndWindow);
    DialogScriptManager manager;
    EXPECT_EQ(0, manager.ExecuteScript(L"Window.ClickButton c t abc"));
    Lines levels;
    for (const std::string& line : LinesFromNumber()) levels.push_back(line.substr(0, line.find(": ")));
    EXPECT_EQ((Lines{
                  "40    info] Window::Window",
                  "43   error] Window::Window",
                  "40    info] DialogScriptManager::ExecuteScript",
                  "43   error] DialogScriptManager::ParseInt",
                  "43   error] DialogScriptManager::ExecuteCommand",
                  "43   error] DialogScriptManager::ExecuteScript",
              }),
              levels);
}

TEST_F(TraceLevels, ActionsTellTheirStepsAsInfoAndDebug) {
    (void)Window::ClickHelper(nullptr);
    (void)Window::ClearTextHelper(reinterpret_cast<HWND>(std::uintptr_t{0xDEAD}));
    const Lines lines = LinesFromNumber();
    ASSERT_EQ(2U, lines.size());
    EXPECT_TRUE(lines[0].starts_with("43   error] "));
    EXPECT_TRUE(lines[1].starts_with("41   debug] "));
}

TEST_F(TraceLevels, LoggingChangesNeitherErrnoNorTheLastError) {
    errno = 42;
    ::SetLastError(4711);
    TraceLog("tag", LOG_INFO | LOG_ERROR, "line");
    EXPECT_EQ(4711U, ::GetLastError());
    EXPECT_EQ(42, errno);
}

}  // namespace
}  // namespace dialwright
