#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "run_tool.h"
#include "support/temporary_folder.h"
#include "trace/memory_log.h"

#include <nlohmann/json.hpp>

namespace dialwright::testing {
namespace {

class TraceMemlog : public ::testing::Test {
protected:
    /// A file with the label alone, and a memory log of so many lines.
    [[nodiscard]] std::wstring Dump(int lines) const {
        const std::unique_ptr<TraceMemLog, decltype(&FreeMemoryLog)> log(AllocateMemoryLog(), &FreeMemoryLog);
        for (int line = 1; line <= lines; ++line) {
            const std::string level = line % 2 == 0 ? "   info" : "  error";
            StoreInMemoryLog(*log, "[1:2] [Dialwright  40 " + level + "] f: line " + std::to_string(line));
        }
        const std::string label("MDMP TraceMemLogHead\0 literal", 29);
        WriteFile(folder.File(L"x.dmp"), label + std::string(300'000, '\x7F') +
                                             std::string(reinterpret_cast<const char*>(log.get()), sizeof *log) +
                                             label);
        return folder.File(L"x.dmp");
    }

    const TemporaryFolder folder;
};

TEST_F(TraceMemlog, PrintsTheLastLinesInOrder) {
    const Ended ended = RunTool({L"trace", L"memlog", Dump(1026)});
    EXPECT_EQ(0U, ended.code);
    ASSERT_EQ(1024U, ended.lines.size());
    EXPECT_EQ("[1:2] [Dialwright  40   error] f: line 3", ended.lines.front());
    EXPECT_EQ("[1:2] [Dialwright  40    info] f: line 1026", ended.lines.back());
}

TEST_F(TraceMemlog, FiltersAndPrintsJson) {
    const auto json =
        nlohmann::json::parse(RunTool({L"trace", L"memlog", Dump(3), L"--level", L"error", L"--json"}).Text());
    ASSERT_EQ(2U, json.at("lines").size());
    EXPECT_EQ("line 3", json.at("lines")[1].at("message"));
}

TEST_F(TraceMemlog, SaysWhenThereIsNone) {
    EXPECT_EQ(1U, RunTool({L"trace", L"memlog", Dump(0)}).code);
    EXPECT_EQ(2U, RunTool({L"trace", L"memlog", folder.File(L"nowhere.dmp")}).code);
    EXPECT_EQ(2U, RunTool({L"trace", L"memlog"}).code);
}

}  // namespace
}  // namespace dialwright::testing
