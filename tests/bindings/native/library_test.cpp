#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "dialwright/dialwright.hpp"
#include "support/practice_window.h"
#include "support/temporary_folder.h"
#include "support/windows_of_others.h"

// The C++ binding as a host uses it. Its error files are this program's own, so no two of these tests run at once.
namespace dialwright::testing {
namespace {

using Lines = std::vector<std::wstring>;

/// The error of a call that must fail.
template <class Function>
CallError FailureOf(Function&& function) {
    try {
        function();
    } catch (const CallError& error) {
        return error;
    }
    ADD_FAILURE() << "the call did not fail";
    return {L"", {}};
}

TEST(LibraryClass, FillsAFormInAnotherProcess) {
    const Library library;
    const PracticeWindow window(kDialogClass, {}, L"日本語 (1) 😀 " + UniqueTitle());
    const std::wstring title = Literal(window.Title());
    library.Execute(Line(L"Window.SetText", kDialogClass, title, {12, L"say \"hi\" to C:\\"}, 5000));
    EXPECT_EQ(L"say \"hi\" to C:\\", TextOf(window.Control(12)));
    library.ExecuteScript(
        Line(L"Window.SetCheckbox", kDialogClass, title, {31, true}, 5000) + L"\r\n\r\n" +
        Line(L"Window.SelectDropdown.Value.NonRegex", kDialogClass, window.Title(), {51, L"beta"}, 5000));
    EXPECT_EQ(1, CheckStateOf(window.Control(31)));
    EXPECT_EQ(1, SelectionOf(window.Control(51)));
}

TEST(LibraryClass, ValidatesWithoutThrowing) {
    const Library library;
    EXPECT_TRUE(library.Validate(L"Window.Close c t"));
    EXPECT_FALSE(library.Validate(L"Window.Close c"));
    EXPECT_TRUE(library.ValidateScript(L"Window.Close c t\n\nWindow.Close c t 5"));
    EXPECT_FALSE(library.ValidateScript(L"Window.Close c t\nWindow.Close"));
}

TEST(LibraryClass, ThrowsTheErrorLinesOfTheCallAndNoOthers) {
    const Library library;
    const PracticeWindow window;
    const std::wstring& title = window.Title();
    EXPECT_FALSE(library.Validate(L"Window.Before c t"));
    const std::wstring line = Line(L"Window.SetText", kDialogClass, title, {4711, L"hunter22"}, 1000);
    const CallError error = FailureOf([&] { library.Execute(line); });
    EXPECT_EQ(L"Window.SetText \"#32770\" \"" + title + L"\" 4711 \"*****\" 1000", error.Command());
    ASSERT_FALSE(error.Lines().empty());
    EXPECT_EQ(0U, error.Lines().front().find(L"Window::")) << ::testing::PrintToString(error.Lines());
    const std::string what = error.what();
    EXPECT_EQ(0U, what.find("failed: Window.SetText "));
    EXPECT_NE(std::string::npos, what.find("\n    Window::")) << what;
    EXPECT_EQ(std::string::npos, what.find("hunter22"));
    EXPECT_EQ(std::string::npos, what.find("Window.Before"));
}

TEST(LibraryClass, TellsWhichLineOfAScriptFailed) {
    const Library library;
    const CallError error = FailureOf(
        [&] { library.ExecuteScript(L"Window.Close NoSuchClass none 1\n Window.SetText c \"a\\\\\\\"b\" hunter22"); });
    EXPECT_EQ(L"Window.Close NoSuchClass none 1\n Window.SetText \"*****\" \"*****\" \"*****\"", error.Command());
    ASSERT_FALSE(error.Lines().empty());
    EXPECT_EQ(L"DialogScriptManager::ExecuteScript: Invalid command: Window.Close NoSuchClass none 1",
              error.Lines().back());
}

TEST(LibraryClass, HidesWhatTheLogShowsOfAMisshapenLine) {
    const Library library;
    const CallError script = FailureOf([&] { library.ExecuteScript(L" Window.SetText c t hunter22 x y z"); });
    EXPECT_EQ(Lines({L"DialogScriptManager::ValidateCommandArgs: Invalid argument count for Window.SetText",
                     L"DialogScriptManager::ExecuteScript: Invalid command:  Window.SetText c t ***** x y z"}),
              script.Lines());
    const CallError twoLines = FailureOf([&] { library.Execute(L"Window.SetText NoSuchClass t 1\n\"two\nlines\" 5"); });
    EXPECT_EQ(L"Window.SetText NoSuchClass t 1\n\"*****\" 5", twoLines.Command());
}

TEST(LibraryClass, KeepsTheLinesOfThreadsApart) {
    const Library library;
    const auto fail = [&](const std::wstring& name, std::wstring& wrong) {
        for (int i = 0; i < 50 && wrong.empty(); ++i) {
            const CallError error = FailureOf([&] { library.Execute(name + std::to_wstring(i) + L" c t"); });
            const std::wstring expected =
                L"DialogScriptManager::ExecuteCommand: Unknown command: " + name + std::to_wstring(i);
            if (error.Lines() != Lines{expected})
                wrong = expected + L": " + (error.Lines().empty() ? L"none" : error.Lines()[0]);
        }
    };
    std::wstring here;
    std::wstring there;
    std::thread other([&] { fail(L"Other", there); });
    fail(L"This", here);
    other.join();
    EXPECT_EQ(L"", here);
    EXPECT_EQ(L"", there);
}

TEST(LibraryClass, LaunchesAndSaysWhyNotWithoutTheArguments) {
    const Library library;
    const std::wstring title = UniqueTitle();
    const unsigned long process =
        library.Launch(L"\"" + ProgramFolder() + L"" PRACTICE_TARGET "\"", L"--title \"" + title + L"\"");
    library.Execute(Line(L"Window.Restore", kDialogClass, title));
    DWORD owner = 0;
    ::GetWindowThreadProcessId(::FindWindowW(nullptr, title.c_str()), &owner);
    EXPECT_EQ(process, owner);
    library.Execute(Line(L"Window.Close", kDialogClass, title));
    const CallError error = FailureOf([&] { library.Launch(L"no-such-program.exe", L"hunter22"); });
    EXPECT_EQ(L"no-such-program.exe", error.Command());
    EXPECT_FALSE(error.Lines().empty());
    EXPECT_EQ(std::string::npos, std::string(error.what()).find("hunter22"));
}

TEST(LibraryClass, RefusesAZeroCharacterAndAWrongPath) {
    const Library library;
    const std::wstring zero(L"Window.Close c t\0 5", 19);
    EXPECT_THROW((void)library.Validate(zero), Error);
    EXPECT_THROW(library.Execute(zero), Error);
    EXPECT_THROW(library.Launch(L"x", zero), Error);
    try {
        const Library none(L"Dialwright.dll");
        ADD_FAILURE() << "loaded";
    } catch (const Error& error) {
        EXPECT_STREQ("this is not a full path: Dialwright.dll", error.what());
    }
}

/// Lines of an earlier run may be of the same process and thread: these numbers are used again.
void RemoveErrorFiles() {
    DWORD session = 0;
    ::ProcessIdToSessionId(::GetCurrentProcessId(), &session);
    const std::wstring common =
        ProgramFolder() + L"logs\\trace\\native_library_tests.exe_" + std::to_wstring(session) + L"_Dialwright_";
    for (const wchar_t* rest : {L"1_error.log", L"2_error.log"}) ::DeleteFileW((common + rest).c_str());
}

/// What is new after one misshapen line for a mark that is changed before.
template <class Change>
std::wstring SinceChangedMark(const Library& library, const Change& change) {
    DialwrightErrorMark mark;
    ::DialwrightMarkErrors(&mark);
    change(mark);
    EXPECT_FALSE(library.Validate(L"Window.Wrong c t"));
    std::wstring text(100'000, L'\0');
    const std::size_t units = ::DialwrightErrorsSince(&mark, text.data(), text.size());
    text.resize(units - 1);
    return text;
}

TEST(ErrorLines, AreAllThoseOfAFileThatWasBegunAnew) {
    RemoveErrorFiles();
    const Library library;
    const std::wstring one = L"DialogScriptManager::ValidateCommand: Unknown command: Window.Wrong\n";
    EXPECT_EQ(one, SinceChangedMark(library, [](DialwrightErrorMark&) {}));
    EXPECT_EQ(one, SinceChangedMark(library, [](DialwrightErrorMark&) {}));
    EXPECT_EQ(one + one + one, SinceChangedMark(library, [](DialwrightErrorMark& mark) { mark.size[0] += 100'000; }));
    EXPECT_EQ(one + one + one + one,
              SinceChangedMark(library, [](DialwrightErrorMark& mark) { mark.identity[0] += 1; }));
}

TEST(ErrorLines, NeedNoMoreRoomThanTheySay) {
    const Library library;
    DialwrightErrorMark mark;
    ::DialwrightMarkErrors(&mark);
    std::wstring text = L"######";
    EXPECT_EQ(1U, ::DialwrightErrorsSince(&mark, text.data(), 0));
    EXPECT_EQ(L"######", text);
    EXPECT_FALSE(library.Validate(L"Wrong\nc t"));
    EXPECT_EQ(std::wstring(L"DialogScriptManager::ValidateCommand: Unknown command: Wrong\n").size() + 1,
              ::DialwrightErrorsSince(&mark, text.data(), 4));
    EXPECT_EQ(L'\0', text[0]);
    EXPECT_EQ(L"##", text.substr(4));
}

TEST(ErrorLines, OfAMessageWithSeveralLinesStayTogether) {
    const Library library;
    const CallError error = FailureOf([&] { library.Execute(L"\"Window.Two\nlines\" c t"); });
    EXPECT_EQ(Lines{L"DialogScriptManager::ExecuteCommand: Unknown command: Window.Two\nlines"}, error.Lines());
}

}  // namespace
}  // namespace dialwright::testing
