#include "model.h"

#include <utility>

#include "platform/text_encoding.h"
#include "support/windows_of_others.h"

namespace dialwright::testing {
namespace {

constexpr int kNoItem = -1;
constexpr int kStatesOfThreeState = 3;

int FirstState(const FixtureControl& control) { return control.kind == ControlKind::Dropdown ? kNoItem : 0; }

/// "sent 12 WM_CHAR U+0061" without its arguments. Of a notification the ID and the code belong to the name.
std::string NameOf(const std::string& event) {
    if (event.find(" WM_COMMAND ") != std::string::npos) return event;
    const std::size_t receiver = event.find(' ');
    const std::size_t name = event.find(' ', receiver + 1);
    return event.substr(0, event.find(' ', name + 1));
}

/// What arises within other messages is left out, but for the clicks that a program hears of; so is what we ask, and
/// what the system sends by itself (by number) when a window is restored.
bool Counts(const std::string& name) {
    if (name.starts_with("mark") || name.ends_with(" BM_GETCHECK") || name.find(" 0x") != std::string::npos)
        return false;
    return !name.starts_with("inner ") || name.ends_with(" BN_CLICKED");
}

std::string Shown(int value) { return std::to_string(value); }

}  // namespace

Model::Model(const Fixture& shown) : fixture(shown), texts(shown.controls.size()), place(shown.place) {
    for (const FixtureControl& control : fixture.controls) states.push_back(FirstState(control));
}

void Model::Type(std::size_t control, const std::wstring& text) { texts[control] = text; }

void Model::Clear(std::size_t control) { texts[control] = L""; }

void Model::Click(std::size_t control) {
    // Twice, by the sent message and by the posted pair.
    const ControlKind kind = fixture.controls[control].kind;
    if (kind == ControlKind::ThreeState) states[control] = (states[control] + 2) % kStatesOfThreeState;
    if (kind == ControlKind::Radio) ClearRadiosBut(control);
}

void Model::SetState(std::size_t control, int state) { states[control] = state; }

void Model::Maximize() {
    minimized = false;
    maximized = true;
}

void Model::Restore() {
    if (!minimized) maximized = false;
    minimized = false;
}

void Model::ClearRadiosBut(std::size_t control) {
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (fixture.controls[i].kind == ControlKind::Radio) states[i] = i == control ? 1 : 0;
    }
}

std::string Model::FaultOf(std::size_t index) const {
    const FixtureControl& control = fixture.controls[index];
    const std::string name = "control " + std::to_string(control.id);
    if (control.kind == ControlKind::Push) return {};
    if (control.kind == ControlKind::Edit) {
        const std::wstring text = TextOf(control.handle);
        if (text == texts[index].value_or(text)) return {};
        return name + " holds '" + ToUtf8(text) + "', not '" + ToUtf8(*texts[index]) + "'";
    }
    const int state =
        control.kind == ControlKind::Dropdown ? SelectionOf(control.handle) : CheckStateOf(control.handle);
    return state == states[index] ? "" : name + " is " + Shown(state) + ", not " + Shown(states[index]);
}

std::string Model::FaultOfWindow() const {
    if ((::IsIconic(fixture.window) != FALSE) != minimized) return minimized ? "is not minimized" : "is minimized";
    if (minimized) return {};
    if ((::IsZoomed(fixture.window) != FALSE) != maximized) return maximized ? "is not maximized" : "is maximized";
    if (maximized) return {};
    const Rectangle now = ScreenRectOf(fixture.window);
    return now == place ? "" : "the window is at " + testing::Shown(now) + ", not at " + testing::Shown(place);
}

std::string Model::FaultOfAll() const {
    for (std::size_t i = 0; i < fixture.controls.size(); ++i) {
        if (std::string fault = FaultOf(i); !fault.empty()) return fault;
    }
    return FaultOfWindow();
}

std::string Model::FaultOfMessages(const std::vector<std::string>& events) {
    std::map<std::string, int> received;
    for (const std::string& event : events) {
        const std::string name = NameOf(event);
        if (Counts(name)) ++received[name];
    }
    std::string fault;
    for (const auto& [name, count] : expected) {
        const int seen = std::exchange(received[name], 0);
        if (seen >= count.surely && seen <= count.surely + count.perhaps) continue;
        fault += "'" + name + "' " + Shown(seen) + " times, not " + Shown(count.surely) + "; ";
    }
    for (const auto& [name, seen] : received) {
        if (seen != 0) fault += "'" + name + "' " + Shown(seen) + " times, not at all; ";
    }
    expected.clear();
    return fault;
}

}  // namespace dialwright::testing
