#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "by_hand.h"
#include "language/masking.h"
#include "language/tokenizer.h"

// Compares the tokenizer, which is one regular expression, with a plain scan by hand.
namespace dialwright {
namespace {

using dialwright::testing::ScanByHand;

std::wstring RandomLine(std::mt19937& random) {
    static constexpr std::wstring_view kAlphabet = L"\"\"\"\\\\\\  \tab1.,\n\r\x00A0\x2028\x3042\xD83D\xDE00";
    std::wstring line(random() % 14, L' ');
    for (wchar_t& c : line) c = kAlphabet[random() % kAlphabet.size()];
    return line;
}

#ifdef NDEBUG
constexpr int kLinesPerSeed = 500'000;
#else
constexpr int kLinesPerSeed = 50'000;
#endif

class TokenizerAgainstAHandScanner : public ::testing::TestWithParam<unsigned> {};

TEST_P(TokenizerAgainstAHandScanner, AgreesOnEveryRandomLine) {
    std::mt19937 random(GetParam());
    for (int i = 0; i < kLinesPerSeed; ++i) {
        const std::wstring line = RandomLine(random);
        ASSERT_EQ(ScanByHand(line), TokenizeCommand(line)) << "line: " << ::testing::PrintToString(line);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TokenizerAgainstAHandScanner, ::testing::Values(1U, 2U, 3U, 4U));

TEST(MaskingOfRandomLines, NeverShowsTheTextThatHasATimeoutBehindIt) {
    std::mt19937 random(5);
    for (int i = 0; i < kLinesPerSeed / 5; ++i) {
        const std::wstring noise = RandomLine(random);
        const std::wstring masked = MaskCommandForLog(L"Window.SetText c t 1 " + noise + L" \"S3CRET\" 2000");
        // A quote in the noise may swallow the secret into another token; then it is no longer the text.
        const TokenList tokens = ScanByHand(L"Window.SetText c t 1 " + noise + L" \"S3CRET\" 2000");
        if (tokens.size() < 2 || tokens[tokens.size() - 2] != L"S3CRET") continue;
        ASSERT_EQ(std::wstring::npos, masked.find(L"S3CRET")) << "noise: " << ::testing::PrintToString(noise);
    }
}

}  // namespace
}  // namespace dialwright
