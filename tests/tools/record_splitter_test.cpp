#include "trace_reader/record_splitter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace dialwright::tools {
namespace {

const std::string kIndent(80, ' ');

/// All records of a text that comes in pieces of this size.
std::vector<std::string> Split(const std::string& text, std::size_t piece) {
    RecordSplitter splitter;
    std::vector<std::string> records;
    for (std::size_t at = 0; at < text.size(); at += piece) {
        splitter.Feed(std::string_view(text).substr(at, piece));
        while (const auto record = splitter.Next()) records.push_back(*record);
    }
    while (const auto record = splitter.TakeRest()) records.push_back(*record);
    return records;
}

struct Row {
    std::string text;
    std::vector<std::string> records;
};

TEST(Records, AreTheSameInPiecesOfAnySize) {
    const std::vector<Row> rows = {
        {.text = "", .records = {}},
        {.text = "one\r\n", .records = {"one"}},
        {.text = "one\r\ntwo\r\n", .records = {"one", "two"}},
        {.text = "one\r\ntorn", .records = {"one", "torn"}},
        {.text = "one\n" + kIndent + "more\r\ntwo\r\n", .records = {"one\n" + kIndent + "more", "two"}},
        {.text = "one\r\n" + kIndent + "more\r\ntwo\r\n", .records = {"one\r\n" + kIndent + "more", "two"}},
        {.text = "ends so\r\n\r\ntwo\r\n", .records = {"ends so\r\n", "two"}},
        {.text = "one\r\n   indented, but not enough\r\n", .records = {"one", "   indented, but not enough"}},
        {.text = "a\rb\r\nc\r\n", .records = {"a\rb", "c"}},
    };
    for (const Row& row : rows) {
        for (std::size_t piece = 1; piece <= row.text.size() + 1; ++piece) {
            EXPECT_EQ(row.records, Split(row.text, piece)) << row.text << " in pieces of " << piece;
        }
    }
}

TEST(Records, AreNotHandedOnBeforeTheyAreWhole) {
    RecordSplitter splitter;
    splitter.Feed("one\r\n");
    EXPECT_EQ(std::nullopt, splitter.Next());
    splitter.Feed(kIndent + "more");
    EXPECT_EQ(std::nullopt, splitter.Next());
    EXPECT_EQ(std::nullopt, splitter.TakeEnded());
    splitter.Feed("\r\n");
    EXPECT_EQ("one\r\n" + kIndent + "more", splitter.TakeEnded());
    EXPECT_EQ(std::nullopt, splitter.TakeRest());
}

TEST(Records, HaveALimitWhereThereAreNoLineEnds) {
    const std::string much(5U << 20U, 'x');
    std::size_t bytes = 0;
    const auto records = Split(much, 65536);
    for (const std::string& record : records) bytes += record.size();
    EXPECT_EQ(much.size(), bytes);
    EXPECT_GE(records.size(), 5U);
}

}  // namespace
}  // namespace dialwright::tools
