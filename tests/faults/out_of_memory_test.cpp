#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "dialwright/dialwright.h"
#include "failing_allocator.h"
#include "language/criterion.h"
#include "platform/text_encoding.h"
#include "script/dialog_script_manager.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/soak.h"
#include "support/temporary_folder.h"
#include "support/windows_of_others.h"
#include "trace/logger.h"
#include "trace/trace.h"

// The library is linked into this program, whose allocator fails where it is told to.
namespace dialwright::testing {
namespace {

/// Far more than any call here allocates.
constexpr int kGiveUpAt = 20'000;
/// Of the allocations the suite takes a sample, and these one by one: an expression is compiled among the first, and
/// the last are those of the work itself, behind all that is read and matched for it.
constexpr int kOneByOneUpTo = 140;
constexpr int kOneByOneAtTheEnd = 40;

using Messages = std::vector<std::string>;

bool Tell(const Messages& messages, const std::string& text) {
    return std::ranges::any_of(messages,
                               [&](const std::string& message) { return message.find(text) != std::string::npos; });
}

class OutOfMemory : public ::testing::TestWithParam<Failing> {
protected:
    void SetUp() override { ASSERT_EQ(1, TraceStart(folder.NarrowPath().c_str(), "x.log", "Dialwright")); }
    void TearDown() override {
        TraceStop();
        ReleaseTrace();
    }

    /// Fails the call's allocations one by one until it passes through. Calls `undo` before each, so that nothing is
    /// left of a call before, and `check` after each failure, with what the call logged. Returns how many failed.
    template <class Call, class Check, class Undo>
    int FailOneByOne(const Call& call, const Check& check, const Undo& undo) {
        const int allAtFirst = AllocationsOf(call, undo);
        int failed = 0;
        const auto step = [&](int number) {
            return number < oneByOneUpTo || number > allAtFirst - kOneByOneAtTheEnd ? 1 : Rounds(17, 1);
        };
        for (int number = 1; number <= kGiveUpAt; number += step(number)) {
            undo();
            WatchedCall watched;
            Messages log;
            {
                const LogCapture capture;
                watched = CallWithFailure(number, GetParam(), call);
                log = capture.Messages();
            }
            SCOPED_TRACE("allocation " + std::to_string(number));
            EXPECT_EQ(0, watched.blocksLeft);
            if (watched.allocations < number) {
                // How many there are depends on the windows of others: not the same number, but about that.
                EXPECT_GT(number, allAtFirst / 2);
                return failed;
            }
            ++failed;
            check(number, watched, log);
            if (HasFailure()) return failed;
        }
        ADD_FAILURE() << "it never passes through";
        return kGiveUpAt;
    }

    template <class Call, class Check>
    int FailOneByOne(const Call& call, const Check& check) {
        return FailOneByOne(call, check, [] {});
    }

    template <class Call, class Undo>
    static int AllocationsOf(const Call& call, const Undo& undo) {
        undo();
        const LogCapture log;
        return CallWithFailure(0, Failing::OnlyThatOne, call).allocations;
    }

    /// The allocations of a manager that is built and dropped, outside the boundary where exceptions end.
    static int AllocationsOfTheManager() {
        return AllocationsOf(
            [] {
                const DialogScriptManager manager;
                return 1;
            },
            [] {});
    }

    /// A call of one of the four: while the manager is built the exception leaves; later it is told, and the call
    /// fails, unless what had no memory was a line of the log: then it has done its work.
    int ExpectTheBoundary(
        const std::function<int()>& call, const std::string& activity, const std::function<bool()>& isDone,
        const std::function<void()>& undo = [] {}) {
        const int ofTheManager = AllocationsOfTheManager();
        EXPECT_GT(ofTheManager, 27);
        const std::string told = "Exception during " + activity + ": std::bad_alloc";
        const auto check = [&](int number, const WatchedCall& watched, const Messages& log) {
            EXPECT_EQ(number <= ofTheManager, watched.threwBadAlloc);
            if (watched.threwBadAlloc) return;
            const bool isTold = Tell(log, told);
            EXPECT_EQ(isTold ? 0 : 1, watched.result);
            if (!isTold) {
                EXPECT_TRUE(isDone());
            }
        };
        return FailOneByOne(call, check, undo);
    }

