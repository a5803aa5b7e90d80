#include "language/criterion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/stack.h"

#include "support/stack_limit.h"

namespace dialwright {
namespace {

std::wstring Repeat(const std::wstring& text, std::size_t times) {
    std::wstring repeated;
    for (std::size_t i = 0; i < times; ++i) repeated += text;
    return repeated;
}

std::wstring Nested(const std::wstring& open, std::size_t depth) {
    return Repeat(open, depth) + L"x" + Repeat(L")", depth);
}

constexpr std::size_t kAmpleStack = std::size_t{1024} * 1024;

std::wregex Compile(const std::wstring& pattern) { return CompileCriterion(pattern, kAmpleStack); }

std::optional<std::regex_constants::error_type> ErrorOf(const std::wstring& pattern) {
    try {
        (void)Compile(pattern);
        return std::nullopt;
    } catch (const std::regex_error& error) {
        return error.code();
    }
}

constexpr auto kComplexity = std::regex_constants::error_complexity;

TEST(Criterion, MustMatchTheWholeTextWhateverItsCase) {
    EXPECT_TRUE(MatchesWhole(L"Notes - Summary", Compile(L"note.*")));
    EXPECT_FALSE(MatchesWhole(L"Notes - Summary", Compile(L"Summary")));
    EXPECT_FALSE(MatchesWhole(L"Notes - Summary", Compile(L"Notes")));
    EXPECT_TRUE(MatchesWhole(L"", Compile(L".*")));
    EXPECT_TRUE(MatchesWhole(L"", Compile(L"")));
    EXPECT_FALSE(MatchesWhole(L"x", Compile(L"")));
}

TEST(Criterion, ContainsOrEqualsLiterallyAndMindsCase) {
    EXPECT_TRUE(ContainsLiteral(L"Notes - Summary", L"Note"));
    EXPECT_TRUE(ContainsLiteral(L"Notes - Summary", L""));
    EXPECT_FALSE(ContainsLiteral(L"Notes - Summary", L"note"));
    EXPECT_TRUE(ContainsLiteral(L"a.*b", L".*"));
    EXPECT_TRUE(EqualsLiteral(L"Edit", L"Edit"));
    EXPECT_FALSE(EqualsLiteral(L"Edit", L"edit"));
    EXPECT_FALSE(EqualsLiteral(L"Edit", L"Edi"));
}

TEST(Criterion, RefusesInvalidExpressions) {
    for (const wchar_t* pattern : {L"(", L"[a", L"*a", L"a{2,1}", L"\\", L"(?<x>a)", L"a**", L")"}) {
        EXPECT_TRUE(ErrorOf(pattern).has_value()) << ::testing::PrintToString(pattern);
    }
}

TEST(Criterion, RefusesAPatternOfMoreThan4096Units) {
    EXPECT_EQ(std::nullopt, ErrorOf(std::wstring(4096, L'x')));
    EXPECT_EQ(kComplexity, ErrorOf(std::wstring(4097, L'x')));
    EXPECT_EQ(kComplexity, ErrorOf(std::wstring(18'000, L'x')));
}

TEST(Criterion, RefusesMoreThan500NestedGroups) {
    EXPECT_EQ(std::nullopt, ErrorOf(Nested(L"(", 500)));
    EXPECT_EQ(kComplexity, ErrorOf(Nested(L"(", 501)));
    EXPECT_EQ(kComplexity, ErrorOf(Nested(L"(?:", 501)));
    EXPECT_EQ(kComplexity, ErrorOf(Nested(L"((?:", 251)));
}

TEST(Criterion, CountsOnlyGroupsThatAreOpenAtOnce) {
    EXPECT_EQ(std::nullopt, ErrorOf(Repeat(L"(x)", 600)));
    EXPECT_EQ(std::nullopt, ErrorOf(Repeat(L"\\(", 600)));
    EXPECT_EQ(std::nullopt, ErrorOf(L"[" + Repeat(L"(", 600) + L"]"));
    EXPECT_EQ(kComplexity, ErrorOf(L"[(\\]]" + Nested(L"(", 501)));
}

/// Patterns of the shapes that take most stack.
std::vector<std::wstring> CostlyPatterns(std::size_t units, std::size_t groups) {
    return {
        std::wstring(units, L'x'),
        Repeat(L".", units),
        Repeat(L"\\w", units / 2),
        Repeat(L"x|", units / 2),
        Repeat(L"x*", units / 2),
        Repeat(L"x?", units / 2),
        Repeat(L"[ab]", units / 4),
        Repeat(L"(x)", units / 3),
        Repeat(L"x{1,2}", units / 6),
        Nested(L"(", groups),
        Nested(L"(?:", groups),
        Nested(L"(?=", groups) + L"x",
        Repeat(L"|", units),
        Repeat(L"()", units / 2),
        Repeat(L"(|)", units / 3),
        Nested(L"(?!", groups),
        Nested(L"(a|", groups),
        Repeat(L"(", groups) + L"x" + Repeat(L")?", groups),
        std::wstring(units - 1, L'x') + L"(",  // found out to be invalid at its very end
        L"(?=" + std::wstring(units - 4, L'x') + L")",
    };
}

/// What became of a pattern on a thread with so little stack: it ran to its end, refused or not, or the thread died.
enum class Fate : std::uint8_t { Died, Refused, Ran };

Fate FateOf(const std::wstring& pattern, std::size_t stackBytes) {
    Fate fate = Fate::Died;
    testing::RunWithStackLeft(stackBytes, [&] {
        Fate reached = Fate::Ran;
        try {
            (void)MatchesWhole(L"xxxxxxxxxxxxxxxx", CompileCriterion(pattern, StackBytesLeft()));
        } catch (const std::regex_error& error) {
            if (error.code() == kComplexity) reached = Fate::Refused;
        }
        fate = reached;  // only now is the expression destroyed
    });
    return fate;
}

TEST(Criterion, NeverOverflowsTheStackWhateverItsSizeIs) {
    for (const std::size_t kibibytes : {64U, 128U, 256U, 512U}) {
        for (const std::size_t units : {100U, 1000U, 2000U, 4096U}) {
            for (const std::wstring& pattern : CostlyPatterns(units, std::min<std::size_t>(units / 4, 500))) {
                EXPECT_NE(Fate::Died, FateOf(pattern, kibibytes * 1024))
                    << kibibytes << " KiB, " << units << " units of " << ::testing::PrintToString(pattern.substr(0, 8));
            }
        }
    }
}

bool IsAccepted(const std::wstring& pattern, std::size_t stackBytes) {
    try {
        (void)CompileCriterion(pattern, stackBytes);
        return true;
    } catch (const std::regex_error& error) {
        return error.code() != kComplexity;
    }
}

using Shape = std::wstring (*)(std::size_t size);

/// The largest pattern of a shape that is accepted with so much stack.
std::wstring LargestAccepted(Shape shape, std::size_t stackBytes) {
    std::size_t accepted = 0;
    std::size_t refused = kMostPatternUnits + 1;
    while (refused - accepted > 1) {
        const std::size_t middle = (accepted + refused) / 2;
        (IsAccepted(shape(middle), stackBytes) ? accepted : refused) = middle;
    }
    return shape(accepted);
}

TEST(Criterion, FitsTheStackWithTheLargestPatternThatIsAccepted) {
    const Shape shapes[] = {
        [](std::size_t size) { return std::wstring(size, L'x'); },
        [](std::size_t size) { return std::wstring(size, L'|'); },
        [](std::size_t size) { return Repeat(L"x|", size); },
        [](std::size_t size) { return Repeat(L"x*", size); },
        [](std::size_t size) { return Repeat(L"x{1,2}", size); },
        [](std::size_t size) { return Repeat(L"()", size); },
        [](std::size_t size) { return Repeat(L"(|)", size); },
        [](std::size_t size) { return Repeat(L"(x)*", size); },
        [](std::size_t size) { return Repeat(L"^", size); },
        [](std::size_t size) { return Repeat(L"\\b", size); },
        [](std::size_t size) { return Repeat(L"[^ab]?", size); },
        [](std::size_t size) { return Repeat(L"(?=x)", size); },
        [](std::size_t size) { return std::wstring(size, L'x') + L"("; },
        [](std::size_t size) { return Nested(L"(", size); },
        [](std::size_t size) { return Nested(L"(?=", size) + L"x"; },
        [](std::size_t size) { return Nested(L"(?!", size); },
        [](std::size_t size) { return Nested(L"((a|b)*", size / 2); },
        [](std::size_t size) { return Repeat(L"(", size) + L"x" + Repeat(L")*", size); },
    };
    // What the thread itself uses before the pattern is looked at.
    constexpr std::size_t kUsed = 2048;
    std::size_t ran = 0;
    std::size_t tried = 0;
    for (const std::size_t kibibytes : {64U, 128U, 192U, 256U, 384U, 512U, 900U}) {
        for (const Shape shape : shapes) {
            const std::wstring pattern = LargestAccepted(shape, kibibytes * 1024 - kUsed);
            const Fate fate = FateOf(pattern, kibibytes * 1024);
            ran += fate == Fate::Ran ? 1 : 0;
            ++tried;
            EXPECT_NE(Fate::Died, fate) << kibibytes << " KiB, " << pattern.size() << " units of "
                                        << ::testing::PrintToString(pattern.substr(0, 8));
        }
    }
    // Refused is also what explodes in the match; most must have been compiled, matched and destroyed.
    EXPECT_GT(ran, tried / 2);
}

TEST(Criterion, RunsWhateverThePatternsOfPeopleAreOnASmallStack) {
    EXPECT_EQ(Fate::Ran, FateOf(std::wstring(2000, L'x'), std::size_t{256} * 1024));
    EXPECT_EQ(Fate::Ran, FateOf(Nested(L"(", 200), std::size_t{256} * 1024));
    EXPECT_EQ(Fate::Ran, FateOf(std::wstring(4096, L'x'), std::size_t{512} * 1024));
    EXPECT_EQ(Fate::Ran, FateOf(Nested(L"(", 500), std::size_t{640} * 1024));
}

TEST(Criterion, EndsAnExplodingMatchWithItsComplexityError) {
    const auto expression = Compile(L"(a+)+b");
    const std::wstring title(40, L'a');
    EXPECT_THROW((void)MatchesWhole(title.c_str(), expression), std::regex_error);
}

}  // namespace
}  // namespace dialwright
