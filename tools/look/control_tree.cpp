#include "look/control_tree.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <map>
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

ControlKind KindOf(HWND control, const std::wstring& className) {
    const LONG_PTR style = ::GetWindowLongPtrW(control, GWL_STYLE);
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

/// As the library's position commands count.
Rectangle FromCornerOf(HWND root, HWND control) {
    RECT own{};
    RECT frame{};
    ::GetWindowRect(control, &own);
    ::GetWindowRect(root, &frame);
    return RelativeTo(ToRectangle(own), ToRectangle(frame));
}

using FirstById = std::map<int, HWND>;

/// Of each ID the first descendant, in the order of the library.
FirstById FirstOfEachId(HWND window) {
    FirstById first;
    ::EnumChildWindows(
        window,
        [](HWND child, LPARAM map) noexcept -> BOOL {
            reinterpret_cast<FirstById*>(map)->try_emplace(::GetDlgCtrlID(child), child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&first));
    return first;
}

class TreeReader {
public:
    explicit TreeReader(HWND topLevel) : window(topLevel), root(::GetAncestor(topLevel, GA_ROOT)) {
        isDialog = ClassOf(window) == L"#32770";
        hung = ::IsHungAppWindow(window) != FALSE;
        if (!isDialog) firstById = FirstOfEachId(window);
    }

    std::vector<ControlInfo> Read() {
        ReadChildren(window, L"", 1);
        std::vector<Rectangle> places;
        for (const ControlInfo& control : controls) places.push_back(control.rectangle);
        for (std::size_t i = 0; i < controls.size(); ++i) controls[i].tolerance = ToleranceThatFinds(places, i);
        return std::move(controls);
    }

private:
    void ReadChildren(HWND parent, const std::wstring& path, int depth) {
        constexpr int kDeepest = 64;
        int position = 0;
        for (HWND child = ::GetWindow(parent, GW_CHILD); ::IsWindow(child); child = ::GetWindow(child, GW_HWNDNEXT)) {
            const std::wstring own = path + (path.empty() ? L"" : L".") + std::to_wstring(++position);
            controls.push_back(ReadControl(child, own, depth));
            if (depth < kDeepest) ReadChildren(child, own, depth + 1);
        }
    }

    /// A dialog is asked for its child, any other window for its first descendant. Some frameworks take the handle for
    /// the ID: that one is another at the next start.
    [[nodiscard]] bool IsTakenById(HWND control, int id) const {
        if (id == static_cast<int>(reinterpret_cast<std::intptr_t>(control))) return false;
        if (isDialog) return ::GetDlgItem(window, id) == control;
        const auto first = firstById.find(id);
        return first != firstById.end() && first->second == control;
    }

    [[nodiscard]] ControlInfo ReadControl(HWND control, const std::wstring& path, int depth) const {
        ControlInfo info;
        info.handle = control;
        info.path = path;
        info.depth = depth;
        info.id = ::GetDlgCtrlID(control);
        info.className = ClassOf(control);
        info.idIsOurs = IsTakenById(control, info.id);
        info.kind = KindOf(control, info.className);
        if (info.kind != ControlKind::Password && !hung) info.text = TextOf(control);
        info.rectangle = FromCornerOf(root, control);
        info.visible = ::IsWindowVisible(control) != FALSE;
        info.enabled = ::IsWindowEnabled(control) != FALSE;
        return info;
    }

    HWND window;
    HWND root;
    bool isDialog = false;
    bool hung = false;
    FirstById firstById;
    std::vector<ControlInfo> controls;
};

}  // namespace

const char* NameOf(ControlKind kind) {
    switch (kind) {
        case ControlKind::Edit: return "edit";
        case ControlKind::ReadOnlyEdit: return "readonly";
        case ControlKind::Password: return "password";
        case ControlKind::PushButton: return "button";
        case ControlKind::CheckBox: return "checkbox";
        case ControlKind::RadioButton: return "radio";
        case ControlKind::GroupBox: return "group";
        case ControlKind::Dropdown: return "dropdown";
        case ControlKind::Other: break;
    }
    return "other";
}

std::vector<ControlInfo> ReadControls(HWND window) { return TreeReader(window).Read(); }

std::vector<Rectangle> PasswordRectangles(HWND window) {
    struct Search {
        HWND root;
        std::vector<Rectangle> found;
    } search{.root = ::GetAncestor(window, GA_ROOT), .found = {}};
    ::EnumChildWindows(
        search.root,
        [](HWND child, LPARAM parameter) noexcept -> BOOL {
            auto& [root, found] = *reinterpret_cast<Search*>(parameter);
            const bool isShown = ::IsWindowVisible(child) != FALSE;
            if (isShown && KindOf(child, ClassOf(child)) == ControlKind::Password) {
                found.push_back(FromCornerOf(root, child));
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace dialwright::tools
