#include "look/control_tree.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <set>
#include <string_view>

#include "look/position_rule.h"
#include "window/describe.h"

namespace dialwright::tools {
namespace {

constexpr UINT kAnswerMs = 500;
constexpr std::size_t kMostTextUnits = 1024;

bool IsClass(const std::wstring& name, const wchar_t* wanted) { return ::lstrcmpiW(name.c_str(), wanted) == 0; }

ControlKind KindOfButton(LONG_PTR style) {
    switch (style & BS_TYPEMASK) {
        case BS_PUSHBUTTON:
        case BS_DEFPUSHBUTTON: return ControlKind::PushButton;
        case BS_CHECKBOX:
        case BS_AUTOCHECKBOX:
        case BS_3STATE:
        case BS_AUTO3STATE: return ControlKind::CheckBox;
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON: return ControlKind::RadioButton;
        case BS_GROUPBOX: return ControlKind::GroupBox;
        default: return ControlKind::Other;
    }
}

/// Frameworks put their own names around the system's edit field: TEdit, WindowsForms10.EDIT.app.
bool SoundsLikeEdit(const std::wstring& className) {
    constexpr std::wstring_view kEdit = L"edit";
    const auto sameLetter = [](wchar_t one, wchar_t other) { return std::towlower(one) == std::towlower(other); };
    return std::ranges::search(className, kEdit, sameLetter).begin() != className.end();
}

ControlKind KindOf(LONG_PTR style, const std::wstring& className) {
    if (SoundsLikeEdit(className) && (style & ES_PASSWORD) != 0) return ControlKind::Password;
    if (IsClass(className, L"Edit") || className.starts_with(L"RichEdit") || className.starts_with(L"RICHEDIT")) {
        return (style & ES_READONLY) != 0 ? ControlKind::ReadOnlyEdit : ControlKind::Edit;
    }
    if (IsClass(className, L"Button")) return KindOfButton(style);
    if (IsClass(className, L"ComboBox")) return ControlKind::Dropdown;
    return ControlKind::Other;
}

std::wstring TextOf(HWND control) {
    std::array<wchar_t, kMostTextUnits> text{};
    DWORD_PTR length = 0;
    const LRESULT answered =
        ::SendMessageTimeoutW(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                              SMTO_ABORTIFHUNG | SMTO_BLOCK, kAnswerMs, &length);
    return answered != 0 ? std::wstring(text.data()) : std::wstring();
}

std::wstring ClassOf(HWND control) {
    std::array<wchar_t, 256> name{};
    ::GetClassNameW(control, name.data(), static_cast<int>(name.size()));
    return name.data();
}

Rectangle ScreenRectangle(HWND window) {
    RECT own{};
    ::GetWindowRect(window, &own);
    return ToRectangle(own);
}

/// Reads each control with as few questions to the system as will do: a window may have thousands.
class TreeReader {
public:
    explicit TreeReader(HWND topLevel) : window(topLevel) {
        frame = ScreenRectangle(::GetAncestor(window, GA_ROOT));
        isDialog = ClassOf(window) == L"#32770";
        hung = ::IsHungAppWindow(window) != FALSE;
    }

    std::vector<ControlInfo> Read() {
        ReadChildren({.handle = window, .path = L"", .depth = 0, .isVisible = ::IsWindowVisible(window) != FALSE});
        std::vector<Rectangle> places;
        for (const ControlInfo& control : controls) places.push_back(control.rectangle);
        for (std::size_t i = 0; i < controls.size(); ++i) controls[i].tolerance = ToleranceThatFinds(places, i);
        return std::move(controls);
    }

private:
    /// A window on the way down.
    struct Place {
        HWND handle;
        std::wstring path;
        int depth;
        bool isVisible;
    };

    void ReadChildren(const Place& parent) {
        constexpr int kDeepest = 64;
        int position = 0;
        for (HWND child = ::GetWindow(parent.handle, GW_CHILD); child != nullptr;
             child = ::GetWindow(child, GW_HWNDNEXT)) {
            const LONG_PTR style = ::GetWindowLongPtrW(child, GWL_STYLE);
            const Place own{.handle = child,
                            .path = parent.path + (parent.path.empty() ? L"" : L".") + std::to_wstring(++position),
                            .depth = parent.depth + 1,
                            .isVisible = parent.isVisible && (style & WS_VISIBLE) != 0};
            controls.push_back(ReadControl(own, style));
            if (own.depth <= kDeepest) ReadChildren(own);
        }
    }

    /// A dialog is asked for its first child with the ID, any other window for its first descendant. Some frameworks
    /// take the handle for the ID: that one is another at the next start.
    [[nodiscard]] bool IsTakenById(const Place& control, int id) {
        const bool counts = !isDialog || control.depth == 1;
        const bool isFirst = counts && idsSeen.insert(id).second;
        return isFirst && id != static_cast<int>(reinterpret_cast<std::intptr_t>(control.handle));
    }

    [[nodiscard]] ControlInfo ReadControl(const Place& control, LONG_PTR style) {
        ControlInfo info;
        info.handle = control.handle;
        info.path = control.path;
        info.depth = control.depth;
        info.id = ::GetDlgCtrlID(control.handle);
        info.className = ClassOf(control.handle);
        info.idIsOurs = IsTakenById(control, info.id);
        info.kind = KindOf(style, info.className);
        if (info.kind != ControlKind::Password && !hung) info.text = TextOf(control.handle);
        info.rectangle = RelativeTo(ScreenRectangle(control.handle), frame);
        info.visible = control.isVisible;
        info.enabled = (style & WS_DISABLED) == 0;
        return info;
    }

    HWND window;
    Rectangle frame;
    bool isDialog = false;
    bool hung = false;
    std::set<int> idsSeen;
    std::vector<ControlInfo> controls;
};

}  // namespace

std::vector<ControlInfo> ReadControls(HWND window) { return TreeReader(window).Read(); }

std::vector<Rectangle> PasswordRectangles(HWND window) {
    struct Search {
        Rectangle frame;
        std::vector<Rectangle> found;
    } search{.frame = ScreenRectangle(::GetAncestor(window, GA_ROOT)), .found = {}};
    ::EnumChildWindows(
        ::GetAncestor(window, GA_ROOT),
        [](HWND child, LPARAM parameter) noexcept -> BOOL {
            auto& [frame, found] = *reinterpret_cast<Search*>(parameter);
            const LONG_PTR style = ::GetWindowLongPtrW(child, GWL_STYLE);
            if (KindOf(style, ClassOf(child)) == ControlKind::Password && ::IsWindowVisible(child)) {
                found.push_back(RelativeTo(ScreenRectangle(child), frame));
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace dialwright::tools