    const TemporaryFolder folder;
    int oneByOneUpTo = kOneByOneUpTo;
};

int Execute(const std::wstring& line) { return ::ExecuteCommand(line.c_str()); }

void PutText(HWND edit, const wchar_t* text) { ::SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)); }

/// A click that was posted by a call before would move the caret of the next one.
void Settle(PracticeWindow& target) { target.Do(L"mark settled"); }

struct CommandRow {
    const wchar_t* name;
    const wchar_t* arguments;
    std::function<bool(const PracticeWindow&)> isDone;
    std::function<void(const PracticeWindow&)> undo;
};

TEST_P(OutOfMemory, EndsACommandWith0AndTellsWhy) {
    PracticeWindow target(kPlainClass);
    const std::wstring place = RectangleArgument(RelativeRectOf(target.Control(33)));
    const std::wstring check = place + L" 0 1 20000";
    const CommandRow rows[] = {
        {L"Window.SetText", L"15 \"longer than a small string\" 20000",
         [](const auto& shown) { return TextOf(shown.Control(15)) == L"longer than a small string"; },
         [](const auto& shown) { PutText(shown.Control(15), L""); }},
        {L"Window.ClearText.NonRegex", L"12 20000", [](const auto& shown) { return TextOf(shown.Control(12)).empty(); },
         [](const auto& shown) { PutText(shown.Control(12), L"old"); }},
        {L"Window.SetCheckbox.ByPath", L"23.1.1.2 1 20000",
         [](const auto& shown) { return CheckStateOf(shown.Control(64)) == 1; },
         [](const auto& shown) { ::SendMessageW(shown.Control(64), BM_SETCHECK, 0, 0); }},
        {L"Window.SetCheckbox.ByPosition", check.c_str(),
         [](const auto& shown) { return CheckStateOf(shown.Control(33)) == 1; },
         [](const auto& shown) { ::SendMessageW(shown.Control(33), BM_SETCHECK, 0, 0); }},
        {L"Window.SelectDropdown.Value", L"51 Gamma 20000",
         [](const auto& shown) { return SelectionOf(shown.Control(51)) == 2; },
         [](const auto& shown) { ::SendMessageW(shown.Control(51), CB_SETCURSEL, static_cast<WPARAM>(-1), 0); }},
        {L"Window.Minimize", L"20000", [](const auto& shown) { return ::IsIconic(shown.Handle()) != FALSE; },
         [](const auto& shown) { ::ShowWindow(shown.Handle(), SW_RESTORE); }},
    };
    for (const CommandRow& row : rows) {
        const std::wstring line = target.Line(row.name, row.arguments);
        const int failed =
            ExpectTheBoundary([&] { return Execute(line); }, "command execution", [&] { return row.isDone(target); },
                              [&] {
                                  Settle(target);
                                  row.undo(target);
                                  EXPECT_FALSE(row.isDone(target));
                              });
        std::printf("%ls: %d allocations failed\n", row.name, failed);
        EXPECT_TRUE(row.isDone(target)) << failed;
        oneByOneUpTo = 0;
    }
}

TEST_P(OutOfMemory, EndsACommandThatFailsAnywayWith0) {
    const std::wstring line = L"Window.SetText \"NoSuchClass\" \"a title that no window has, and long, too\" x text 1";
    const int ofTheManager = AllocationsOfTheManager();
    FailOneByOne([&] { return Execute(line); },
                 [&](int number, const WatchedCall& watched, const Messages&) {
                     EXPECT_EQ(number <= ofTheManager, watched.threwBadAlloc);
                     EXPECT_EQ(watched.threwBadAlloc ? -1 : 0, watched.result);
                 });
}

