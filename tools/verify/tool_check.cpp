// dialwright.exe and its worker, as a user starts them.

#include <fstream>
#include <sstream>
#include <string>

#include "platform/text_encoding.h"
#include "verify/checks.h"
#include "verify/child_program.h"
#include "verify/outside.h"
#include "verify/practice.h"

#include <dialwright/dialwright.h>

namespace dialwright::verify {
namespace {

constexpr DWORD kEndMs = 60000;

Output Run(const Setting& setting, const std::vector<std::wstring>& arguments) {
    return RunToEnd({.program = setting.Tool(), .arguments = arguments}, kEndMs);
}

Verdict Expect(const Output& output, DWORD code, std::string_view part) {
    const bool good = output.exitCode == code && output.text.find(part) != std::string::npos;
    return PassedIf(good,
                    "exit code " + std::to_string(output.exitCode) + (good ? "" : ", and it said: " + output.text));
}

std::wstring Hex(HWND window) {
    std::wostringstream text;
    text << std::hex << reinterpret_cast<std::uintptr_t>(window);
    return text.str();
}

std::wstring WriteScript(const Setting& setting, const wchar_t* name, const std::wstring& text) {
    const std::filesystem::path path = setting.work / name;
    std::ofstream(path, std::ios::binary) << ToUtf8(text);
    return path.wstring();
}

Verdict RunOn(const Setting& setting, const Practice& target) {
    const std::wstring script =
        WriteScript(setting, L"right.txt", target.Line(L"Window.SetText", L"12 \"by a script\" 5000"));
    const Output output = Run(setting, {L"run", L"--work-folder", (setting.work / "run").wstring(), script});
    Verdict verdict = Expect(output, 0, "1 done, 0 failed");
    if (verdict.result != Result::Passed) return verdict;
    return PassedIf(TextOf(target.Control(12)) == L"by a script",
                    "the field holds \"" + ToUtf8(TextOf(target.Control(12))) + "\"");
}

Verdict RunInVain(const Setting& setting, const Practice& target) {
    const std::wstring script = WriteScript(setting, L"vain.txt", target.Line(L"Window.ClickButton", L"4711 300"));
    return Expect(Run(setting, {L"run", L"--work-folder", (setting.work / "run").wstring(), script}), 1,
                  "control_not_found");
}

}  // namespace

void CheckTool(const Setting& setting, Journal& journal) {
    const std::wstring wrong = WriteScript(setting, L"wrong.txt", L"Window.Clsoe c t 5000\n");
    const std::wstring right = WriteScript(setting, L"checked.txt", L"Window.Close c t 5000\n");
    journal.Do("--version tells the library's version",
               [&] { return Expect(Run(setting, {L"--version"}), 0, "Dialwright.dll " DIALWRIGHT_VERSION_STRING); });
    journal.Do("check finds nothing in a right script", [&] { return Expect(Run(setting, {L"check", right}), 0, ""); });
    journal.Do("check finds a wrong name", [&] { return Expect(Run(setting, {L"check", wrong}), 1, "DW102"); });
    const Practice target(setting);
    journal.Do("inspect shows the target's controls",
               [&] { return Expect(Run(setting, {L"inspect", L"--handle", Hex(target.Handle())}), 0, "Automatic"); });
    journal.Do("run carries a script out", [&] { return RunOn(setting, target); });
    journal.Do("run says why a line failed", [&] { return RunInVain(setting, target); });
}

}  // namespace dialwright::verify
