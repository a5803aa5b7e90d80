#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "run_tool.h"
#include "support/child_process.h"
#include "support/settings_key.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "trace/host_folder.h"
#include "trace/settings_word.h"

namespace dialwright::testing {
namespace {

constexpr int kRounds = 20;
/// Some 800 KiB, so that no round turns the files twice at a limit of 1 MiB.
constexpr int kLinesOfARound = 8000;

std::string Ending(int round, int line) {
    return "Probe: thread " + std::to_string(round) + " line " + std::to_string(line);
}

class TraceFollow : public ::testing::Test {
protected:
    void SetUp() override {
        key.Set("flag", static_cast<DWORD>(kSettingsAtStart));
        key.Set("size", 1);
    }

    [[nodiscard]] std::vector<std::wstring> HostArguments(int lines) const {
        return {L"rounds", {key.Path().begin(), key.Path().end()}, std::to_wstring(lines)};
    }

    /// Reads on until a line ends so; all lines on the way are kept.
    [[nodiscard]] bool ReadUntil(ChildProcess& viewer, const std::string& ending) {
        while (const auto line = viewer.ReadLine(kPatienceMs)) {
            seen.push_back(*line);
            if (line->ends_with(ending)) return true;
        }
        return false;
    }

    const HostFolder host;
    const SettingsKey key;
    std::vector<std::string> seen;
};

TEST_F(TraceFollow, ShowsEveryLineOnceWhileTheHostWritesAndTurnsItsFiles) {
    ChildProcess viewer(L"dialwright.exe", {L"trace", L"follow", host.Folder().File(L"logs\\trace"), L"--for", L"60"});
    ASSERT_TRUE(ReadUntil(viewer, "waiting for a trace"));
    ChildProcess writer(host.LoadHost(), HostArguments(kLinesOfARound));
    for (int round = 1; round <= kRounds; ++round) {
        writer.WriteLine("");
        // The next round begins while the viewer still reads the rest of this one.
        ASSERT_TRUE(ReadUntil(viewer, Ending(round, kLinesOfARound - 2000))) << round;
    }
    writer.CloseInput();
    ASSERT_TRUE(ReadUntil(viewer, "trace stopped"));
    viewer.Kill();
    std::vector<std::string> expected;
    for (int round = 1; round <= kRounds; ++round) {
        for (int line = 1; line <= kLinesOfARound; ++line) expected.push_back(Ending(round, line));
    }
    std::vector<std::string> shown;
    int rotations = 0;
    for (const std::string& line : seen) {
        const std::size_t message = line.find("Probe: thread ");
        if (message != std::string::npos) shown.push_back(line.substr(message));
        if (line.find(" log rotated at ") != std::string::npos) ++rotations;
    }
    EXPECT_TRUE(expected == shown) << shown.size() << " of " << expected.size() << " lines";
    EXPECT_GE(rotations, 12);
}

TEST_F(TraceFollow, BeginsWithTheLastLinesThatTheFilterWants) {
    const std::wstring file = host.Folder().File(L"x_1.log");
    std::string text;
    for (int line = 1; line <= 20000; ++line)
        text += "[1:" + std::to_string(line % 2) + "] line " + std::to_string(line) + "\r\n";
    WriteFile(file, text);
    const Ended ended = RunTool({L"trace", L"follow", file, L"--lines", L"3", L"--for", L"0.5", L"--thread", L"1"});
    EXPECT_EQ(0U, ended.code);
    EXPECT_EQ((std::vector<std::string>{"[1:1] line 19995", "[1:1] line 19997", "[1:1] line 19999"}), ended.lines);
}

TEST_F(TraceFollow, ShowsATornLineAtItsEnd) {
    const std::wstring file = host.Folder().File(L"x_1.log");
    WriteFile(file, "[1:1] whole\r\n[1:1] to");
    EXPECT_EQ((std::vector<std::string>{"[1:1] whole", "[1:1] to"}),
              RunTool({L"trace", L"follow", file, L"--for", L"0.5"}).lines);
}

TEST_F(TraceFollow, PrintsJsonLineByLine) {
    const std::wstring file = host.Folder().File(L"x_1.log");
    WriteFile(file, "[1:2] f: one\r\n");
    EXPECT_EQ(std::vector<std::string>{R"({"host":"x.log","process":1,"thread":2,"function":"f","message":"one"})"},
              RunTool({L"trace", L"follow", file, L"--json", L"--for", L"0.5"}).lines);
    EXPECT_EQ(2U, RunTool({L"trace", L"follow"}).code);
    EXPECT_EQ(2U, RunTool({L"trace", L"follow", file, L"--for", L"-1"}).code);
}

}  // namespace
}  // namespace dialwright::testing
