// Scripts of several lines, and starting a program.

#include <string>

#include "platform/text_encoding.h"
#include "verify/checks.h"
#include "verify/library.h"
#include "verify/outside.h"
#include "verify/practice.h"

namespace dialwright::verify {
namespace {

constexpr DWORD kEndMs = 20000;

Verdict ExpectText(int result, int expected, const Practice& target, const wchar_t* text) {
    const std::wstring found = TextOf(target.Control(12));
    return PassedIf(result == expected && found == text,
                    "result " + std::to_string(result) + ", the field holds \"" + ToUtf8(found) + "\"");
}

Verdict Launch(const Library& library, const Setting& setting) {
    const std::wstring program = L"\"" + setting.PracticeTarget().wstring() + L"\"";
    unsigned long id = 0;
    if (library->programLaunch(program.c_str(), L"--help", &id) != 1 || id == 0) return Failed("it was not started");
    const tools::UniqueHandle process(::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    // It only prints its options, so it may have ended already.
    if (process == nullptr) return Passed("started, and it has ended");
    return PassedIf(::WaitForSingleObject(process.get(), kEndMs) == WAIT_OBJECT_0, "started, and it has ended");
}

}  // namespace

void CheckScripts(const Setting& setting, Journal& journal) {
    const Library library(setting);
    const Practice target(setting);
    const auto type = [&](const wchar_t* text) {
        return target.Line(L"Window.SetText", L"12 \"" + std::wstring(text) + L"\" 5000") + L"\r\n";
    };
    const auto wrong = target.Line(L"Window.ClickButton", L"4711 300") + L"\r\n";
    journal.Do("each line is carried out", [&] {
        return ExpectText(library->executeScript((type(L"one ") + L"\r\n" + type(L"two")).c_str()), 1, target,
                          L"one two");
    });
    journal.Do("it stops at the line that fails", [&] {
        Send(target.Control(12), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
        return ExpectText(library->executeScript((type(L"one") + wrong + type(L"two")).c_str()), 0, target, L"one");
    });
    journal.Do("a right script is valid",
               [&] { return PassedIf(library->validateScript(type(L"x").c_str()) == 1, ""); });
    journal.Do("a script with a wrong line is not", [&] {
        return PassedIf(library->validateScript((type(L"x") + L"Window.Clsoe c t\n").c_str()) == 0, "");
    });
    journal.Do("a program is started", [&] { return Launch(library, setting); });
    journal.Do("a program that is not there is not started",
               [&] { return PassedIf(library->programLaunch(L"C:\\no such program.exe", L"", nullptr) == 0, ""); });
}

}  // namespace dialwright::verify