TEST_P(OutOfMemory, EndsAValidationWith0AndTellsWhy) {
    std::fflush(stderr);
    const std::wstring line =
        L"Window.SetText.Position \"SomeLongClassName\" \"a title of some length\" 1,2,3,4 5 text";
    ExpectTheBoundary([&] { return ::ValidateCommand(line.c_str()); }, "command validation", [] { return true; });
}

TEST_P(OutOfMemory, EndsAScriptWith0) {
    PracticeWindow target(kPlainClass);
    const std::wstring script = target.Line(L"Window.ClearText", L"15 20000") + L"\n" +
                                target.Line(L"Window.SetText", L"15 secret 20000") + L"\n" +
                                target.Line(L"Window.SetCheckbox", L"31 1 20000");
    const auto undo = [&] {
        Settle(target);
        PutText(target.Control(15), L"old");
        ::SendMessageW(target.Control(31), BM_SETCHECK, 0, 0);
    };
    struct Row {
        int (*run)(const wchar_t* script);
        const wchar_t* text;
        int state;
    };
    const int ofTheManager = AllocationsOfTheManager();
    const Row rows[] = {{&::ExecuteScript, L"secret", 1}, {&::ValidateScript, L"old", 0}};
    for (const Row& row : rows) {
        const auto expectDone = [&] {
            EXPECT_EQ(row.text, TextOf(target.Control(15)));
            EXPECT_EQ(row.state, CheckStateOf(target.Control(31)));
        };
        const auto check = [&](int number, const WatchedCall& watched, const Messages& log) {
            EXPECT_EQ(number <= ofTheManager, watched.threwBadAlloc);
            EXPECT_FALSE(Tell(log, "secret"));
            if (watched.threwBadAlloc) return;
            const bool told = Tell(log, "std::bad_alloc");
            EXPECT_EQ(told ? 0 : 1, watched.result);
            if (!told) expectDone();
        };
        const int failed = FailOneByOne([&] { return row.run(script.c_str()); }, check, undo);
        std::printf("a script: %d allocations failed\n", failed);
        expectDone();
        oneByOneUpTo = 0;
    }
}

TEST_P(OutOfMemory, LeavesProgramLaunchAsAnException) {
    const std::wstring program = L"\"" + ProgramFolder() + L"practice_target.exe\"";
    unsigned long process = 0;
    const int failed = FailOneByOne([&] { return ::ProgramLaunch(program.c_str(), L"--help", &process); },
                                    [&](int, const WatchedCall& watched, const Messages&) {
                                        EXPECT_TRUE(watched.threwBadAlloc);
                                        EXPECT_EQ(0U, process);
                                    },
                                    [&] { process = 0; });
    EXPECT_GE(failed, 2);
    EXPECT_NE(0U, process);
}

