#include "language/masking.h"

#include <gtest/gtest.h>

namespace dialwright {
namespace {

struct Row {
    const wchar_t* line;
    const wchar_t* logged;
};

TEST(MaskCommandForLog, ShowsTheseLinesSo) {
    const Row rows[] = {
        {LR"(Window.SetText #32770 "Sign in" 1001 "s3cret" 5000)",
         LR"(Window.SetText "#32770" "Sign in" "1001" "*****" 5000)"},
        {LR"(Window.SetText #32770 "Sign in" 1001 s3cret)", LR"(Window.SetText "#32770" "Sign in" "1001" "*****")"},
        {LR"(Window.SetText.Path c t 1.2 "two words" 7)", LR"(Window.SetText.Path "c" "t" "1.2" "*****" 7)"},
        {LR"(Window.SetText.Position c t 1,2,3,4 5 x)", LR"(Window.SetText.Position "c" "t" "1,2,3,4" "5" "*****")"},
        {LR"(Window.SetText.NonRegex c t 1 x)", LR"(Window.SetText.NonRegex "c" "t" "1" "*****")"},
        {LR"(Window.SetText.Path.NonRegex c t 1 x)", LR"(Window.SetText.Path.NonRegex "c" "t" "1" "*****")"},
        {L"Window.SetText", L"*****"},
        {L"Window.SetText 5", L"***** 5"},
        {L"Window.SetTextual x", L"Window.SetTextual \"*****\""},
        // A number without a timeout is read as the timeout.
        {LR"(Window.SetText c t 1001 4711)", LR"(Window.SetText "c" "t" "*****" 4711)"},
        {LR"(Window.SetText c t 1001 "12 monkeys")", LR"(Window.SetText "c" "t" "*****" 12 monkeys)"},
        {LR"(Window.SetText c t 1 99999999999999999999)", LR"(Window.SetText "c" "t" "1" "*****")"},
        {LR"(Window.SetText c t 1 "a\"b" 5)", LR"(Window.SetText "c" "t" "1" "*****" 5)"},
        {LR"(Window.SetText c "t\"q" 1 x)", LR"(Window.SetText "c" "t"q" "1" "*****")"},
        // Everything else stays as it is written.
        {LR"( Window.SetText c t 1 x)", LR"( Window.SetText c t 1 x)"},
        {LR"(window.settext c t 1 x)", LR"(window.settext c t 1 x)"},
        {LR"(Window.SelectDropdown.Value  c  "t" 5 "Beta")", LR"(Window.SelectDropdown.Value  c  "t" 5 "Beta")"},
        {L"", L""},
    };
    for (const Row& row : rows) EXPECT_EQ(row.logged, MaskCommandForLog(row.line));
}

}  // namespace
}  // namespace dialwright
