#include "proven_lines.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <stdexcept>
#include <vector>

#include "run_tool.h"
#include "script/dialog_script_manager.h"
#include "support/log_capture.h"
#include "support/wait.h"
#include "support/windows_of_others.h"

#include <nlohmann/json.hpp>

namespace dialwright::testing {
namespace {

constexpr const wchar_t* kTyped = L"47";  // fields for numbers take it too

struct Control {
    HWND handle;
    int id;
    std::string kind;
    bool isReady;
    std::vector<std::wstring> lines;
};

/// The titles in these tests are plain.
std::wstring Widen(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

nlohmann::json InspectJson(HWND window, const std::wstring& way) {
    const Ended ended = RunTool({L"inspect", L"--json", L"--by", way, L"--handle", Widen(Hex(window))});
    return nlohmann::json::parse(ended.Text());
}

std::vector<Control> Inspect(HWND window, const std::wstring& way) {
    const auto json = InspectJson(window, way);
    std::vector<Control> controls;
    for (const auto& read : json.at("controls")) {
        const auto handle = std::stoull(read.at("handle").get<std::string>(), nullptr, 16);
        Control control{.handle = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(handle)),
                        .id = read.at("id"),
                        .kind = read.at("kind"),
                        .isReady = read.at("visible") && read.at("enabled"),
                        .lines = {}};
        for (const std::string line : read.at("commands")) control.lines.push_back(Widen(line));
        controls.push_back(std::move(control));
    }
    return controls;
}

bool IsTextField(const Control& control) { return control.kind == "edit" || control.kind == "password"; }
bool IsCheckable(const Control& control) { return control.kind == "checkbox" || control.kind == "radio"; }
bool IsDropdown(const Control& control) { return control.kind == "dropdown"; }

std::wstring StateOf(const Control& control) {
    if (IsTextField(control)) return TextOf(control.handle);
    if (IsCheckable(control)) return std::to_wstring(CheckStateOf(control.handle));
    if (IsDropdown(control)) return std::to_wstring(SelectionOf(control.handle));
    return L"";
}

using States = std::map<HWND, std::wstring>;

States StatesOf(const std::vector<Control>& controls) {
    States states;
    for (const Control& control : controls) states[control.handle] = StateOf(control);
    return states;
}

/// So that the line has something to change.
void Prepare(const Control& control) {
    if (IsCheckable(control)) ::SendMessageW(control.handle, BM_SETCHECK, BST_UNCHECKED, 0);
    if (IsDropdown(control)) ::SendMessageW(control.handle, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
}

int CountOf(HWND combo) { return static_cast<int>(::SendMessageW(combo, CB_GETCOUNT, 0, 0)); }

std::wstring LastItemOf(HWND combo) {
    const auto last = static_cast<WPARAM>(CountOf(combo) - 1);
    std::wstring text(static_cast<std::size_t>(::SendMessageW(combo, CB_GETLBTEXTLEN, last, 0)) + 1, L'\0');
    const LRESULT length = ::SendMessageW(combo, CB_GETLBTEXT, last, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::wstring Replace(std::wstring line, const std::wstring& placeholder, const std::wstring& text) {
    const std::size_t at = line.find(placeholder);
    return at == std::wstring::npos ? line : line.replace(at, placeholder.size(), text);
}

std::wstring FilledIn(const Control& control, const std::wstring& line) {
    if (IsDropdown(control)) return Replace(line, L"ITEM", LastItemOf(control.handle));
    return Replace(line, L"TEXT", kTyped);
}

/// What the line promises.
bool HasWhatTheLineSays(const Control& control, const std::wstring& line) {
    const std::wstring state = StateOf(control);
    if (line.starts_with(L"Window.SetText")) return state.find(kTyped) != std::wstring::npos;
    if (line.starts_with(L"Window.ClearText")) return state.empty();
    if (IsCheckable(control)) return state == L"1";
    const bool byIndex = line.substr(0, line.find(L' ')).ends_with(L"Index");
    return state == std::to_wstring(byIndex ? 0 : CountOf(control.handle) - 1);
}

/// Only the control itself, and what it is made of.
void ExpectNoOtherChange(const Control& control, const States& before, const States& after, const std::wstring& line) {
    for (const auto& [handle, state] : after) {
        if (state == before.at(handle)) continue;
        EXPECT_TRUE(handle == control.handle || ::IsChild(control.handle, handle) || ::IsChild(handle, control.handle))
            << Widen(Hex(handle)) << L" changed too: " << line;
    }
}

void ProveLine(const std::vector<Control>& all, const Control& control, const std::wstring& written) {
    Prepare(control);
    const std::wstring line = FilledIn(control, written);
    const States before = StatesOf(all);
    EXPECT_EQ(1, Execute(line)) << line;
    const States after = StatesOf(all);
    EXPECT_NE(before.at(control.handle), after.at(control.handle)) << line;
    EXPECT_TRUE(HasWhatTheLineSays(control, line)) << line;
    ExpectNoOtherChange(control, before, after, line);
}

}  // namespace

int Execute(const std::wstring& line) {
    const LogCapture quiet;
    return DialogScriptManager().ExecuteCommand(line.c_str());
}

int ProveLines(HWND window, const std::wstring& way, std::optional<int> restless) {
    std::vector<Control> controls = Inspect(window, way);
    std::erase_if(controls, [&](const Control& control) { return control.id == restless; });
    int proven = 0;
    for (const Control& control : controls) {
        if (!control.isReady || control.kind == "button") continue;
        if (IsDropdown(control) && CountOf(control.handle) == 0) continue;
        for (const std::wstring& line : control.lines) {
            ProveLine(controls, control, line);
            ++proven;
        }
    }
    return proven;
}

std::wstring LineFor(HWND window, int id, const std::wstring& way) {
    for (const Control& control : Inspect(window, way)) {
        if (control.id == id && !control.lines.empty()) return control.lines[0];
    }
    throw std::runtime_error("no line for the control " + std::to_string(id));
}

std::wstring WindowLine(HWND window, const std::wstring& command) {
    const auto json = InspectJson(window, L"id");
    for (const std::string written : json.at("commands")) {
        if (Widen(written).starts_with(command + L" ")) return Widen(written);
    }
    throw std::runtime_error("no such line for the window");
}

void ProveWindowLines(HWND window) {
    const std::map<std::wstring, std::function<bool()>> effects = {
        {L"Window.BringToFront", [&] { return ::GetForegroundWindow() == window; }},
        {L"Window.Minimize", [&] { return ::IsIconic(window) != FALSE; }},
        {L"Window.Maximize", [&] { return ::IsZoomed(window) != FALSE; }},
        {L"Window.Restore", [&] { return ::IsZoomed(window) == FALSE && ::IsIconic(window) == FALSE; }},
        {L"Window.Close", [&] { return ::IsWindow(window) == FALSE; }}};
    const auto json = InspectJson(window, L"id");
    EXPECT_EQ(effects.size(), json.at("commands").size());
    for (const std::string written : json.at("commands")) {
        const std::wstring line = Widen(written);
        EXPECT_EQ(1, Execute(line)) << line;
        const auto& hasHappened = effects.at(line.substr(0, line.find(L' ')));
        EXPECT_TRUE(WaitUntil([&] { return hasHappened(); })) << line;
    }
}

}  // namespace dialwright::testing
