// What must fail: a wrong line, a window or control that is not there; and how long the library waits for it.

#include <string>

#include "verify/checks.h"
#include "verify/library.h"
#include "verify/outside.h"
#include "verify/practice.h"

namespace dialwright::verify {
namespace {

constexpr double kTimeoutMs = 400;
/// Far more than a timeout may be overdrawn on a machine that is busy.
constexpr double kMostMs = kTimeoutMs + 3000;
constexpr double kAtOnceMs = 2000;

Verdict ExpectValid(int result, int expected) {
    return PassedIf(result == expected, "result " + std::to_string(result));
}

Verdict ExpectTimeout(const TimedCall& call) {
    return PassedIf(call.result == 0 && call.milliseconds >= kTimeoutMs - 20 && call.milliseconds < kMostMs,
                    Shown(call) + " with a timeout of 400 ms");
}

Verdict ExpectRefusal(const TimedCall& call) {
    return PassedIf(call.result == 0 && call.milliseconds < kAtOnceMs, Shown(call));
}

void TryTargets(const Library& library, const Setting& setting, Journal& journal) {
    const Practice target(setting);
    const auto run = [&](const wchar_t* name, const wchar_t* rest) {
        return Execute(library, target.Line(name, rest));
    };
    journal.Do("a control that is not there", [&] { return ExpectTimeout(run(L"Window.ClickButton", L"4711 400")); });
    journal.Do("a path that leads nowhere", [&] { return ExpectTimeout(run(L"Window.ClickButton.Path", L"99 400")); });
    journal.Do("a rectangle where nothing is",
               [&] { return ExpectTimeout(run(L"Window.ClickButton.Position", L"5000,5000,5001,5001 0 400")); });
    journal.Do("a control of the wrong kind", [&] { return ExpectTimeout(run(L"Window.SetCheckbox", L"12 1 400")); });
    journal.Do("an item that is not there",
               [&] { return ExpectTimeout(run(L"Window.SelectDropdown.Value", L"51 Omega 400")); });
    journal.Do("a disabled control", [&] { return ExpectTimeout(run(L"Window.SetCheckbox", L"34 1 400")); });
    journal.Do("nothing was changed by these", [&] {
        const bool clean = TextOf(target.Control(12)).empty() &&
                           Send(target.Control(34), BM_GETCHECK) == BST_UNCHECKED &&
                           Send(target.Control(51), CB_GETCURSEL) == CB_ERR;
        return PassedIf(clean, clean ? "all as before" : "a control has changed");
    });
}

}  // namespace

void CheckRefusals(const Setting& setting, Journal& journal) {
    const Library library(setting);
    journal.Do("a right line is valid",
               [&] { return ExpectValid(library->validateCommand(L"Window.Close c t 5"), 1); });
    journal.Do("an unknown name is not",
               [&] { return ExpectValid(library->validateCommand(L"Window.Clsoe c t 5"), 0); });
    journal.Do("too few arguments are not",
               [&] { return ExpectValid(library->validateCommand(L"Window.SetText c t"), 0); });
    journal.Do("an empty line is not", [&] { return ExpectValid(library->validateCommand(L""), 0); });
    journal.Do("an unknown name is refused at once",
               [&] { return ExpectRefusal(Execute(library, L"Window.Clsoe c t 5000")); });
    journal.Do("a number that is none is refused at once",
               [&] { return ExpectRefusal(Execute(library, L"Window.ClickButton c t abc 5000")); });
    journal.Do("an expression that is none is refused at once",
               [&] { return ExpectRefusal(Execute(library, L"Window.Close ( t 5000")); });
    journal.Do("a window that is not there",
               [&] { return ExpectTimeout(Execute(library, L"Window.Close NoSuchClass none 400")); });
    TryTargets(library, setting, journal);
}

}  // namespace dialwright::verify
