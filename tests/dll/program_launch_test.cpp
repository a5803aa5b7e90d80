#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "library.h"
#include "platform/text_encoding.h"
#include "platform/windows.h"
#include "support/child_process.h"
#include "support/log_capture.h"
#include "support/practice_window.h"
#include "support/wait.h"

namespace dialwright::testing {
namespace {

/// A folder of its own for each test, with programs that tell how they were started; removed at the end.
class LaunchFolder {
public:
    LaunchFolder() {
        std::array<wchar_t, MAX_PATH> temporary{};
        ::GetTempPathW(static_cast<DWORD>(temporary.size()), temporary.data());
        folder = std::wstring(temporary.data()) + UniqueTitle() + L"\\";
        ::CreateDirectoryW(folder.c_str(), nullptr);
    }
    ~LaunchFolder() {
        for (const std::wstring& file : files) {
            // The program may still be ending.
            EXPECT_TRUE(WaitUntil([&] { return ::DeleteFileW(file.c_str()) != FALSE; }));
        }
        ::RemoveDirectoryW(folder.c_str());
    }
    LaunchFolder(const LaunchFolder&) = delete;
    LaunchFolder& operator=(const LaunchFolder&) = delete;

    /// The path of a program with this name.
    std::wstring Program(const std::wstring& name) {
        files.push_back(folder + name);
        EXPECT_TRUE(::CopyFileW((ProgramFolder() + L"launched.exe").c_str(), files.back().c_str(), TRUE));
        return files.back();
    }

    /// What the started process tells: its program, its command line, its current folder.
    std::vector<std::string> ReportOf(unsigned long processId) {
        const std::wstring report = folder + L"launched-" + std::to_wstring(processId) + L".txt";
        std::FILE* file = nullptr;
        EXPECT_TRUE(WaitUntil([&] {
            file = ::_wfopen(report.c_str(), L"rb");
            return file != nullptr;
        }));
        std::vector<std::string> lines(1);
        if (file == nullptr) return lines;
        for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) {
            if (c == '\n') {
                lines.emplace_back();
            } else {
                lines.back().push_back(static_cast<char>(c));
            }
        }
        lines.pop_back();
        std::fclose(file);
        files.push_back(report);
        return lines;
    }

private:
    std::wstring folder;
    std::vector<std::wstring> files;
};

std::string CurrentFolder() {
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
    return ToUtf8(folder.data());
}

constexpr unsigned long kUntouched = 4711;

TEST(ProgramLaunch, StartsAProgramWithItsArgumentsInTheCallersFolder) {
    LaunchFolder folder;
    const std::wstring program = L"\"" + folder.Program(L"tell.exe") + L"\"";
    const std::wstring arguments = L"readme.txt \"two words\" \x65E5\x672C 100%";
    unsigned long processId = kUntouched;
    const LogCapture log;
    EXPECT_EQ(1, ProgramLaunch(program, arguments, &processId));
    EXPECT_NE(kUntouched, processId);
    const auto report = folder.ReportOf(processId);
    ASSERT_EQ(3U, report.size());
    EXPECT_EQ(ToUtf8(program + L" " + arguments), report[1]);
    EXPECT_EQ(CurrentFolder(), report[2]);
    EXPECT_EQ("", log.Text());
}

TEST(ProgramLaunch, PutsABlankBehindThePathAlsoWithoutArguments) {
    LaunchFolder folder;
    const std::wstring program = L"\"" + folder.Program(L"tell.exe") + L"\"";
    unsigned long processId = kUntouched;
    EXPECT_EQ(1, ProgramLaunch(program, L"", &processId));
    const auto report = folder.ReportOf(processId);
    ASSERT_EQ(3U, report.size());
    EXPECT_EQ(ToUtf8(program + L" "), report[1]);
}

TEST(ProgramLaunch, LeavesAnUnquotedPathWithABlankToThePlatform) {
    // Of "one two.exe" the platform tries "one.exe" first. The folder's own name has blanks too, so go into it.
    LaunchFolder folder;
    const std::wstring first = folder.Program(L"one.exe");
    (void)folder.Program(L"one two.exe");
    const std::wstring inside = first.substr(0, first.rfind(L'\\'));
    std::array<wchar_t, MAX_PATH> shortened{};
    ::GetShortPathNameW(inside.c_str(), shortened.data(), static_cast<DWORD>(shortened.size()));
    ASSERT_EQ(std::wstring::npos, std::wstring(shortened.data()).find(L' '));
    unsigned long processId = kUntouched;
    EXPECT_EQ(1, ProgramLaunch(std::wstring(shortened.data()) + L"\\one two.exe", L"", &processId));
    const auto report = folder.ReportOf(processId);
    ASSERT_EQ(3U, report.size());
    EXPECT_TRUE(report[0].ends_with("\\one.exe")) << report[0];
}

TEST(ProgramLaunch, FailsForWhatCannotBeStarted) {
    unsigned long processId = kUntouched;
    const LogCapture log;
    EXPECT_EQ(0, ProgramLaunch(L"C:\\no such program \x3042 100%.exe", L"secret arguments", &processId));
    EXPECT_EQ(0, ProgramLaunch(L"", L"", &processId));
    EXPECT_EQ(0, ProgramLaunch(L"no-such-program.exe", L"", nullptr));
    EXPECT_EQ(kUntouched, processId);
    EXPECT_EQ((std::vector<std::string>{
                  "Program::Launch: Error: Failed to launch program \"C:\\no such program \xE3\x81\x82 100%.exe\"",
                  "Program::Launch: Error: Failed to launch program \"\"",
                  "Program::Launch: Error: Failed to launch program \"no-such-program.exe\""}),
              log.Messages());
}

/// The platform has no count of handles here, so each value a handle may have is asked for.
int OpenHandles() {
    int count = 0;
    for (std::uintptr_t value = 4; value < 8192; value += 4) {
        DWORD flags = 0;
        if (::GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
    }
    return count;
}

TEST(ProgramLaunch, NeedsNoPlaceForTheIdAndKeepsNoHandle) {
    EXPECT_EQ(1, ProgramLaunch(L"cmd.exe", L"/c exit", nullptr));
    const int before = OpenHandles();
    constexpr int kLaunches = 5;
    for (int i = 0; i < kLaunches; ++i) EXPECT_EQ(1, ProgramLaunch(L"cmd.exe", L"/c exit", nullptr));
    // A launch that keeps a handle adds one each time. In Wine 10 another one comes once, soon after a process has
    // begun.
    EXPECT_LT(OpenHandles(), before + kLaunches);
}

}  // namespace
}  // namespace dialwright::testing
