// Every command in both forms of matching, on a window of another process: its result, and its effect seen from there.

#include <string>

#include "language/commands.h"
#include "platform/text_encoding.h"
#include "verify/checks.h"
#include "verify/command_effects.h"
#include "verify/library.h"
#include "verify/outside.h"

namespace dialwright::verify {
namespace {

constexpr double kMostMs = 10000;

std::wstring ArgumentOf(ArgumentKind kind, HWND control) {
    switch (kind) {
        case ArgumentKind::ControlId: return std::to_wstring(::GetDlgCtrlID(control));
        case ArgumentKind::ControlPath: return std::to_wstring(PositionAmongSiblings(control));
        case ArgumentKind::Rectangle: return Argument(RelativeRectangleOf(control));
        case ArgumentKind::Tolerance: return L"3";
        case ArgumentKind::Text: return L"\"" + std::wstring(kTypedText) + L"\"";
        case ArgumentKind::ItemText: return kItemText;
        case ArgumentKind::DropdownIndex: return std::to_wstring(kItemIndex);
        case ArgumentKind::CheckState: return L"1";
        case ArgumentKind::Position: return L"100,80";
        case ArgumentKind::Size: break;
    }
    return L"520,360";
}

std::wstring LineOf(const CommandSpec& command, const std::wstring& suffix, const Practice& target) {
    const HWND control = target.Control(EffectOf(command.name).control);
    std::wstring rest;
    for (const ArgumentKind kind : command.Arguments()) rest += ArgumentOf(kind, control) + L" ";
    return target.Line(std::wstring(command.name) + suffix, rest + L"5000");
}

/// The system may refuse to let a window come to the front, and the library then says so.
bool IsRefusedForeground(const CommandSpec& command, const TimedCall& call, const Practice& target) {
    return command.name == L"Window.BringToFront" && call.result == 0 && ::GetForegroundWindow() != target.Handle();
}

Verdict TryCommand(const Library& library, const CommandSpec& command, const std::wstring& suffix, Practice& target) {
    const CommandEffect& effect = EffectOf(command.name);
    effect.prepare(target);
    (void)target.TakeEvents();
    const TimedCall call = Execute(library, LineOf(command, suffix, target));
    if (IsRefusedForeground(command, call, target))
        return Skipped("the system did not let the window come to the front, and the library said so");
    if (call.result != 1) return Failed(Shown(call));
    const bool isGone = command.name == L"Window.Close";
    const std::string fault = effect.fault(target, isGone ? Events() : target.TakeEvents());
    if (!fault.empty()) return Failed(Shown(call) + ", but " + fault);
    return PassedIf(call.milliseconds < kMostMs, Shown(call) + ", and its effect was seen");
}

/// Closing ends the target, and so comes last.
void TryAll(const Library& library, const std::wstring& suffix, const Setting& setting, Journal& journal) {
    Practice target(setting);
    for (const bool closes : {false, true}) {
        for (const CommandSpec& command : kCommands) {
            if ((command.name == L"Window.Close") != closes) continue;
            journal.Do(ToUtf8(std::wstring(command.name) + suffix),
                       [&] { return TryCommand(library, command, suffix, target); });
        }
    }
}

}  // namespace

void CheckCommands(const Setting& setting, Journal& journal) {
    const Library library(setting);
    TryAll(library, L"", setting, journal);
    TryAll(library, L".NonRegex", setting, journal);
}

}  // namespace dialwright::verify
