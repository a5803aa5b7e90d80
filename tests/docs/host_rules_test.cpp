#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>

#include "language/criterion.h"
#include "platform/windows.h"
#include "script/dialog_script_manager.h"
#include "support/diverted_output.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/wait.h"
#include "window/window.h"

#include <fcntl.h>
#include <io.h>

// What docs/embedding.md tells hosts about windows of their own.
namespace dialwright::testing {
namespace {

constexpr DWORD kLongerThanTheTimeoutMs = 800;

/// A thread with a top-level window that nobody sees. It answers no message until it is told to.
class BusyUserInterface {
public:
    BusyUserInterface() : thread([this] { Run(); }) { ::WaitForSingleObject(ready, kPatienceMs); }
    ~BusyUserInterface() {
        Answer();
        ::PostThreadMessageW(::GetThreadId(reinterpret_cast<HANDLE>(thread.native_handle())), WM_QUIT, 0, 0);
        thread.join();
        ::CloseHandle(ready);
        ::CloseHandle(mayAnswer);
    }
    BusyUserInterface(const BusyUserInterface&) = delete;
    BusyUserInterface& operator=(const BusyUserInterface&) = delete;

    void Answer() const { ::SetEvent(mayAnswer); }

private:
    void Run() const {
        const HWND window = ::CreateWindowW(L"Static", L"a host's own", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr,
                                            nullptr, nullptr);
        ::SetEvent(ready);
        ::WaitForSingleObject(mayAnswer, INFINITE);
        MSG message{};
        while (::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
        ::DestroyWindow(window);
    }

    HANDLE ready = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE mayAnswer = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread thread;
};

constexpr const wchar_t* kNowhere = L"Window.Close NoSuchClass \"no such window\" 300";

TEST(HostRules, ACallWaitsForTheHostsOwnWindowWhateverItsTimeout) {
    const LogCapture log;
    const BusyUserInterface busy;
    std::atomic<int> result = -1;
    std::thread caller([&] { result = DialogScriptManager().ExecuteCommand(kNowhere); });
    EXPECT_FALSE(WaitUntil([&] { return result != -1; }, kLongerThanTheTimeoutMs));
    busy.Answer();
    EXPECT_TRUE(WaitUntil([&] { return result != -1; }));
    caller.join();
    EXPECT_EQ(0, result);
}

TEST(HostRules, ACallOnTheThreadOfTheHostsOwnWindowDoesNotWaitForIt) {
    const LogCapture log;
    const HWND own =
        ::CreateWindowW(L"Static", L"a host's own", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(0, DialogScriptManager().ExecuteCommand(kNowhere));
    ::DestroyWindow(own);
}

TEST(HostRules, TheTitleOfAHungWindowOfAnotherProcessIsReadAllTheSame) {
    PracticeWindow target(kPlainClass);
    const LogCapture log;
    target.Process().WriteLine("hang 20000");
    while (target.Process().ReadLine(kPatienceMs).value_or("hanging") != "hanging") continue;
    const ULONGLONG begin = ::GetTickCount64();
    EXPECT_EQ(1, DialogScriptManager().ExecuteCommand(target.Line(L"Window.Close", L"10000").c_str()));
    EXPECT_LT(::GetTickCount64() - begin, 10000U);
    target.Process().Kill();
}

TEST(HostRules, APositionSearchVisitsAChainOfFiveWindows31Times) {
    const std::wstring title = UniqueTitle();
    const HWND root =
        ::CreateWindowW(L"Static", title.c_str(), WS_OVERLAPPED, 0, 0, 90, 90, nullptr, nullptr, nullptr, nullptr);
    HWND parent = root;
    for (int depth = 1; depth <= 5; ++depth) {
        parent = ::CreateWindowW(L"Static", L"", WS_CHILD, 0, 0, 10, 10, parent, nullptr, nullptr, nullptr);
    }
    const LogCapture log;
    const Window window(L"Static", title, 3000, true);
    EXPECT_EQ(nullptr, window.FindControlByPosition(1, 2, 3, 4, 0));
    EXPECT_EQ(31U, log.MessagesFrom("Window::GetLocalCoordinates: Coordinate transformation").size());
    ::DestroyWindow(root);
}

/// A pipe in place of this process's standard output, which nobody reads until it is drained.
class FullPipe {
public:
    FullPipe() { ::_close(ends[1]); }
    FullPipe(const FullPipe&) = delete;
    FullPipe& operator=(const FullPipe&) = delete;

    void Drain() {
        reader = std::thread([this] {
            std::array<char, 4096> area{};
            while (::_read(ends[0], area.data(), static_cast<unsigned>(area.size())) > 0) continue;
        });
    }

    ~FullPipe() {
        output.GiveBack();
        reader.join();
        ::_close(ends[0]);
    }

private:
    static std::array<int, 2> Open() {
        std::array<int, 2> ends{};
        EXPECT_EQ(0, ::_pipe(ends.data(), 4096, _O_BINARY));
        return ends;
    }

    std::array<int, 2> ends = Open();
    DivertedOutput output{ends[1]};
    std::thread reader;
};

TEST(HostRules, ACallWaitsForWhoeverReadsItsStandardOutput) {
    bool endedUnread = true;
    bool endedAtAll = false;
    {
        FullPipe pipe;
        std::atomic<bool> done = false;
        std::thread caller([&] {
            for (int i = 0; i < 2000; ++i) (void)DialogScriptManager().ValidateCommand(L"Window.Unknown");
            done = true;
        });
        endedUnread = WaitUntil([&] { return done.load(); }, kLongerThanTheTimeoutMs);
        pipe.Drain();
        endedAtAll = WaitUntil([&] { return done.load(); });
        caller.join();
    }
    EXPECT_FALSE(endedUnread);
    EXPECT_TRUE(endedAtAll);
}

TEST(HostRules, CaseIsIgnoredForAsciiLettersOnly) {
    constexpr std::size_t kStack = 1'000'000;
    EXPECT_TRUE(MatchesWhole(L"save", CompileCriterion(L"SAVE", kStack)));
    EXPECT_FALSE(MatchesWhole(L"\u00FC", CompileCriterion(L"\u00DC", kStack)));
}

}  // namespace
}  // namespace dialwright::testing
