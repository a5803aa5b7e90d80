#include "language/tokenizer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "support/patience.h"
#include "support/stack_limit.h"

namespace dialwright {
namespace {

struct Row {
    const wchar_t* line;
    TokenList tokens;
};

TEST(Tokenizer, SplitsALineIntoTheseTokens) {
    const Row rows[] = {
        {L"", {}},
        {L" \t  ", {}},
        {L"Window.Close Cls Title", {L"Window.Close", L"Cls", L"Title"}},
        {L"  a\tb\r", {L"a", L"b"}},
        {LR"("a b" c)", {L"a b", L"c"}},
        {LR"("say \"hi\" now")", {LR"(say "hi" now)"}},
        {LR"("C:\Temp\new")", {LR"(C:\Temp\new)"}},
        {LR"("C:\\Temp")", {LR"(C:\Temp)"}},
        {LR"("a\nb")", {LR"(a\nb)"}},
        {LR"("ends in \\")", {LR"(ends in \)"}},
        {LR"("")", {L""}},
        {LR"(a "" b)", {L"a", L"", L"b"}},
        {LR"(abc"def")", {LR"(abc"def")"}},
        {LR"("abc"def)", {L"abc", L"def"}},
        {LR"("abc""def")", {L"abc", L"def"}},
        {LR"("abc def)", {LR"("abc)", L"def"}},
        {LR"(x " y)", {L"x", L"\"", L"y"}},
        {LR"(\"a b\")", {LR"(\"a)", LR"(b\")"}},
        {LR"("open \")", {LR"("open)", LR"(\")"}},
        {L"\x3042 \"\x3044 \x3046\"", {L"\x3042", L"\x3044 \x3046"}},
        {L"a\x00A0"
         L"b\x3000"
         L"c",
         {L"a\x00A0"
          L"b\x3000"
          L"c"}},  // only ASCII blanks part tokens
        {L"\xD83D \xDE00", {L"\xD83D", L"\xDE00"}},
        {L"\"two\nlines\"", {L"two\nlines"}},
        {L"\"a\\\nb\"", {L"\"a\\", L"b\""}},  // a backslash pairs with no line end
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.tokens, TokenizeCommand(row.line)) << "line: " << ::testing::PrintToString(row.line);
}

TEST(Tokenizer, TellsWhereEachTokenStands) {
    const auto tokens = TokenizeWithOffsets(LR"(  Name "a \"b\"" x)");
    ASSERT_EQ(3U, tokens.size());
    EXPECT_EQ(L"Name", tokens[0].text);
    EXPECT_EQ(2U, tokens[0].offset);
    EXPECT_EQ(4U, tokens[0].length);
    EXPECT_FALSE(tokens[0].quoted);
    EXPECT_EQ(LR"(a "b")", tokens[1].text);
    EXPECT_EQ(7U, tokens[1].offset);
    EXPECT_EQ(9U, tokens[1].length);
    EXPECT_TRUE(tokens[1].quoted);
    EXPECT_EQ(17U, tokens[2].offset);
}

TEST(Tokenizer, TakesATokenOfAMillionCharactersOnASmallStack) {
    constexpr std::size_t kUnits = 1'000'000;
    const std::wstring text(kUnits, L'x');
    testing::RunWithStackLeft(std::size_t{256} * 1024, [&] {
        EXPECT_EQ(TokenList{text}, TokenizeCommand(L"\"" + text + L"\""));
        EXPECT_EQ(TokenList{L"\"" + text}, TokenizeCommand(L"\"" + text));
        EXPECT_EQ(TokenList{text}, TokenizeCommand(text));
    });
}

TEST(Tokenizer, TakesTimeInStepWithTheLengthOfAToken) {
    if (testing::IsEmulated()) GTEST_SKIP() << "it measures time";
    // The best of three, so that a busy moment of the machine does not count.
    const auto timeOf = [](std::size_t units) {
        const std::wstring line = L"\"" + std::wstring(units, L'x') + L"\"";
        auto best = std::chrono::steady_clock::duration::max();
        for (int i = 0; i < 3; ++i) {
            const auto begin = std::chrono::steady_clock::now();
            EXPECT_EQ(1U, TokenizeCommand(line).size());
            best = std::min(best, std::chrono::steady_clock::now() - begin);
        }
        return best;
    };
    // Both so long that the memory for them comes from the system anew. Eight times the length; a quadratic way would
    // take 64 times as long.
    EXPECT_LT(timeOf(800'000), 32 * timeOf(100'000));
}

}  // namespace
}  // namespace dialwright
