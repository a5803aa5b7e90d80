#include "verify/command_effects.h"

#include <algorithm>
#include <stdexcept>

#include "platform/text_encoding.h"
#include "verify/outside.h"

namespace dialwright::verify {
namespace {

constexpr int kEdit = 12;
constexpr int kGreeting = 15;
constexpr int kButton = 21;
constexpr int kCheck = 31;
constexpr int kRadio = 42;
constexpr int kDropdown = 51;

/// What "100,80 520,360" means.
constexpr Rectangle kMoved{.left = 100, .top = 80, .right = 620, .bottom = 440};
/// A window that is not aware of the scale rounds its place.
constexpr int kRounding = 2;

void SetText(HWND control, const wchar_t* text) { Send(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)); }

std::ptrdiff_t CountOf(const Events& events, std::string_view part) {
    return std::ranges::count_if(events,
                                 [&](const std::string& event) { return event.find(part) != std::string::npos; });
}

/// A control that is changed silently tells its parent nothing.
std::string Loudness(const Events& events, int control) {
    const auto count = CountOf(events, "WM_COMMAND " + std::to_string(control) + " ");
    return count == 0 ? "" : "the parent was notified " + std::to_string(count) + " times, and should not be";
}

std::string Expect(bool holds, const char* fault) { return holds ? "" : fault; }

void EmptyEdit(const Practice& target) { SetText(target.Control(kEdit), L""); }

std::string TypedFault(Practice& target, const Events& events) {
    const std::wstring text = TextOf(target.Control(kEdit));
    if (text != kTypedText) return "the field holds \"" + ToUtf8(text) + "\"";
    return Expect(CountOf(events, "posted window WM_COMMAND 12 EN_CHANGE") == 1, "no EN_CHANGE was posted");
}

void FillGreeting(const Practice& target) { SetText(target.Control(kGreeting), L"Hello"); }

std::string ClearedFault(Practice& target, const Events& events) {
    if (!TextOf(target.Control(kGreeting)).empty()) return "the field is not empty";
    return Expect(CountOf(events, "posted window WM_COMMAND 15 EN_CHANGE") == 1, "no EN_CHANGE was posted");
}

void LeaveAsItIs(const Practice&) {}

/// A click message and a press and release behind it, so that the button acts twice.
std::string ClickedFault(Practice&, const Events& events) {
    const auto sent = CountOf(events, "sent 21 BM_CLICK");
    const auto down = CountOf(events, "posted 21 WM_LBUTTONDOWN");
    const auto up = CountOf(events, "posted 21 WM_LBUTTONUP");
    const auto acted = CountOf(events, "WM_COMMAND 21 BN_CLICKED");
    if (sent == 1 && down == 1 && up == 1 && acted == 2) return {};
    return "clicks sent " + std::to_string(sent) + ", presses " + std::to_string(down) + ", releases " +
           std::to_string(up) + ", activations " + std::to_string(acted) + " in place of 1, 1, 1 and 2";
}

void SelectFirst(const Practice& target) { Send(target.Control(kDropdown), CB_SETCURSEL, 0); }

std::string SelectedFault(Practice& target, const Events& events) {
    const LRESULT selected = Send(target.Control(kDropdown), CB_GETCURSEL);
    if (selected != kItemIndex) return "item " + std::to_string(selected) + " is selected";
    return Loudness(events, kDropdown);
}

void Uncheck(const Practice& target) { Send(target.Control(kCheck), BM_SETCHECK, BST_UNCHECKED); }
void UncheckRadio(const Practice& target) { Send(target.Control(kRadio), BM_SETCHECK, BST_UNCHECKED); }

std::string CheckedFault(Practice& target, const Events& events) {
    if (Send(target.Control(kCheck), BM_GETCHECK) != BST_CHECKED) return "the box is not checked";
    return Loudness(events, kCheck);
}

std::string RadioFault(Practice& target, const Events& events) {
    if (Send(target.Control(kRadio), BM_GETCHECK) != BST_CHECKED) return "the radio button is not selected";
    return Loudness(events, kRadio);
}

void Show(const Practice& target, int how, bool (*isSo)(HWND)) {
    ::ShowWindow(target.Handle(), how);
    if (!Comes([&] { return isSo(target.Handle()); })) throw std::runtime_error("the target cannot be prepared");
}

bool IsMinimized(HWND window) { return ::IsIconic(window) != FALSE; }
bool IsMaximized(HWND window) { return ::IsZoomed(window) != FALSE; }
bool IsNormal(HWND window) { return !IsMinimized(window) && !IsMaximized(window); }

void MakeNormal(const Practice& target) { Show(target, SW_RESTORE, &IsNormal); }
void Minimize(const Practice& target) { Show(target, SW_MINIMIZE, &IsMinimized); }
void Maximize(const Practice& target) { Show(target, SW_MAXIMIZE, &IsMaximized); }

std::string MinimizedFault(Practice& target, const Events&) {
    return Expect(Comes([&] { return IsMinimized(target.Handle()); }), "the window is not minimized");
}

std::string MaximizedFault(Practice& target, const Events&) {
    return Expect(Comes([&] { return IsMaximized(target.Handle()); }), "the window is not maximized");
}

std::string RestoredFault(Practice& target, const Events&) {
    return Expect(Comes([&] { return IsNormal(target.Handle()); }), "the window is not restored");
}

std::string FrontFault(Practice& target, const Events&) {
    if (!Comes([&] { return !IsMinimized(target.Handle()); })) return "the window is still minimized";
    return Expect(Comes([&] { return ::GetForegroundWindow() == target.Handle(); }), "the window is not in front");
}

void PutElsewhere(const Practice& target) {
    MakeNormal(target);
    ::MoveWindow(target.Handle(), 10, 10, 600, 400, TRUE);
}

std::string MovedFault(Practice& target, const Events&) {
    const Rectangle place = ScreenRectangleOf(target.Handle());
    return EdgesWithinTolerance(place, kMoved, kRounding) ? "" : "the window is at " + Shown(place);
}

std::string ClosedFault(Practice& target, const Events&) {
    constexpr DWORD kPatienceMs = 5000;
    return Expect(target.HasEnded(kPatienceMs) && !::IsWindow(target.Handle()), "the window is still there");
}

constexpr CommandEffect kEffects[] = {
    {"Window.SetText", kEdit, &EmptyEdit, &TypedFault},
    {"Window.ClickButton", kButton, &LeaveAsItIs, &ClickedFault},
    {"Window.SelectDropdown", kDropdown, &SelectFirst, &SelectedFault},
    {"Window.ClearText", kGreeting, &FillGreeting, &ClearedFault},
    {"Window.Move", 0, &PutElsewhere, &MovedFault},
    {"Window.BringToFront", 0, &Minimize, &FrontFault},
    {"Window.Minimize", 0, &MakeNormal, &MinimizedFault},
    {"Window.Maximize", 0, &MakeNormal, &MaximizedFault},
    {"Window.Restore", 0, &Maximize, &RestoredFault},
    {"Window.Close", 0, &LeaveAsItIs, &ClosedFault},
    {"Window.SelectRadio", kRadio, &UncheckRadio, &RadioFault},
    {"Window.SetCheckbox", kCheck, &Uncheck, &CheckedFault},
};

}  // namespace

const CommandEffect& EffectOf(std::wstring_view command) {
    const std::string name = ToUtf8(command);
    for (const CommandEffect& effect : kEffects) {
        if (name.starts_with(effect.family)) return effect;
    }
    throw std::runtime_error("this program does not know what " + name + " does");
}

}  // namespace dialwright::verify
