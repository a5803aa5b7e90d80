#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

#include "dialwright/dialwright.hpp"
#include "language/commands.h"
#include "language/criterion.h"
#include "language/tokenizer.h"

namespace dialwright::testing {
namespace {

std::wstring RandomText(std::mt19937& random) {
    static constexpr std::wstring_view kAlphabet = L"\"\"\\\\\\ \t'ab1.,*()[]$^|\v\f\x00A0\x0085\x2028\x2029\x3042";
    std::wstring text(1 + random() % 12, L' ');
    for (wchar_t& unit : text) unit = kAlphabet[random() % kAlphabet.size()];
    return text;
}

#ifdef NDEBUG
constexpr int kRounds = 20'000;
#else
constexpr int kRounds = 5'000;
#endif

TEST(WrittenLine, IsReadByTheLibraryAsTheArgumentsWere) {
    std::mt19937 random(11);
    for (int i = 0; i < kRounds; ++i) {
        const CommandSpec& spec = kCommands[random() % kCommands.size()];
        TokenList expected = {std::wstring(spec.name), RandomText(random), RandomText(random)};
        std::vector<Argument> arguments;
        while (expected.size() < spec.minTokens) {
            expected.push_back(RandomText(random));
            arguments.emplace_back(expected.back());
        }
        const auto timeout = 1 + static_cast<int>(random() % 2147483646);
        const std::wstring line = Line(expected[0], expected[1], expected[2], arguments, timeout);
        expected.push_back(std::to_wstring(timeout));
        ASSERT_EQ(expected, TokenizeCommand(line)) << ::testing::PrintToString(line);
    }
}

TEST(WrittenLine, KnowsTheCommandsOfTheLibrary) {
    for (const CommandSpec& spec : kCommands) {
        const std::wstring name(spec.name);
        EXPECT_EQ(spec.Arguments().size(), ::DialwrightArgumentsOf(name.c_str())) << ::testing::PrintToString(name);
        EXPECT_EQ(spec.Arguments().size(), ::DialwrightArgumentsOf((name + L".NonRegex").c_str()));
    }
    for (const wchar_t* name : {L"", L".NonRegex", L"Window", L"Window.Close2", L"Window.Close.NonRegex.NonRegex"}) {
        EXPECT_EQ(-1, ::DialwrightArgumentsOf(name)) << ::testing::PrintToString(name);
    }
}

TEST(WrittenPattern, MatchesItsTextAndNoOther) {
    std::mt19937 random(12);
    for (int i = 0; i < kRounds / 10; ++i) {
        const std::wstring text = RandomText(random);
        const auto pattern = CompileCriterion(Literal(text), 1'000'000);
        ASSERT_TRUE(MatchesWhole(text.c_str(), pattern)) << ::testing::PrintToString(text);
        ASSERT_FALSE(MatchesWhole((text + L"x").c_str(), pattern)) << ::testing::PrintToString(text);
        ASSERT_FALSE(MatchesWhole((L"x" + text).c_str(), pattern)) << ::testing::PrintToString(text);
    }
}

TEST(WrittenLine, NeedsNoMoreRoomThanItSays) {
    const std::array arguments = {::DialwrightText(L"Cls"), ::DialwrightText(L"a \"b\""),
                                  ::DialwrightRectangle(-1, 2, 30, 2147483647), ::DialwrightNumber(-2147483647 - 1)};
    const std::wstring expected =
        L"Window.ClickButton.Position \"Cls\" \"a \\\"b\\\"\" -1,2,30,2147483647 -2147483648 -1";
    for (std::size_t units = 0; units < expected.size() + 5; ++units) {
        std::wstring line(expected.size() + 5, L'#');
        DialwrightLineFault fault{DIALWRIGHT_LINE_TIMEOUT, 9};
        ASSERT_EQ(expected.size() + 1,
                  ::DialwrightWriteLine(line.data(), units, L"Window.ClickButton.Position", arguments.data(),
                                        arguments.size(), DIALWRIGHT_WAIT_FOREVER, &fault));
        ASSERT_EQ(DIALWRIGHT_LINE_WRITTEN, fault.error);
        ASSERT_EQ(std::wstring(line.size() - units, L'#'), line.substr(units)) << "written past its room";
        if (units == 0) continue;
        ASSERT_EQ(units > expected.size() ? expected : L"", line.substr(0, line.find(L'\0')));
    }
}

TEST(WrittenLine, NamesTheArgumentAtFault) {
    DialwrightLineFault fault{DIALWRIGHT_LINE_WRITTEN, 0};
    std::array<wchar_t, 100> line{L'#'};
    const auto write = [&](const DialwrightArgument& criterion, const DialwrightArgument& argument) {
        const std::array arguments = {criterion, ::DialwrightText(L"t"), argument};
        return ::DialwrightWriteLine(line.data(), line.size(), L"Window.ClearText", arguments.data(), arguments.size(),
                                     1, &fault);
    };
    EXPECT_EQ(0U, write(::DialwrightNumber(5), ::DialwrightNumber(5)));
    EXPECT_EQ(DIALWRIGHT_LINE_NOT_AN_ARGUMENT, fault.error);
    EXPECT_EQ(0U, fault.argument);
    EXPECT_STREQ(L"", line.data());
    EXPECT_EQ(0U, write(::DialwrightText(L"c"), ::DialwrightSecret(L"PIN")));
    EXPECT_EQ(DIALWRIGHT_LINE_SECRET_PLACE, fault.error);
    EXPECT_EQ(2U, fault.argument);
    EXPECT_LT(0U, write(::DialwrightText(L"c"), ::DialwrightPair(1, 2)));
}

TEST(WrittenLine, TakesNoMoreNumbersThanARectangleHas) {
    EXPECT_THROW((void)Line(L"Window.ClearText.Position", L"c", L"t", {Numbers({1, 2, 3, 4, 5}), 8}), LineError);
    EXPECT_THROW((void)Line(std::wstring(L"Window.Close\0", 13), L"c", L"t"), LineError);
}

TEST(HiddenTexts, AreFoundAmongTheTokensThatTheLibraryReads) {
    std::mt19937 random(13);
    for (int i = 0; i < kRounds; ++i) {
        std::wstring line =
            RandomText(random) + RandomText(random) + L"\n" + RandomText(random) + L"\r" + RandomText(random);
        for (wchar_t& unit : line) unit = random() % 8 == 0 ? L'\n' : unit;
        TokenList read;
        for (const detail::Token& token : detail::Tokens(line)) read.push_back(token.text);
        ASSERT_EQ(TokenizeCommand(line), read) << ::testing::PrintToString(line);
    }
}

TEST(HiddenTexts, LeaveTheMessages) {
    std::vector<std::wstring> texts;
    detail::AddHiddenTexts(L" Window.SetText c t 1 \"a \\\"quoted\\\" word\" 5", texts);
    detail::AddHiddenTexts(L"Window.SetText c t 1 abc 5", texts);
    EXPECT_EQ(L"Invalid: *****, *****", detail::Hide(texts, LR"(Invalid: a "quoted" word, "a \"quoted\" word")"));
    EXPECT_EQ(L"nothing, abc", detail::Hide(texts, L"nothing, abc"));
}

}  // namespace
}  // namespace dialwright::testing
