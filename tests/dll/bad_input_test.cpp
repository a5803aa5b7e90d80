#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "library.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/stack_limit.h"

#include <psapi.h>

namespace dialwright::testing {
namespace {

constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;
/// Quoted text is masked and logged: seconds for a megabyte, and many times that under an emulator.
constexpr std::size_t kLong = kMegabyte / 8;

TEST(BadInput, FailsCleanlyThroughEveryExport) {
    const std::wstring inputs[] = {
        L"",
        L" ",
        L"\"",
        L"\"\"",
        L"\\",
        L"\xD83D \xDE00",
        std::wstring(kMegabyte, L'x'),
        L"\"" + std::wstring(kLong, L'x'),
        L"Window.Close c \"" + std::wstring(kLong, L'x') + L"\" 1",
        L"Window.Close.NonRegex c \"" + std::wstring(kLong, L'x') + L"\" 1",
        L"Window.Close c (((((( 1",
        L"Window.Close c (x+x+)+y 1",
        L"Window.Close " + std::wstring(18'000, L'x') + L" t 1",
        L"Window.Close c " + std::wstring(5'000, L'(') + std::wstring(5'000, L')') + L" 1",
    };
    for (const std::wstring& input : inputs) {
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(input)) << input.size();
        EXPECT_EQ(0, ExecuteScript(input)) << input.size();
        EXPECT_FALSE(log.Text().empty());
        const int valid = ValidateCommand(input);
        EXPECT_EQ(valid, ValidateScript(input)) << input.size();
        EXPECT_TRUE(valid == 0 || valid == 1);
    }
}

TEST(BadInput, ReachesAWindowAndHarmsNothing) {
    const PracticeWindow target(kPlainClass);
    const std::pair<const wchar_t*, const wchar_t*> commands[] = {
        {L"Window.ClickButton.Path", L"99999999999 300"},
        {L"Window.ClickButton.Path", L"1..2 300"},
        {L"Window.ClickButton.Path", L"-2147483648 300"},
        {L"Window.ClickButton.Position", L"-2147483648,2147483647,-2147483648,2147483647 2147483647 300"},
        {L"Window.ClickButton.Position", L"0,0,0,0 -2147483648 300"},
        {L"Window.SelectDropdown.Index", L"51 2147483647 300"},
        {L"Window.SetCheckbox", L"45 1 300"},
        {L"Window.ClearText", L"-2147483648 300"},
    };
    for (const auto& [command, arguments] : commands) {
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(target.Line(command, arguments))) << ::testing::PrintToString(arguments);
    }
    const LogCapture log;
    const int moved = ExecuteCommand(target.Line(L"Window.Move", L"-2147483648,2147483647 -1,2147483647 300"));
    EXPECT_TRUE(moved == 0 || moved == 1);
    EXPECT_EQ(1, ExecuteCommand(target.Line(L"Window.ClearText", L"15 20000")));
}

TEST(BadInput, GrowsNoMemoryByWhatItRefuses) {
    const auto privateBytes = [] {
        PROCESS_MEMORY_COUNTERS counters{};
        counters.cb = sizeof counters;
        ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
        return static_cast<std::int64_t>(counters.PagefileUsage);
    };
    const PracticeWindow target(kPlainClass, {}, std::wstring(24, L'a') + UniqueTitle());
    const auto refuse = [](int times) {
        const LogCapture log;
        for (int i = 0; i < times; ++i) {
            (void)ExecuteCommand(L"Window.Close PracticeTarget (a+)+b 5000");  // thrown within an enumeration
            (void)ExecuteCommand(L"Window.Close Cls ( 5000");
            (void)ExecuteCommand(L"Window.ClickButton c t abc");
            (void)ValidateScript(L"Window.SetText c t 1 text\nWindow.Foo");
        }
    };
    refuse(50);
    // A heap may take a piece from the system once; what leaks takes one each time.
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    for (int i = 0; i < 3; ++i) {
        const std::int64_t before = privateBytes();
        refuse(200);
        least = std::min(least, privateBytes() - before);
    }
    EXPECT_LT(least, std::int64_t{128} * 1024);
}

TEST(BadInput, NeedsLittleStack) {
    RunWithStackLeft(std::size_t{256} * 1024, [] {
        const LogCapture log;
        EXPECT_EQ(0, ExecuteCommand(L"Window.Close c \"" + std::wstring(kMegabyte, L'x') + L"\" 1"));
        EXPECT_EQ(0,
                  ExecuteCommand(L"Window.Close c " + std::wstring(5'000, L'(') + std::wstring(5'000, L')') + L" 1"));
        EXPECT_EQ(0, ExecuteCommand(L"Window.Close c " + std::wstring(4'096, L'x') + L" 1"));
        EXPECT_EQ(0, ValidateCommand(std::wstring(kMegabyte, L'"')));
    });
}

TEST(BadInput, NeverHarmsByRandomLines) {
    static constexpr std::wstring_view kPieces[] = {
        L"Window.Close", L"Window.SetText", L"Window.Move", L".NonRegex", L"\"", L"\\",  L" ", L"c", L"(", L"[",
        L"-1",           L"0,0,0,0",        L"\xD83D",      L"\x3042",    L"\n", L"%s%n"};
    std::mt19937 random(1);
    const LogCapture log;
    for (int i = 0; i < 3000; ++i) {
        std::wstring line;
        for (std::size_t piece = random() % 12; piece > 0; --piece) line += kPieces[random() % std::size(kPieces)];
        const int valid = ValidateCommand(line);
        ASSERT_TRUE(valid == 0 || valid == 1);
        ASSERT_TRUE(ValidateScript(line) <= 1);
        if (valid == 0) {
            ASSERT_EQ(0, ExecuteCommand(line)) << ::testing::PrintToString(line);
        }
    }
}

}  // namespace
}  // namespace dialwright::testing
