#include "run/plan.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "check/check.h"
#include "language/masking.h"
#include "language/tokenizer.h"
#include "run/command_line.h"
#include "run/line_runner.h"
#include "run/secrets.h"
#include "run/wire.h"

namespace dialwright::tools {
namespace {

const SecretSources kSources{.secrets = {{L"PASSWORD", L"tr0ub4 \"dor\" \\ 3"}, {L"PIN", L"4711"}, {L"EMPTY", L""}}};

TEST(FillSecrets, PutsTheValueInPlaceOfAWholeTextAndATimeoutBehindIt) {
    const std::vector<std::pair<const wchar_t*, const wchar_t*>> rows = {
        {L"Window.SetText c t 1 ${secret:PIN} 500", L"Window.SetText c t 1 4711 500"},
        {L"Window.SetText c t 1 ${secret:PIN}", L"Window.SetText c t 1 4711 10000"},
        {L"  \"Window.SetText\" c t 1 \"${secret:PIN}\"", L"Window.SetText c t 1 4711 10000"},
        {L"Window.SetText.NonRegex c \"a b\" 1 ${secret:PASSWORD}",
         LR"(Window.SetText.NonRegex c "a b" 1 "tr0ub4 \"dor\" \\ 3" 10000)"},
        {L"Window.SetText.Position c t 1,2,3,4 5 ${secret:PIN}", L"Window.SetText.Position c t 1,2,3,4 5 4711 10000"},
        {L"Window.SetText c t 1 \"$${secret:PIN}\" 500", L"Window.SetText c t 1 ${secret:PIN} 500"},
        {L"Window.SetText c t 1 ${other:PIN} 500", L"Window.SetText c t 1 ${other:PIN} 500"},
        {L"Window.Close c $${", L"Window.Close c $${"},
    };
    for (const auto& [line, expected] : rows) {
        const FilledLine filled = FillSecrets(line, kSources);
        EXPECT_EQ(L"", filled.problem);
        EXPECT_EQ(expected, filled.text);
    }
}

TEST(FillSecrets, LeavesTheLibraryNothingToShow) {
    for (const wchar_t* const name : {L"PIN", L"PASSWORD"}) {
        const std::wstring line = L" Window.SetText c t 1 ${secret:" + std::wstring(name) + L"}";
        const FilledLine filled = FillSecrets(line, kSources);
        ASSERT_EQ(1U, filled.used.size());
        EXPECT_EQ(filled.used[0], TokenizeCommand(filled.text)[4]);
        EXPECT_EQ(L"Window.SetText \"c\" \"t\" \"1\" \"*****\" 10000", MaskCommandForLog(filled.text));
    }
}

TEST(FillSecrets, RefusesWhatWouldNotBeTyped) {
    const std::vector<std::pair<const wchar_t*, std::size_t>> rows = {
        {L"Window.SetText c t 1 ${secret:NONE} 500", 21},
        {L"Window.SetText c t 1 ${secret:EMPTY} 500", 21},
        {L"Window.SetText c t 1 x${secret:PIN} 500", 21},
        {L"Window.SetText c ${secret:PIN} 1 x 500", 17},
        {L"Window.Close c ${env:PATH} 500", 15},
        {L"Window.SelectDropdown.Value c t 1 ${secret:PIN}", 34},
        {L"Window.SetText c t 1 ${env:NO_SUCH_NAME_HERE}", 21},
        {L"Window.SetText c t 1 \"${secret:PIN} \" 500", 21},
        {L"Window.SetText c t 1 ${Secret:PIN} 500", 21},
        {L"Window.SetText c t 1 ${ENV:PATH} 500", 21},
    };
    for (const auto& [line, offset] : rows) {
        const FilledLine filled = FillSecrets(line, kSources);
        EXPECT_NE(L"", filled.problem) << offset;
        EXPECT_EQ(offset, filled.offset);
        EXPECT_TRUE(filled.used.empty());
    }
}

TEST(FillSecrets, ReadsTheEnvironment) {
    ::SetEnvironmentVariableW(L"DIALWRIGHT_PLAN_TEST", L"from outside");
    const std::wstring line = L"Window.SetText c t 1 ${env:DIALWRIGHT_PLAN_TEST} 500";
    EXPECT_EQ(L"Window.SetText c t 1 \"from outside\" 500", FillSecrets(line, kSources).text);
    ::SetEnvironmentVariableW(L"DIALWRIGHT_PLAN_TEST", L"two\nlines");
    EXPECT_NE(L"", FillSecrets(line, kSources).problem);
    ::SetEnvironmentVariableW(L"DIALWRIGHT_PLAN_TEST", nullptr);
}

TEST(ReadSecretValues, ReadsTextInAnyAlphabet) {
    const SecretValues values = ReadSecretValues("A=caf\xC3\xA9\nB=\n");
    EXPECT_EQ((SecretValues{{L"A", L"caf\x00E9"}, {L"B", L""}}), values);
    EXPECT_THROW((void)ReadSecretValues("A=1\nnonsense\n"), std::runtime_error);
}

TEST(Redactor, HidesAValueHoweverItIsWritten) {
    Redactor redactor;
    redactor.Hide(L"");
    redactor.Hide(L"noi");
    redactor.Hide(L"tr0ub4 \"dor\"");
    redactor.Hide(L"caf\x00E9");
    redactor.Hide(L"caf\x00E9 noir");
    EXPECT_EQ("say ***** now", redactor.Clean(std::string("say tr0ub4 \"dor\" now")));
    EXPECT_EQ("\"*****\"", redactor.Clean(std::wstring_view(LR"("tr0ub4 \"dor\"")")));
    EXPECT_EQ("*****, *****", redactor.Clean(std::wstring_view(L"caf\x00E9 noir, caf\x00E9")));
    redactor.Hide(L"tab\t\"and quote\"");
    EXPECT_EQ("[*****]", redactor.Clean(std::wstring_view(L"[tab\xFFFD\\\"and quote\\\"]")));
    EXPECT_EQ("nothing", redactor.Clean(std::string("nothing")));
}

TEST(Redactor, HidesTheBeginningOfAValueAtTheEndOfAPart) {
    Redactor redactor;
    redactor.Hide(L"correct horse");
    EXPECT_EQ("say *****", redactor.CleanPart(L"say correct ho"));
    EXPECT_EQ("say *****", redactor.CleanPart(L"say correct horse"));
    EXPECT_EQ("say *****", redactor.CleanPart(L"say corr"));
    EXPECT_EQ("say cor", redactor.CleanPart(L"say cor"));
    EXPECT_EQ("correct ho!", redactor.CleanPart(L"correct ho!"));
    EXPECT_EQ("say correct ho", redactor.Clean(std::wstring_view(L"say correct ho")));
}

TEST(MaskedLine, HidesTheTypedTextWhereTheLibrariesOwnLogShowsIt) {
    const std::vector<std::pair<const wchar_t*, const wchar_t*>> rows = {
        {L"Window.SetText c t 1 4711", L"Window.SetText c t 1 \"*****\""},
        {L"  Window.SetText c t 1 \"two words\" 500 \r", L"Window.SetText c t 1 \"*****\" 500"},
        {L"\"Window.SetText.Path\" c t 2.1 x", L"\"Window.SetText.Path\" c t 2.1 \"*****\""},
        {L"Window.SetText c t 1 two words", L"Window.SetText c t 1 \"*****\""},
        {L"Window.SetText c t 1 two words here 500", L"Window.SetText …"},
        {L"Window.SetTxet c t 1 secret", L"Window.SetTxet …"},
        {L"Window.Close c t", L"Window.Close c t"},
        {L"Nonsense", L"Nonsense"},
        {L" ", L""},
    };
    for (const auto& [line, expected] : rows) EXPECT_EQ(expected, MaskedLine(line));
}

TEST(PlanScript, NumbersTheLinesThatHoldACommand) {
    std::vector<PlanProblem> problems;
    const SourceText source =
        ReadSource("\xEF\xBB\xBF# one\r\n\r\nWindow.Close a b\r\n \nWindow.Close c d\n#\nWindow.Close e f");
    const PlannedFile all = PlanScript("f", source, {}, {}, problems);
    ASSERT_EQ(3U, all.lines.size());
    EXPECT_EQ(3U, all.lines[0].number);
    EXPECT_EQ(L"Window.Close a b", all.lines[0].shown);
    EXPECT_EQ(7U, all.lines[2].number);
    const PlannedFile some = PlanScript("f", source, {.from = 4, .to = 5}, {}, problems);
    ASSERT_EQ(1U, some.lines.size());
    EXPECT_EQ(5U, some.lines[0].number);
    EXPECT_TRUE(problems.empty());
}

TEST(PlanScript, TellsEveryProblemWithItsPlace) {
    std::vector<PlanProblem> problems;
    const SourceText source = ReadSource("Window.Close a ${env:X}\nWindow.SetText c t 1 ${secret:Y}\n");
    (void)PlanScript("f.txt", source, {}, {}, problems);
    ASSERT_EQ(2U, problems.size());
    EXPECT_EQ(1U, problems[0].line);
    EXPECT_EQ(16U, problems[0].column);
    EXPECT_EQ("f.txt", problems[1].file);
    EXPECT_EQ(2U, problems[1].line);
}

TEST(CommandLine, KnowsHowLongTheLibraryWaits) {
    EXPECT_EQ(10000U, ReadCommandLine(L"Window.Close c t").TimeoutMs());
    EXPECT_EQ(10000U, ReadCommandLine(L"Window.Close c t 0").TimeoutMs());
    EXPECT_EQ(250U, ReadCommandLine(L"Window.Close c t 250").TimeoutMs());
    EXPECT_EQ(4294967295U, ReadCommandLine(L"Window.Close c t -1").TimeoutMs());
    EXPECT_EQ(10000U, ReadCommandLine(L"Window.SetText c t 1 250").TimeoutMs());
}

TEST(LimitOf, IsTheTimeoutAndSomeGraceAndTimeForEachCharacter) {
    using std::chrono::milliseconds;
    EXPECT_EQ(milliseconds(5250), LimitOf(ReadCommandLine(L"Window.Close c t 250")));
    EXPECT_EQ(milliseconds(15000), LimitOf(ReadCommandLine(L"Window.Close c t")));
    EXPECT_EQ(milliseconds(5290), LimitOf(ReadCommandLine(L"Window.SetText c t 1 four 250")));
}

TEST(SplitProgram, PartsAProgramFromItsArguments) {
    const std::vector<std::tuple<const wchar_t*, const wchar_t*, const wchar_t*>> rows = {
        {L"notepad.exe", L"notepad.exe", L""},
        {L"notepad.exe  my file.txt", L"notepad.exe", L"my file.txt"},
        {L"\"C:\\Program Files\\x.exe\" -a b", L"\"C:\\Program Files\\x.exe\"", L"-a b"},
        {L"\"C:\\x.exe", L"\"C:\\x.exe", L""},
        {L"  notepad.exe x", L"notepad.exe", L"x"},
        {L" ", L"", L""},
        {L"", L"", L""},
    };
    for (const auto& [text, program, arguments] : rows) {
        const ProgramAndArguments split = SplitProgram(text);
        EXPECT_EQ(program, split.program);
        EXPECT_EQ(arguments, split.arguments);
    }
}

TEST(Answer, IsReadBackAndNothingElsePassesForOne) {
    const Answer sent{.result = 1, .microseconds = 1234567890123, .value = 7};
    const Answer read = ReadAnswer("w0rd", FormatAnswer("w0rd", sent)).value_or(Answer());
    EXPECT_EQ(1, read.result);
    EXPECT_EQ(1234567890123U, read.microseconds);
    EXPECT_EQ(7U, read.value);
    for (const char* const line : {"", "w0rd", "w0rd 1", "w0rd 1 2", "word 1 2 3", "Window::Window: w0rd 1 2 3"}) {
        EXPECT_FALSE(ReadAnswer("w0rd", line)) << line;
    }
}

}  // namespace
}  // namespace dialwright::tools
