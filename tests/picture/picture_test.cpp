#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "look/picture.h"
#include "look/window_picture.h"
#include "support/practice_window.h"
#include "support/temporary_folder.h"
#include "support/wait.h"
#include "support/windows_of_others.h"
#include "tools/png_reader.h"
#include "tools/run_tool.h"

// Runs on a screen, and leaves its pictures and pages for the test of the page and for whoever wants to see them.
namespace dialwright::testing {
namespace {

using tools::DetailIn;
using tools::Picture;
using tools::TakeWindowPicture;

std::wstring OutputFile(const std::wstring& name) {
    ::CreateDirectoryW(L"" PICTURES, nullptr);
    return L"" PICTURES "/" + name;
}

std::wstring HandleText(const PracticeWindow& target) {
    const std::string hex = Hex(target.Handle());
    return {hex.begin(), hex.end()};
}

/// The inside of a control, without its border.
Rectangle InsideOf(HWND control) {
    const Rectangle all = RelativeRectOf(control);
    return {.left = all.left + 3, .top = all.top + 3, .right = all.right - 3, .bottom = all.bottom - 3};
}

/// Of the inside, without the number that is drawn on the right.
Rectangle LeftHalfOf(HWND control) {
    const Rectangle inside = InsideOf(control);
    return {.left = inside.left, .top = inside.top, .right = (inside.left + inside.right) / 2, .bottom = inside.bottom};
}

bool ShowsText(const PracticeWindow& target, int id) {
    return DetailIn(TakeWindowPicture(target.Handle()).picture, InsideOf(target.Control(id))) > 0;
}

void SetTextOf(HWND control, const wchar_t* text) {
    ::SendMessageW(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

bool IsFilledWith(const Picture& picture, const Rectangle& where, tools::Colour colour) {
    for (int y = where.top; y < where.bottom; ++y) {
        for (int x = where.left; x < where.right; ++x) {
            if (picture.At(x, y) != colour) return false;
        }
    }
    return true;
}

TEST(WindowPictureOnAScreen, ShowsWhatStandsInTheWindowWhereItStands) {
    const PracticeWindow target;
    ASSERT_TRUE(WaitUntil([&] { return ShowsText(target, 15); }));
    const auto taken = TakeWindowPicture(target.Handle());
    const Rectangle frame = ScreenRectOf(target.Handle());
    EXPECT_EQ(nullptr, taken.trouble);
    EXPECT_EQ(frame.right - frame.left, taken.picture.width);
    EXPECT_EQ(frame.bottom - frame.top, taken.picture.height);
    EXPECT_EQ(0, DetailIn(taken.picture, InsideOf(target.Control(63))));
    SetTextOf(target.Control(63), L"Ada");
    EXPECT_TRUE(WaitUntil([&] { return ShowsText(target, 63); }));
}

TEST(WindowPictureOnAScreen, ShowsTheWindowOfAControl) {
    const PracticeWindow target;
    const Rectangle frame = ScreenRectOf(target.Handle());
    EXPECT_EQ(frame.right - frame.left, TakeWindowPicture(target.Control(12)).picture.width);
}

TEST(WindowPictureOnAScreen, BlanksPasswordsAndWhatItIsTold) {
    const PracticeWindow target;
    SetTextOf(target.Control(14), L"secret");
    SetTextOf(target.Control(15), L"secret too");
    SetTextOf(target.Control(12), L"public");
    ASSERT_TRUE(WaitUntil([&] { return ShowsText(target, 12) && ShowsText(target, 15); }));
    const Rectangle password = RelativeRectOf(target.Control(14));
    const Rectangle told = RelativeRectOf(target.Control(15));
    const Picture picture = TakeWindowPicture(target.Handle(), {told}).picture;
    const tools::Colour blank = picture.At(password.left, password.top);
    EXPECT_NE(0xFFFFFFU, blank);
    EXPECT_TRUE(IsFilledWith(picture, password, blank));
    EXPECT_TRUE(IsFilledWith(picture, told, blank));
    EXPECT_FALSE(IsFilledWith(picture, RelativeRectOf(target.Control(12)), blank));
}

TEST(WindowPictureOnAScreen, DoesNotWaitForAWindowThatHangs) {
    PracticeWindow target;
    ASSERT_TRUE(WaitUntil([&] { return ShowsText(target, 15); }));
    target.DoAfter(0, L"hang 20000");
    ASSERT_TRUE(WaitUntil([&] {
        DWORD_PTR ignored = 0;
        return ::SendMessageTimeoutW(target.Handle(), WM_NULL, 0, 0, SMTO_BLOCK, 50, &ignored) == 0;
    }));
    const ULONGLONG begin = ::GetTickCount64();
    EXPECT_EQ(nullptr, TakeWindowPicture(target.Handle()).trouble);
    EXPECT_LT(::GetTickCount64() - begin, 10000U);
    target.Process().Kill();
}

TEST(InspectOnAScreen, WritesAPictureWithTheNumbersOfItsText) {
    PracticeWindow target(kDialogClass, {}, L"Dialwright practice");
    target.Do(L"front");
    ASSERT_TRUE(WaitUntil([&] { return ShowsText(target, 15); }));
    const Ended ended = RunTool({L"inspect", kDialogClass, target.Title(), L"--picture", OutputFile(L"inspect.png"),
                                 L"--html", OutputFile(L"inspect.html")});
    EXPECT_EQ(0U, ended.code) << ended.Text();
    const auto numbered = [](const std::string& line) { return line.starts_with("  [12] 12  checkbox  ID 31"); };
    EXPECT_TRUE(std::ranges::any_of(ended.lines, numbered)) << ended.Text();

    const Picture picture = DecodePng(ReadFile(OutputFile(L"inspect.png")));
    const Rectangle frame = ScreenRectOf(target.Handle());
    EXPECT_EQ(frame.right - frame.left, picture.width);
    EXPECT_EQ(frame.bottom - frame.top, picture.height);
    const Rectangle checkBox = RelativeRectOf(target.Control(31));
    const Picture plain = TakeWindowPicture(target.Handle()).picture;
    const int middle = (checkBox.top + checkBox.bottom) / 2;
    EXPECT_NE(plain.At(checkBox.left - 1, middle), picture.At(checkBox.left - 1, middle));
    EXPECT_LT(FileSizeOf(OutputFile(L"inspect.png")), 150U * 1024U);
}

TEST(InspectOnAScreen, WritesAPageOfAWindowWithAHostileTitle) {
    PracticeWindow target;
    target.Do(LR"(title </script><img src=x onerror="document.title='taken'">{{css}} & "quoted" \n \u0022 end)");
    ASSERT_TRUE(WaitUntil([&] { return ShowsText(target, 15); }));
    const Ended ended = RunTool({L"inspect", L"--handle", HandleText(target), L"--html", OutputFile(L"hostile.html")});
    EXPECT_EQ(0U, ended.code) << ended.Text();
    EXPECT_FALSE(ReadFile(OutputFile(L"hostile.html")).empty());
}

TEST(InspectOnAScreen, WritesAPageWithoutAPictureOfAMinimizedWindow) {
    PracticeWindow target;
    target.Do(L"window 6");
    ASSERT_TRUE(WaitUntil([&] { return ::IsIconic(target.Handle()) != FALSE; }));
    const Ended ended =
        RunTool({L"inspect", L"--handle", HandleText(target), L"--html", OutputFile(L"minimized.html")});
    EXPECT_EQ(1U, ended.code) << ended.Text();
    EXPECT_NE(std::string::npos, ended.Text().find("there is no picture: the window is minimized"));
    EXPECT_NE(std::string::npos, ReadFile(OutputFile(L"minimized.html")).find("src=\"\""));
}

TEST(InspectOnAScreen, HidesSecrets) {
    const PracticeWindow target;
    const TemporaryFolder folder;
    WriteFile(folder.File(L"secrets.txt"), "NAME=Hello\n");
    const Ended ended = RunTool({L"inspect", L"--handle", HandleText(target), L"--secret-file",
                                 folder.File(L"secrets.txt"), L"--picture", folder.File(L"window.png")});
    EXPECT_EQ(0U, ended.code) << ended.Text();
    EXPECT_EQ(std::string::npos, ended.Text().find("Hello"));
    EXPECT_NE(std::string::npos, ended.Text().find("\"*****\""));
    EXPECT_EQ(0, DetailIn(DecodePng(ReadFile(folder.File(L"window.png"))), LeftHalfOf(target.Control(15))));
}

TEST(FailurePicture, HidesTheControlThatGotASecret) {
    constexpr tools::Colour kBlank = 0xB4BBC6;
    const PracticeWindow target;
    const TemporaryFolder folder;
    WriteFile(folder.File(L"secrets.txt"), "NAME=Ada Lovelace\n");
    const Ended ended =
        RunTool({L"run", L"--secret-file", folder.File(L"secrets.txt"), L"--on-failure", L"screenshot", L"--evidence",
                 folder.File(L"evidence"), L"-c", target.Line(L"Window.SetText", L"12 ${secret:NAME} 5000"), L"-c",
                 target.Line(L"Window.SetText", L"13 \"nobody\" 5000"), L"-c",
                 target.Line(L"Window.ClickButton", L"4711 100")});
    EXPECT_EQ(1U, ended.code) << ended.Text();
    EXPECT_NE(std::string::npos, ended.Text().find("see ")) << ended.Text();
    const Picture picture = DecodePng(ReadFile(folder.File(L"evidence\\-command--L3.png")));
    EXPECT_TRUE(IsFilledWith(picture, InsideOf(target.Control(12)), kBlank));
    EXPECT_FALSE(IsFilledWith(picture, InsideOf(target.Control(13)), kBlank));
    EXPECT_GT(DetailIn(picture, InsideOf(target.Control(15))), 0);
}

}  // namespace
}  // namespace dialwright::testing
