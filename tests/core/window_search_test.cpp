#include "window/window_search.h"

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <vector>

#include "language/criterion.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/stack_limit.h"
#include "support/windows_of_others.h"
#include "window/enumeration.h"
#include "window/window.h"

namespace dialwright {
namespace {

using testing::Hex;
using testing::kPlainClass;
using testing::LogCapture;
using testing::PracticeWindow;

using Messages = std::vector<std::string>;

std::string Narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

std::string Start(const std::wstring& className, const std::wstring& title, const std::string& timeout,
                  const std::string& regex) {
    return "Window::Window: Initializing window search:\nClass:    " + Narrow(className) +
           "\nTitle:    " + Narrow(title) + "\nTimeout:  " + timeout + "ms\nRegex:    " + regex + "\nPID:      Any";
}

std::string Found(HWND hwnd) {
    return "Window::Window: Window found successfully. Parent Window Handle: 0x" + Hex(hwnd);
}

TEST(WindowSearch, FindsByWholeTitleAndClassWhateverTheirCase) {
    const PracticeWindow target(kPlainClass);
    const std::wstring pattern = L"pRACTICE.*" + target.Title().substr(8);
    const LogCapture log;
    const Window window(L"practice(target)", pattern, 5000, true);
    EXPECT_EQ(target.Handle(), window.hwndWindow);
    EXPECT_EQ((Messages{Start(L"practice(target)", pattern, "5000", "Yes"), Found(target.Handle())}), log.Messages());
}

TEST(WindowSearch, FindsByPartOfTheTitleAndTheVeryClassWhenLiteral) {
    const PracticeWindow target(kPlainClass);
    const std::wstring part = target.Title().substr(2, target.Title().size() - 4);
    const LogCapture log;
    EXPECT_EQ(target.Handle(), Window(kPlainClass, part, 5000, false).hwndWindow);
    EXPECT_EQ((Messages{Start(kPlainClass, part, "5000", "No"), Found(target.Handle())}), log.Messages());
}

TEST(WindowSearch, FindsHiddenWindowsToo) {
    const PracticeWindow target(kPlainClass, {L"--hidden"});
    const LogCapture log;
    EXPECT_EQ(target.Handle(), Window(kPlainClass, target.Title(), 5000, true).hwndWindow);
}

TEST(WindowSearch, MatchesOnlyTheFirst255CharactersOfATitle) {
    const std::wstring title = testing::UniqueTitle() + L" " + std::wstring(300, L'x');
    const PracticeWindow target(kPlainClass, {}, title);
    const LogCapture log;
    EXPECT_EQ(target.Handle(), Window(kPlainClass, title.substr(0, 255), 5000, true).hwndWindow);
    EXPECT_EQ(nullptr, Window(kPlainClass, title, 300, true).hwndWindow);
    EXPECT_EQ(nullptr, Window(kPlainClass, title.substr(0, 256), 300, false).hwndWindow);
    EXPECT_EQ(target.Handle(), Window(kPlainClass, title.substr(0, 255), 5000, false).hwndWindow);
}

TEST(WindowSearch, TakesTitlesOfAnyLanguageAndWithPercentSigns) {
    const std::wstring title = testing::UniqueTitle() + L" \x65E5\x672C \xD83D\xDE00 100% %s%n";
    const PracticeWindow target(kPlainClass, {}, title);
    const LogCapture log;
    EXPECT_EQ(target.Handle(), Window(kPlainClass, title, 5000, false).hwndWindow);
    EXPECT_NE(std::string::npos, log.Text().find("\xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80 100% %s%n\n"));
}

TEST(WindowSearch, FindsAWindowThatComesLater) {
    PracticeWindow target(kPlainClass);
    const std::wstring later = testing::UniqueTitle();
    const auto begin = std::chrono::steady_clock::now();
    target.DoAfter(400, L"open LatePractice " + later);
    const LogCapture log;
    const Window window(L"LatePractice", later, 20000, true);
    EXPECT_NE(nullptr, window.hwndWindow);
    EXPECT_GE(ElapsedMs(begin), 390);
    EXPECT_LT(ElapsedMs(begin), 400 + 3000);
    EXPECT_EQ(2U, log.Messages().size());
}

int textReads = 0;

/// A window of this very thread is asked for its text by message, so it sees each look of the search.
LRESULT CALLBACK CountTextReads(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETTEXT) ++textReads;
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

TEST(WindowSearch, LooksEvery100Milliseconds) {
    static_assert(kPollIntervalMs == 100);
    WNDCLASSW definition{};
    definition.lpfnWndProc = &CountTextReads;
    definition.lpszClassName = L"CountsTextReads";
    ::RegisterClassW(&definition);
    const HWND counter = ::CreateWindowW(definition.lpszClassName, L"counter", WS_OVERLAPPED, 0, 0, 10, 10, nullptr,
                                         nullptr, nullptr, nullptr);
    textReads = 0;
    const LogCapture log;
    EXPECT_EQ(nullptr, Window(kPlainClass, L"no such window", 1050, true).hwndWindow);
    EXPECT_GE(textReads, 2);  // fewer than eleven where the machine is busy
    EXPECT_LE(textReads, 11);
    ::DestroyWindow(counter);
}

TEST(WindowSearch, GivesUpAfterItsTimeoutAndSaysTheConfiguredOne) {
    const LogCapture log;
    const Window window(kPlainClass, L"no such window", 250, true);
    EXPECT_EQ(nullptr, window.hwndWindow);
    EXPECT_EQ("Window::Window: Window search failed after 250ms", log.Messages().back());
    EXPECT_GE(ElapsedMs(window.searchStart), 250);
    EXPECT_LT(ElapsedMs(window.searchStart), 250 + 2000);
}

TEST(WindowSearch, Reads0As10000Milliseconds) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    const Window window(kPlainClass, target.Title(), 0, true);
    EXPECT_EQ(10000U, window.timeoutMs);
    EXPECT_EQ(Start(kPlainClass, target.Title(), "10000", "Yes"), log.Messages().front());
}

TEST(WindowSearch, KeepsTheLargestTimeoutAndPrintsItAsMinus1) {
    const PracticeWindow target(kPlainClass);
    const LogCapture log;
    const Window window(kPlainClass, target.Title(), 0xFFFFFFFF, true);
    EXPECT_EQ(target.Handle(), window.hwndWindow);
    EXPECT_EQ(4294967295U, window.timeoutMs);
    EXPECT_TRUE(window.HasTimeLeft());
    EXPECT_EQ(Start(kPlainClass, target.Title(), "-1", "Yes"), log.Messages().front());
}

TEST(WindowSearch, LogsItsStartBeforeAnInvalidExpressionThrows) {
    for (const auto& [className, title] : {std::pair(L"Cls", L"("), std::pair(L"[", L"Title")}) {
        const LogCapture log;
        EXPECT_THROW(Window(className, title, 5000, true), std::regex_error);
        EXPECT_EQ((Messages{Start(className, title, "5000", "Yes")}), log.Messages());
    }
}

TEST(WindowSearch, CompilesTheTitleBeforeTheClass) {
    const LogCapture log;
    try {
        const Window window(L"[", L"(", 5000, true);
        ADD_FAILURE() << "no error";
    } catch (const std::regex_error& error) {
        EXPECT_EQ(std::regex_constants::error_paren, error.code());
    }
}

TEST(WindowSearch, ReportsAnExplodingExpressionSoon) {
    const PracticeWindow target(kPlainClass, {}, std::wstring(60, L'a') + testing::UniqueTitle());
    const LogCapture log;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THROW(Window(kPlainClass, L"(a+)+b", 20000, true), std::regex_error);
    EXPECT_LT(ElapsedMs(begin), 10000);
    EXPECT_EQ(1U, log.Messages().size());
}

TEST(WindowSearch, RefusesALargePatternButNoLargeLiteral) {
    const LogCapture log;
    testing::RunWithStackLeft(std::size_t{256} * 1024, [] {
        EXPECT_THROW(Window(L"Cls", std::wstring(18'000, L'x'), 5000, true), std::regex_error);
        EXPECT_EQ(nullptr, Window(L"Cls", std::wstring(2000, L'x'), 1, true).hwndWindow);
        EXPECT_EQ(nullptr, Window(L"Cls", std::wstring(18'000, L'x'), 1, false).hwndWindow);
    });
}

constexpr std::size_t kAmpleStack = std::size_t{1024} * 1024;

// The parameter of a callback is its guarded context, as in the search itself.
GuardedContext<WindowSearchContext> SearchFor(const std::wstring& className, const std::wstring& title) {
    GuardedContext<WindowSearchContext> search;
    search.className = className;
    search.title = title;
    return search;
}

TEST(EnumTopLevelProc, StopsAtAMatchAndRemembersIt) {
    const PracticeWindow target(kPlainClass);
    auto search = SearchFor(kPlainClass, target.Title());
    EXPECT_EQ(FALSE, EnumTopLevelProc(target.Handle(), CallbackParameter(search)));
    EXPECT_EQ(target.Handle(), search.foundWindow);
}

struct MissRow {
    const wchar_t* what;
    const wchar_t* className;
    std::wstring title;
    bool useRegex;
};

TEST(EnumTopLevelProc, PassesAWindowThatMatchesOnlyInPart) {
    const PracticeWindow target(kPlainClass);
    const std::wstring& whole = target.Title();
    const MissRow rows[] = {
        {L"regex, part of the title", kPlainClass, whole.substr(2), true},
        {L"regex, part of the class", L"Practice", whole, true},
        {L"regex, another class", L"Edit", whole, true},
        {L"literal, other case of the title", kPlainClass, L"p" + whole.substr(1), false},
        {L"literal, other case of the class", L"practicetarget", whole, false},
        {L"literal, part of the class", L"Practice", whole, false},
        {L"literal, a pattern", kPlainClass, whole.substr(0, 4) + L".*", false},
    };
    for (const MissRow& row : rows) {
        auto search = SearchFor(row.className, row.title);
        search.useRegex = row.useRegex;
        if (row.useRegex) {
            search.titleRegex = CompileCriterion(row.title, kAmpleStack);
            search.classRegex = CompileCriterion(row.className, kAmpleStack);
        }
        EXPECT_EQ(TRUE, EnumTopLevelProc(target.Handle(), CallbackParameter(search)))
            << ::testing::PrintToString(row.what);
        EXPECT_EQ(nullptr, search.foundWindow);
    }
}

TEST(EnumTopLevelProc, PassesAWindowOfAnotherProcessWhereOneIsAskedFor) {
    const PracticeWindow target(kPlainClass);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(target.Handle(), &owner);
    auto search = SearchFor(kPlainClass, target.Title());
    search.processId = ::GetCurrentProcessId();
    EXPECT_EQ(TRUE, EnumTopLevelProc(target.Handle(), CallbackParameter(search)));
    EXPECT_EQ(nullptr, search.foundWindow);
    search.processId = owner;
    EXPECT_EQ(FALSE, EnumTopLevelProc(target.Handle(), CallbackParameter(search)));
    EXPECT_EQ(target.Handle(), search.foundWindow);
}

TEST(EnumTopLevelProc, TriesTheTitleBeforeTheClass) {
    const PracticeWindow target(kPlainClass);
    auto search = SearchFor(L"", L"");
    search.useRegex = true;
    search.titleRegex = CompileCriterion(L"another title", kAmpleStack);
    search.classRegex = CompileCriterion(L"(.*.*.*.*.*.*.*.*)*X", kAmpleStack);  // explodes on any class name
    EXPECT_EQ(TRUE, EnumTopLevelProc(target.Handle(), CallbackParameter(search)));
    EXPECT_FALSE(search.error);
}

TEST(EnumTopLevelProc, CarriesAnExceptionPastThePlatformAndStops) {
    const PracticeWindow target(kPlainClass, {}, std::wstring(60, L'a') + testing::UniqueTitle());
    auto search = SearchFor(L"", L"");
    search.useRegex = true;
    search.titleRegex = CompileCriterion(L"(a+)+b", kAmpleStack);
    EXPECT_EQ(FALSE, EnumTopLevelProc(target.Handle(), CallbackParameter(search)));
    EXPECT_THROW(search.RethrowError(), std::regex_error);
    EXPECT_EQ(FALSE, EnumTopLevelProc(target.Handle(), CallbackParameter(search)));
    EXPECT_EQ(nullptr, search.foundWindow);
}

}  // namespace
}  // namespace dialwright
