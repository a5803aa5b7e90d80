#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "check/check.h"
#include "language/commands.h"
#include "platform/text_encoding.h"
#include "script/dialog_script_manager.h"
#include "support/log_capture.h"

namespace dialwright::tools {
namespace {

/// Scripts that are often nearly right.
class RandomScripts {
public:
    explicit RandomScripts(unsigned seed) : random(seed) {}

    std::wstring Next() {
        std::wstring script;
        const int lines = Below(4);
        for (int i = 0; i < lines; ++i) script += Line() + (Below(8) == 0 ? L"\r\n" : L"\n");
        return script;
    }

private:
    int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    std::wstring Line() {
        switch (Below(12)) {
            case 0: return L"";
            case 1: return L" \t\v";
            case 2: return L"  # a comment";
            case 3: return Junk();
            default: break;
        }
        const CommandSpec& spec = kCommands[static_cast<std::size_t>(Below(kCommandCount))];
        std::wstring line = Below(10) == 0 ? L" " : L"";
        line += spec.name;
        if (Below(4) == 0) line += L".NonRegex";
        if (Below(20) == 0) line += L"x";
        const int tokens = static_cast<int>(spec.minTokens) - 1 + Below(3) - (Below(6) == 0 ? 1 : 0);
        for (int i = 0; i < tokens; ++i) line += L" " + Token();
        return line;
    }

    std::wstring Token() {
        constexpr const wchar_t* kTokens[] = {
            L"c", L"\"two words\"", L"12",     L"\"\"",     L"\"a\\\"b\"", L"1,2,3,4", L"0",  L"\"open",
            L"#", L"2.1",           L"\x3042", L"\"\\\\\"", L"\v",         L"\"",      L"-1", L".*"};
        return kTokens[Below(static_cast<int>(std::size(kTokens)))];
    }

    std::wstring Junk() {
        constexpr std::wstring_view kUnits = L"Wa.\"\\ \t\v#1,\x00A0\x3042";
        std::wstring junk;
        for (int length = Below(12); length > 0; --length) {
            junk.push_back(kUnits[static_cast<std::size_t>(Below(static_cast<int>(kUnits.size())))]);
        }
        return junk;
    }

    std::mt19937 random;
};

bool HasRefusal(const std::vector<Finding>& findings) {
    return std::ranges::any_of(findings, [](const Finding& finding) { return finding.code.starts_with("DW1"); });
}

class CheckAgreement : public ::testing::TestWithParam<unsigned> {};

TEST_P(CheckAgreement, RefusesExactlyWhatTheLibraryRefuses) {
    const testing::LogCapture quiet;
    RandomScripts scripts(GetParam());
    int refused = 0;
    constexpr int kRounds = 3000;
    for (int round = 0; round < kRounds; ++round) {
        const SourceText source = ReadSource(ToUtf8(scripts.Next()));
        const std::wstring pure = PureScript(source);
        const int valid = DialogScriptManager().ValidateScript(pure.c_str());
        const bool refuses = HasRefusal(CheckScript(source));
        ASSERT_EQ(valid == 0, refuses) << ToUtf8(pure);
        if (refuses) ++refused;
    }
    // Both kinds came in numbers.
    EXPECT_GT(refused, kRounds / 10);
    EXPECT_LT(refused, kRounds * 9 / 10);
}

INSTANTIATE_TEST_SUITE_P(Seeds, CheckAgreement, ::testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace dialwright::tools