TEST_P(OutOfMemory, LosesALineOfTheLogAndNothingElse) {
    // Longer than what the logger has on its stack.
    const std::wstring text(20'000, L'\x65E5');
    const std::string narrow(20'000, 'n');
    const std::string wholeLines[] = {"Tag: " + ToUtf8(text), "Tag: " + narrow};
    constexpr int kHostsErrno = 4711;
    constexpr DWORD kHostsError = 4712;
    const auto call = [&] {
        errno = kHostsErrno;
        ::SetLastError(kHostsError);
        TraceLog("Tag", LOG_ERROR, "%ls", text.c_str());
        TraceLog("Tag", LOG_ERROR, "%s", narrow.c_str());
        return errno == kHostsErrno && ::GetLastError() == kHostsError ? 1 : 0;
    };
    const int failed = FailOneByOne(call, [&](int, const WatchedCall& watched, const Messages& log) {
        EXPECT_FALSE(watched.threwBadAlloc);
        EXPECT_EQ(1, watched.result);
        EXPECT_LE(log.size(), 1U);
        if (GetParam() == Failing::OnlyThatOne) {
            EXPECT_EQ(1U, log.size());
        }
        for (const std::string& message : log) EXPECT_NE(0, std::ranges::count(wholeLines, message));
    });
    EXPECT_GE(failed, 4);
    TraceLog("Tag", LOG_INFO, "still alive");
    TraceStop();
    const std::vector<std::string> messages = ReadMessages(folder.File(L"x_1.log"));
    ASSERT_GE(messages.size(), 2U);
    EXPECT_EQ("Tag: still alive", messages[messages.size() - 2]);
}

constexpr std::size_t kStackToCompile = 8'000'000;

/// Compiles with nothing but the reserve to compile from.
void ExpectToFitTheReserve(const std::wstring& pattern) {
    constexpr int kBehindTheReserve = 2;
    const WatchedCall watched = CallWithFailure(kBehindTheReserve, Failing::HeapIsFull, [&] {
        return CompileCriterion(pattern, kStackToCompile).mark_count() < kMostPatternUnits ? 1 : 0;
    });
    EXPECT_EQ(1, watched.result) << ::testing::PrintToString(pattern.substr(0, 20));
    EXPECT_EQ(0, watched.blocksLeft);
}

std::wstring Repeated(const std::wstring& piece, std::size_t units) {
    std::wstring text;
    while (text.size() + piece.size() <= units) text += piece;
    return text;
}

TEST(ExpressionReserve, HoldsSmallAndLargeExpressionsOfEveryKind) {
    for (const wchar_t* const piece :
         {L"a",     L"a*",  L"a+?",   L"a{2,3}", L"(a)", L"(?:a)", L"a|", L"|", L"()",    L"(?=a)",
          L"(?!a)", L"[a]", L"[a-z]", L"[^\\w]", L"\\d", L"\\b",   L".",  L"^", L"(a*)?", L"[[:alpha:]]"}) {
        ExpectToFitTheReserve(piece);
        ExpectToFitTheReserve(Repeated(piece, kMostPatternUnits));
    }
    ExpectToFitTheReserve(L"()" + Repeated(L"\\1", kMostPatternUnits - 2));
    for (const std::size_t depth : {std::size_t{1}, std::size_t{10}, kMostNestedGroups}) {
        for (const wchar_t* const open : {L"(", L"(?:", L"(?=", L"(a|"}) {
            std::wstring nested;
            for (std::size_t i = 0; i < depth; ++i) nested += open;
            ExpectToFitTheReserve(nested + std::wstring(depth, L')'));
        }
    }
}

int hostsHandlerCalls = 0;

void HandlerOfTheHost() {
    ++hostsHandlerCalls;
    throw std::bad_alloc();
}

TEST(ExpressionReserve, LeavesTheHandlerOfTheHostInItsPlace) {
    const auto compile = [] { return static_cast<int>(CompileCriterion(L"a(b)", kStackToCompile).mark_count()); };
    const auto allocate = [] {
        ::operator delete(::operator new(8));
        return 1;
    };
    const std::new_handler before = std::set_new_handler(&HandlerOfTheHost);
    EXPECT_EQ(1, compile());
    hostsHandlerCalls = 0;
    EXPECT_TRUE(CallWithFailure(1, Failing::HeapIsFull, allocate).threwBadAlloc);
    EXPECT_EQ(1, hostsHandlerCalls);
    // What the reserve helps out with is not the host's business, until that is used up as well.
    EXPECT_EQ(1, CallWithFailure(2, Failing::HeapIsFull, compile).result);
    EXPECT_EQ(1, hostsHandlerCalls);
    std::set_new_handler(nullptr);
    EXPECT_EQ(1, compile());
    EXPECT_TRUE(CallWithFailure(1, Failing::HeapIsFull, allocate).threwBadAlloc);
    EXPECT_EQ(1, hostsHandlerCalls);
    std::set_new_handler(before);
}

INSTANTIATE_TEST_SUITE_P(FailingAllocator, OutOfMemory, ::testing::Values(Failing::OnlyThatOne, Failing::HeapIsFull),
                         [](const auto& info) {
                             return info.param == Failing::OnlyThatOne ? "OneFails" : "HeapIsFull";
                         });

}  // namespace
}  // namespace dialwright::testing
