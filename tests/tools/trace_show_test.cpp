#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "platform/text_encoding.h"
#include "run_tool.h"
#include "script/dialog_script_manager.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/temporary_folder.h"
#include "trace/logger.h"

#include <nlohmann/json.hpp>

namespace dialwright::testing {
namespace {

using Json = nlohmann::json;
using Lines = std::vector<std::string>;

const std::string kIndent(80, ' ');

std::string Line(const std::string& time, const std::string& level, const std::string& message) {
    return "[2025-09-08 " + time + ".0000000 UTC+00:00] [7:9] [Dialwright  40 " + level + "] " + message;
}

/// Real traces of this process, and such as are written by hand.
class TraceShow : public ::testing::Test {
protected:
    /// Runs the script with the library's own logger on x_1.log.
    void Execute(const std::wstring& script) const {
        const LogCapture quiet;
        ASSERT_EQ(1, TraceStart(folder.NarrowPath().c_str(), "x.log", "Dialwright"));
        (void)DialogScriptManager().ExecuteScript(script.c_str());  // what it did is told by the trace
        TraceStop();
        ReleaseTrace();
    }

    void Write(const wchar_t* name, const Lines& lines) const {
        std::string text;
        for (const std::string& line : lines) text += line + "\r\n";
        WriteFile(folder.File(name), text);
    }

    [[nodiscard]] Ended Show(std::vector<std::wstring> options, const wchar_t* name = L"x_1.log") const {
        return ShowPath(folder.File(name), std::move(options));
    }

    [[nodiscard]] Ended ShowFolder(std::vector<std::wstring> options) const {
        return ShowPath(folder.Path() + L".", std::move(options));
    }

    static Ended ShowPath(const std::wstring& path, std::vector<std::wstring> options) {
        options.insert(options.begin(), {L"trace", L"show", path});
        return RunTool(options);
    }

