#include "look/command_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "language/criterion.h"
#include "language/tokenizer.h"

namespace dialwright::tools {
namespace {

constexpr std::size_t kStackBytes = 1U << 20U;

TEST(QuoteToken, QuotesOnlyWhatNeedsIt) {
    EXPECT_EQ(L"Notepad", QuoteToken(L"Notepad"));
    EXPECT_EQ(L"#32770", QuoteToken(L"#32770"));
    EXPECT_EQ(L"\"\"", QuoteToken(L""));
    EXPECT_EQ(L"\"Save As\"", QuoteToken(L"Save As"));
    EXPECT_EQ(L"\"say \\\"x\\\"\"", QuoteToken(L"say \"x\""));
    EXPECT_EQ(L"\"C:\\\\Temp\"", QuoteToken(L"C:\\Temp"));
}

/// Texts as titles may be, of everything that means something somewhere.
std::wstring RandomText(std::mt19937& random) {
    constexpr std::wstring_view kUnits = L"ab \t\"\\.*+?()[]{}^$|#,\x00A0\x3042\xD83D\xDE00";
    std::wstring text;
    for (unsigned length = random() % 12; length > 0; --length) text.push_back(kUnits[random() % kUnits.size()]);
    return text;
}

TEST(QuoteToken, IsReadBackAsTheVeryText) {
    std::mt19937 random(1);  // NOLINT(bugprone-random-generator-seed): the same texts each time
    for (int round = 0; round < 20'000; ++round) {
        const std::wstring text = RandomText(random);
        const TokenList tokens = TokenizeCommand(L"first " + QuoteToken(text) + L" last");
        ASSERT_EQ(3U, tokens.size());
        ASSERT_EQ(text, tokens[1]);
    }
}

TEST(EscapeForExpression, MatchesTheVeryTextAndNoLonger) {
    std::mt19937 random(2);  // NOLINT(bugprone-random-generator-seed): the same texts each time
    for (int round = 0; round < 5'000; ++round) {
        const std::wstring text = RandomText(random) + L"x";
        const std::wregex expression = CompileCriterion(EscapeForExpression(text), kStackBytes);
        ASSERT_TRUE(MatchesWhole(text.c_str(), expression));
        ASSERT_FALSE(MatchesWhole((text + L"y").c_str(), expression));
    }
}

TEST(EscapeForExpression, TakesAnythingForAnEmptyText) { EXPECT_EQ(L".*", EscapeForExpression(L"")); }

}  // namespace
}  // namespace dialwright::tools
