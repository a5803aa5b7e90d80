#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "by_hand.h"
#include "language/commands.h"
#include "language/masking.h"
#include "language/numbers.h"
#include "language/splitting.h"
#include "language/tokenizer.h"

// Random texts, each answer compared with one that is reached in another way.
namespace dialwright {
namespace {

using dialwright::testing::MaskFromTheBack;
using dialwright::testing::ReadNumberByHand;

constexpr int kTexts = 100'000;

std::wstring RandomText(std::mt19937& random, std::wstring_view alphabet) {
    std::wstring text(random() % 16, L' ');
    for (wchar_t& c : text) c = alphabet[random() % alphabet.size()];
    return text;
}

std::vector<std::wstring> ReadByStream(const std::wstring& text, wchar_t delimiter) {
    std::vector<std::wstring> pieces;
    std::wistringstream stream(text);
    for (std::wstring piece; std::getline(stream, piece, delimiter);) pieces.push_back(piece);
    return pieces;
}

TEST(RandomComparison, SplittingAgreesWithTheStandardLineReader) {
    std::mt19937 random(1);
    for (int i = 0; i < kTexts; ++i) {
        const std::wstring text = RandomText(random, L",,..12 \t\r\n\nab\x3042");
        ASSERT_EQ(ReadByStream(text, L','), SplitByComma(text)) << ::testing::PrintToString(text);
        ASSERT_EQ(ReadByStream(text, L'.'), SplitHierarchyPath(text)) << ::testing::PrintToString(text);
        std::vector<std::wstring> lines = ReadByStream(text, L'\n');
        std::erase_if(
            lines, [](const std::wstring& line) { return line.find_first_not_of(L" \t\r\n") == std::wstring::npos; });
        ASSERT_EQ(lines, SplitScriptLines(text)) << ::testing::PrintToString(text);
    }
}

TEST(RandomComparison, NumbersAgreeWithReadingByHand) {
    std::mt19937 random(2);
    for (int i = 0; i < kTexts; ++i) {
        const std::wstring text = RandomText(random, L"0123456789012345678901234567890123456789-+ x");
        const auto byHand = ReadNumberByHand(text);
        const bool fits = byHand && byHand->IsWithin(1ULL << 31U, (1ULL << 31U) - 1);
        int value = 0;
        ASSERT_EQ(fits, TryParseInt(text, &value)) << ::testing::PrintToString(text);
        if (fits) {
            const auto magnitude = static_cast<std::int64_t>(byHand->magnitude);
            ASSERT_EQ(byHand->isNegative ? -magnitude : magnitude, value);
        }
        ASSERT_EQ(byHand.has_value(), ReadsAsInteger(text)) << ::testing::PrintToString(text);
    }
}

TEST(RandomComparison, TheSuffixIsWhatTheNameEndsWith) {
    std::mt19937 random(3);
    const std::wstring suffix = L".NonRegex";
    for (int i = 0; i < kTexts; ++i) {
        const std::wstring name = RandomText(random, L".Nx") + (random() % 2 == 0 ? suffix : L"");
        const std::size_t at = name.rfind(suffix);
        const bool ends = at != std::wstring::npos && at > 0 && at + suffix.size() == name.size();
        bool useRegex = ends;
        ASSERT_EQ(ends ? name.substr(0, at) : name, StripNonRegexSuffix(name, &useRegex));
        ASSERT_EQ(!ends, useRegex);
    }
}

TEST(RandomComparison, MaskingAgreesWithAWayFromTheBack) {
    std::mt19937 random(4);
    for (int i = 0; i < kTexts / 4; ++i) {
        const std::wstring line = L"Window.SetText" + RandomText(random, L"\"\"\\  19ab\x3042");
        ASSERT_EQ(MaskFromTheBack(line), MaskCommandForLog(line)) << ::testing::PrintToString(line);
    }
}

}  // namespace
}  // namespace dialwright
