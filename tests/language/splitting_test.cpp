#include "language/splitting.h"

#include <gtest/gtest.h>

namespace dialwright {
namespace {

using Pieces = std::vector<std::wstring>;

TEST(SplitByComma, KeepsEmptyPiecesButNotOneAfterAFinalComma) {
    EXPECT_EQ(Pieces{}, SplitByComma(L""));
    EXPECT_EQ((Pieces{L"1"}), SplitByComma(L"1"));
    EXPECT_EQ((Pieces{L"1", L"", L"3"}), SplitByComma(L"1,,3"));
    EXPECT_EQ((Pieces{L"1", L"2"}), SplitByComma(L"1,2,"));
    EXPECT_EQ((Pieces{L""}), SplitByComma(L","));
    EXPECT_EQ((Pieces{L"", L""}), SplitByComma(L",,"));
    EXPECT_EQ((Pieces{L" 1 ", L" 2"}), SplitByComma(L" 1 , 2"));
}

TEST(SplitHierarchyPath, FollowsTheSameRuleAtFullStops) {
    EXPECT_EQ(Pieces{}, SplitHierarchyPath(L""));
    EXPECT_EQ((Pieces{L"2", L"1"}), SplitHierarchyPath(L"2.1"));
    EXPECT_EQ((Pieces{L"1", L"", L"2"}), SplitHierarchyPath(L"1..2"));
    EXPECT_EQ((Pieces{L"1"}), SplitHierarchyPath(L"1."));
    EXPECT_EQ((Pieces{L"", L"1"}), SplitHierarchyPath(L".1"));
}

TEST(SplitScriptLines, DropsBlankLinesAndKeepsTheOthersAsTheyStand) {
    EXPECT_EQ(Pieces{}, SplitScriptLines(L""));
    EXPECT_EQ(Pieces{}, SplitScriptLines(L"\r\n \t\r\n\n"));
    EXPECT_EQ((Pieces{L"a"}), SplitScriptLines(L"a"));
    EXPECT_EQ((Pieces{L"a\r", L"  b \r", L"c"}), SplitScriptLines(L"a\r\n\r\n   \r\n  b \r\nc"));
    EXPECT_EQ((Pieces{L"a\rb"}), SplitScriptLines(L"a\rb\n"));  // a carriage return alone ends no line
}

}  // namespace
}  // namespace dialwright
