#include "trace_reader/memory_log_search.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "trace/memory_log.h"

namespace dialwright::tools {
namespace {

struct Freed {
    void operator()(TraceMemLog* log) const { FreeMemoryLog(log); }
};

/// The bytes of a memory log with so many lines, "line 1" and so on.
std::string Block(int lines) {
    const std::unique_ptr<TraceMemLog, Freed> log(AllocateMemoryLog());
    for (int line = 1; line <= lines; ++line) StoreInMemoryLog(*log, "line " + std::to_string(line));
    return {reinterpret_cast<const char*>(log.get()), sizeof(TraceMemLog)};
}

std::vector<MemoryLines> Find(std::string_view dump, std::size_t piece) {
    std::vector<MemoryLines> found;
    MemoryLogSearch search([&](const MemoryLines& lines) { found.push_back(lines); });
    for (std::size_t at = 0; at < dump.size(); at += piece) search.Feed(dump.substr(at, piece));
    return found;
}

TEST(MemoryLogSearch, FindsTheLinesInOrder) {
    for (const std::size_t piece : {std::size_t{4093}, std::size_t{65536}, std::size_t{3} << 20U}) {
        const auto found = Find("MDMP" + std::string(70000, 'x') + Block(3) + "end", piece);
        ASSERT_EQ(1U, found.size()) << piece;
        EXPECT_EQ(3U, found[0].counter);
        EXPECT_EQ((std::vector<std::string>{"line 1", "line 2", "line 3"}), found[0].lines);
    }
}

TEST(MemoryLogSearch, BeginsWithTheOldestLineThatIsLeft) {
    const auto found = Find(Block(1030), 65536);
    ASSERT_EQ(1U, found.size());
    ASSERT_EQ(1024U, found[0].lines.size());
    EXPECT_EQ("line 7", found[0].lines.front());
    EXPECT_EQ("line 1030", found[0].lines.back());
}

TEST(MemoryLogSearch, PassesByTheLabelAlone) {
    const std::string label("TraceMemLogHead\0", 16);
    EXPECT_TRUE(Find(label, 100).empty());
    EXPECT_TRUE(Find(label + std::string(2U << 20U, '\0'), 65536).empty());
    EXPECT_TRUE(Find(label + std::string(2U << 20U, 'x'), 65536).empty());
    EXPECT_TRUE(Find(Block(0), 65536).empty());
    const auto found = Find(label + "text of the image" + Block(1) + label, 65536);
    ASSERT_EQ(1U, found.size());
    EXPECT_EQ(std::vector<std::string>{"line 1"}, found[0].lines);
}

TEST(MemoryLogSearch, PassesByLinesWithoutAnEnd) {
    std::string block = Block(2);
    block.replace(24 + 1024, 1024, 1024, 'x');
    EXPECT_TRUE(Find(block, 65536).empty());
}

TEST(MemoryLogSearch, FindsTheLogsOfSeveralLibraries) {
    const auto found = Find(Block(1) + Block(2), 65536);
    ASSERT_EQ(2U, found.size());
    EXPECT_EQ(2U, found[1].lines.size());
}

TEST(MemoryLogSearch, FindsNoneInADumpThatIsCutShort) {
    EXPECT_TRUE(Find(Block(1).substr(0, sizeof(TraceMemLog) - 1), 65536).empty());
}

}  // namespace
}  // namespace dialwright::tools
