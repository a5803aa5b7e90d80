#include "run/suggestion.h"

#include <algorithm>
#include <array>
#include <map>
#include <vector>

#include "check/edit_distance.h"
#include "language/numbers.h"
#include "look/command_text.h"
#include "look/control_tree.h"
#include "look/window_list.h"
#include "platform/text_encoding.h"
#include "window/describe.h"

namespace dialwright::tools {
namespace {

constexpr std::size_t kMostNamed = 3;
constexpr std::size_t kMostListed = 12;

std::wstring Quoted(const std::wstring& text) { return L"\"" + text + L"\""; }

std::wstring Join(const std::vector<std::wstring>& parts, std::size_t most) {
    std::wstring text;
    for (std::size_t i = 0; i < (std::min)(parts.size(), most); ++i) text += (i == 0 ? L"" : L", ") + parts[i];
    return parts.size() > most ? text + L" …" : text;
}

// --- The window was not found.

/// Titles may be long, and the work grows with the product of the lengths.
std::size_t DistanceOf(const WindowInfo& window, const WindowCriteria& wanted) {
    constexpr std::size_t kMost = 80;
    return EditDistance(window.className.substr(0, kMost), wanted.className.substr(0, kMost)) +
           EditDistance(window.title.substr(0, kMost), wanted.title.substr(0, kMost));
}

bool MatchesLiterally(const WindowCriteria& wanted, const std::vector<WindowInfo>& windows) {
    const WindowMatcher literal({.className = wanted.className, .title = wanted.title, .literal = true});
    return std::ranges::any_of(windows, [&](const WindowInfo& window) { return literal.Takes(window); });
}

std::wstring SuggestWindow(const CommandLine& line) {
    const WindowCriteria wanted = line.Criteria();
    std::vector<WindowInfo> windows = ListTopLevelWindows();
    if (!wanted.literal && MatchesLiterally(wanted, windows)) {
        const std::wstring literal = line.tokens[0].text + L".NonRegex";
        const bool isPlain = EscapeForExpression(wanted.title) == wanted.title;
        return isPlain ? L"an expression must match the whole title: " + literal + L" takes a part of it, or write .*"
                       : L"would match if the expressions were literal: " + literal +
                             L", or a backslash before ( ) [ ] { } . * + ? ^ $ |";
    }
    std::erase_if(windows, [](const WindowInfo& window) { return !window.visible || window.title.empty(); });
    std::ranges::stable_sort(windows, {}, [&](const WindowInfo& window) { return DistanceOf(window, wanted); });
    std::vector<std::wstring> names;
    for (const WindowInfo& window : windows) {
        std::wstring name = window.className + L" " + Quoted(window.title);
        if (std::ranges::find(names, name) == names.end()) names.push_back(std::move(name));
    }
    if (names.empty()) return L"there is no visible window with a title";
    return L"nearest: " +
           Join({names.begin(), names.begin() + static_cast<std::ptrdiff_t>((std::min)(names.size(), kMostNamed))},
                kMostNamed);
}

// --- The control was not found.

ArgumentKind PlaceKind(const CommandLine& line) { return line.command->Arguments()[0]; }

/// The IDs that a command can use, the nearest first.
std::wstring SuggestId(const std::vector<ControlInfo>& controls, int wanted) {
    const auto deeper = std::ranges::find_if(
        controls, [&](const ControlInfo& control) { return control.id == wanted && !control.idIsOurs; });
    if (deeper != controls.end()) {
        return L"the ID stands at a control that is no child of the dialog: use its path " + deeper->path;
    }
    std::vector<int> ids;
    for (const ControlInfo& control : controls) {
        if (control.idIsOurs && control.id != 0) ids.push_back(control.id);
    }
    std::ranges::stable_sort(ids, {}, [&](int id) { return std::abs(static_cast<long long>(id) - wanted); });
    std::vector<std::wstring> texts;
    for (const int id : ids) texts.push_back(std::to_wstring(id));
    return texts.empty() ? L"" : L"IDs that exist: " + Join(texts, kMostListed);
}

std::wstring SuggestPath(const std::vector<ControlInfo>& controls) {
    std::vector<std::wstring> paths;
    for (const ControlInfo& control : controls) paths.push_back(control.path);
    return L"paths that exist: " + Join(paths, kMostListed);
}

std::wstring SuggestRectangle(const std::vector<ControlInfo>& controls, const std::wstring& wanted) {
    const auto distance = [&](const ControlInfo& control) {
        return EditDistance(FormatRectangle(control.rectangle), L"[" + wanted + L"]");
    };
    const auto nearest = std::ranges::min_element(controls, {}, distance);
    const Rectangle& there = nearest->rectangle;
    return L"a " + std::wstring(nearest->className) + L" lies at " + std::to_wstring(there.left) + L"," +
           std::to_wstring(there.top) + L"," + std::to_wstring(there.right) + L"," + std::to_wstring(there.bottom);
}

std::wstring SuggestControl(const CommandLine& line, HWND window) {
    constexpr std::size_t kPlace = 3;
    const std::vector<ControlInfo> controls = ReadControls(window);
    if (controls.empty()) return L"the window has no controls of its own: the program draws them itself";
    const std::wstring& place = line.tokens[kPlace].text;
    switch (PlaceKind(line)) {
        case ArgumentKind::ControlId: {
            int id = 0;
            return TryParseInt(place, &id) ? SuggestId(controls, id) : L"";
        }
        case ArgumentKind::ControlPath: return SuggestPath(controls);
        case ArgumentKind::Rectangle: return SuggestRectangle(controls, place);
        default: return L"";
    }
}

// --- The item was not found.

std::vector<std::wstring> ItemsOf(HWND combo) {
    constexpr UINT kAnswerMs = 500;
    const auto ask = [combo](UINT message, WPARAM index, LPARAM text) {
        DWORD_PTR answer = 0;
        const LRESULT answered =
            ::SendMessageTimeoutW(combo, message, index, text, SMTO_ABORTIFHUNG, kAnswerMs, &answer);
        return answered == 0 ? -1 : static_cast<int>(answer);
    };
    std::vector<std::wstring> items;
    const int count = ask(CB_GETCOUNT, 0, 0);
    for (int index = 0; index < count && items.size() <= kMostListed; ++index) {
        std::array<wchar_t, 256> text{};
        if (ask(CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0) >= static_cast<int>(text.size())) continue;
        ask(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
        items.push_back(Quoted(text.data()));
    }
    return items;
}

std::wstring SuggestItem(HWND control) {
    std::array<wchar_t, 64> name{};
    ::GetClassNameW(control, name.data(), static_cast<int>(name.size()));
    const std::vector<std::wstring> items = ItemsOf(control);
    if (items.empty()) return L"the control is of the class " + std::wstring(name.data()) + L" and has no items";
    return L"items: " + Join(items, kMostListed);
}

std::wstring SuggestWide(const CommandLine& line, const Reason& reason, HWND window, HWND control) {
    using Suggestion = std::wstring (*)(const CommandLine&, HWND, HWND);
    static const std::map<std::string, Suggestion> kByCode = {
        {"window_not_found", [](const CommandLine& l, HWND, HWND) { return SuggestWindow(l); }},
        {"control_not_found", [](const CommandLine& l, HWND w, HWND) { return SuggestControl(l, w); }},
        {"item_not_found", [](const CommandLine&, HWND, HWND c) { return SuggestItem(c); }},
        {"control_disabled",
         [](const CommandLine&, HWND, HWND) {
             return std::wstring(L"give the line more time, or do first what enables the control");
         }},
        {"no_time_left", [](const CommandLine&, HWND, HWND) { return std::wstring(L"give the line more time"); }},
        {"access_denied",
         [](const CommandLine&, HWND, HWND) {
             return std::wstring(L"run dialwright with the rights that the target has (as administrator)");
         }},
        {"foreground_refused",
         [](const CommandLine&, HWND, HWND) {
             return std::wstring(L"most commands need no foreground; the desktop may be locked");
         }},
        {"target_hung", [](const CommandLine&, HWND,
                           HWND) { return std::wstring(L"look at the target; --line-timeout gives it more time"); }},
        {"line_timeout",
         [](const CommandLine&, HWND, HWND) { return std::wstring(L"a larger --line-timeout gives it more time"); }},
        {"dialog_opened", [](const CommandLine&, HWND,
                             HWND) { return std::wstring(L"with --on-modal continue the next line can answer it"); }},
    };
    const auto found = kByCode.find(reason.code);
    return found == kByCode.end() ? L"" : found->second(line, window, control);
}

}  // namespace

std::string Suggest(const CommandLine& line, const Reason& reason, HWND window, HWND control) {
    return line.command == nullptr ? "" : ToUtf8(SuggestWide(line, reason, window, control));
}

}  // namespace dialwright::tools