    const TemporaryFolder folder;
};

TEST_F(TraceShow, PrintsARealTraceAsItStandsInTheFile) {
    const PracticeWindow target;
    Execute(target.Line(L"Window.ClearText", L"15 5000"));
    const Ended shown = Show({});
    EXPECT_EQ(0U, shown.code);
    std::string expected = ReadFile(folder.File(L"x_1.log"));
    std::erase(expected, '\r');
    EXPECT_NE(std::string::npos, expected.find("Cleared text"));
    EXPECT_EQ(expected, shown.Text());
}

TEST_F(TraceShow, TellsTheCommandsOfARealTrace) {
    const PracticeWindow target;
    Execute(target.Line(L"Window.SetText", L"12 \"top secret\" 5000") + L"\n" +
            target.BriefLine(L"Window.ClearText", L"999") + L"\n" + target.Line(L"Window.Close"));
    const Ended shown = Show({L"--commands", L"--json"});
    EXPECT_EQ(0U, shown.code);
    const Json commands = Json::parse(shown.Text()).at("commands");
    ASSERT_EQ(2U, commands.size()) << shown.Text();
    EXPECT_EQ("ok", commands[0].at("result"));
    EXPECT_EQ(1, commands[0].at("attempts"));
    EXPECT_EQ(std::string::npos, commands[0].at("command").get<std::string>().find("secret"));
    EXPECT_FALSE(commands[0].contains("problem"));
    EXPECT_EQ("failed", commands[1].at("result"));
    EXPECT_GE(commands[1].at("attempts"), 2);
    EXPECT_GE(commands[1].at("durationMs"), kBriefMs - 50.0);
    EXPECT_EQ(::GetCurrentProcessId(), commands[1].at("process"));
    EXPECT_EQ(::GetCurrentThreadId(), commands[1].at("thread"));
    const Ended text = Show({L"--commands", L"--text", L"999"});
    ASSERT_FALSE(text.lines.empty());
    const std::regex failed("  failed +[0-9]+\\.[0-9]{3} s  attempts ");
    EXPECT_TRUE(std::regex_search(text.lines[0], failed)) << text.lines[0];
}

TEST_F(TraceShow, JoinsBothFilesOfThePair) {
    Write(L"x_1.log", {"(Time Zone: X) (y, 1s) log rotated at z", Line("10:00:02", "   info", "f: second")});
    Write(L"x_2.log", {Line("10:00:01", "   info", "f: first")});
    const Lines expected = {Line("10:00:01", "   info", "f: first"), "(Time Zone: X) (y, 1s) log rotated at z",
                            Line("10:00:02", "   info", "f: second")};
    EXPECT_EQ(expected, Show({}).lines);
    EXPECT_EQ(expected, Show({}, L"x_2.log").lines);
    EXPECT_EQ(expected, ShowFolder({}).lines);
}

TEST_F(TraceShow, FiltersWholeMessages) {
    const std::string folded = Line("10:00:01", "warning", "Window::Find: nothing\n" + kIndent + "Target: here");
    Write(L"x_1.log", {Line("10:00:00", "   info", "Window::Window: a"), folded, "torn",
                       Line("10:00:02", "  error", "Other::Function: b")});
    EXPECT_EQ((Lines{Line("10:00:01", "warning", "Window::Find: nothing"), kIndent + "Target: here",
                     Line("10:00:02", "  error", "Other::Function: b"),
                     "dialwright: 1 lines lack what the options ask for and were left out"}),
              Show({L"--level", L"warning"}).lines);
    EXPECT_EQ(2U, Show({L"--text", L"target: HERE"}).lines.size());
    EXPECT_EQ(Lines{"torn"}, Show({L"--text", L"torn"}).lines);
    EXPECT_EQ(4U, Show({L"--function", L"Window::"}).lines.size());
    EXPECT_EQ(3U, Show({L"--since", L"10:00:01", L"--until", L"2025-09-08 10:00:01"}).lines.size());
    EXPECT_EQ(5U, Show({L"--process", L"1", L"--process", L"7", L"--thread", L"9"}).lines.size());
    EXPECT_EQ(1U, Show({L"--process", L"1"}).code);
}

TEST_F(TraceShow, PrintsJson) {
    Write(L"x_1.log",
          {Line("10:00:01", "warning", "Window::Find: nothing\n" + kIndent + "Target: \"\x1B[31m\""), "torn \xFF"});
    const Json json = Json::parse(Show({L"--json"}).Text());
    EXPECT_EQ(1, json.at("schema"));
    ASSERT_EQ(2U, json.at("lines").size());
    const Json expected = {{"host", "x.log"},
                           {"time", "2025-09-08 10:00:01.0000000"},
                           {"zone", "UTC+00:00"},
                           {"process", 7},
                           {"thread", 9},
                           {"logger", "Dialwright"},
                           {"number", 40},
                           {"level", "warning"},
                           {"function", "Window::Find"},
                           {"message", "nothing\nTarget: \"\xEF\xBF\xBD[31m\""}};
    EXPECT_EQ(expected, json.at("lines")[0]);
    EXPECT_EQ((Json{{"host", "x.log"}, {"raw", "torn \xEF\xBF\xBD"}}), json.at("lines")[1]);
}

TEST_F(TraceShow, TakesOfAFolderTheHostThatWroteLast) {
    Write(L"a_1.log", {Line("10:00:01", "   info", "f: a")});
    Write(L"b_1.log", {Line("10:00:00", "   info", "f: b")});
    Write(L"b_1_error.log", {Line("10:00:00", "  error", "f: not shown twice")});
    EXPECT_EQ(Lines{Line("10:00:00", "   info", "f: b")}, ShowFolder({}).lines);
    EXPECT_EQ(Lines{Line("10:00:01", "   info", "f: a")}, ShowFolder({L"--host", L"A"}).lines);
    EXPECT_EQ((Lines{Line("10:00:00", "   info", "f: b"), Line("10:00:01", "   info", "f: a")}),
              ShowFolder({L"--all"}).lines);
    EXPECT_EQ(Lines{Line("10:00:00", "  error", "f: not shown twice")}, Show({}, L"b_1_error.log").lines);
}

TEST_F(TraceShow, SaysWhatItCannotDo) {
    EXPECT_EQ(2U, Show({}).code);
    EXPECT_EQ(1U, ShowFolder({}).code);
    EXPECT_EQ(2U, RunTool({L"trace"}).code);
    EXPECT_EQ(2U, RunTool({L"trace", L"show"}).code);
    Write(L"x_1.log", {Line("10:00:01", "   info", "f: a")});
    EXPECT_EQ(2U, Show({L"--since", L"soon"}).code);
    EXPECT_EQ(2U, Show({L"--level", L"loud"}).code);
    EXPECT_EQ(2U, Show({L"--commands", L"--level", L"error"}).code);
    EXPECT_EQ(1U, Show({L"--commands"}).code);
}

}  // namespace
}  // namespace dialwright::testing
