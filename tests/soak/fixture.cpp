#include "fixture.h"

#include <algorithm>
#include <array>

#include "support/practice_window.h"
#include "support/windows_of_others.h"

namespace dialwright::testing {
namespace {

struct KindOfId {
    int id;
    ControlKind kind;
};

using enum ControlKind;

constexpr std::array<KindOfId, 18> kKinds = {{{12, Edit},
                                              {13, Edit},
                                              {14, Edit},
                                              {15, Edit},
                                              {63, Edit},
                                              {70, Edit},
                                              {21, Push},
                                              {22, Push},
                                              {31, AutoCheck},
                                              {64, AutoCheck},
                                              {32, ManualCheck},
                                              {33, ThreeState},
                                              {34, RefusedCheck},
                                              {35, RefusedCheck},
                                              {41, Radio},
                                              {42, Radio},
                                              {51, Dropdown},
                                              {52, Dropdown}}};

std::vector<HWND> DescendantsOf(HWND window) {
    std::vector<HWND> descendants;
    ::EnumChildWindows(
        window,
        [](HWND child, LPARAM parameter) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&descendants));
    return descendants;
}

int PositionAmongSiblings(HWND control) {
    int position = 1;
    for (HWND before = ::GetWindow(control, GW_HWNDPREV); before != nullptr;
         before = ::GetWindow(before, GW_HWNDPREV)) {
        ++position;
    }
    return position;
}

std::vector<int> PathOf(HWND control, HWND window) {
    std::vector<int> path;
    for (HWND at = control; at != window; at = ::GetParent(at)) path.insert(path.begin(), PositionAmongSiblings(at));
    return path;
}

bool IsReachedById(HWND control, int id, const Fixture& fixture, const std::vector<HWND>& descendants) {
    if (fixture.isDialog) return ::GetDlgItem(fixture.window, id) == control;
    return *std::ranges::find(descendants, id, &::GetDlgCtrlID) == control;
}

std::string NameOfParent(HWND control, HWND window) {
    const HWND parent = ::GetParent(control);
    return parent == window ? "window" : std::to_string(::GetDlgCtrlID(parent));
}

}  // namespace

Fixture ReadFixture(HWND window, const std::wstring& windowClass, const std::wstring& title) {
    Fixture fixture{.isDialog = windowClass == kDialogClass,
                    .windowClass = windowClass,
                    .title = title,
                    .window = window,
                    .place = ScreenRectOf(window),
                    .controls = {}};
    const std::vector<HWND> descendants = DescendantsOf(window);
    for (const HWND control : descendants) {
        const int id = ::GetDlgCtrlID(control);
        const auto* const kind = std::ranges::find(kKinds, id, &KindOfId::id);
        if (kind == kKinds.end()) continue;
        fixture.controls.push_back({.kind = kind->kind,
                                    .id = id,
                                    .handle = control,
                                    .path = PathOf(control, window),
                                    .place = RelativeRectOf(control),
                                    .reachedById = IsReachedById(control, id, fixture, descendants),
                                    .parent = NameOfParent(control, window)});
    }
    return fixture;
}

}  // namespace dialwright::testing
