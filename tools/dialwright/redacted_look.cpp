#include "redacted_look.h"

#include <algorithm>
#include <utility>

#include "check/source_text.h"

namespace dialwright::tools {
namespace {

/// A dropdown's text stands in the edit control within it, and in itself.
bool IsOrBelongsTo(HWND control, const std::vector<HWND>& others) {
    return std::ranges::any_of(others, [control](HWND other) {
        return control == other || ::IsChild(other, control) ||
               (::IsChild(control, other) && ::GetParent(other) == control);
    });
}

}  // namespace

RedactedLook LookWithoutSecrets(WindowInfo window, const Redactor& redactor,
                                const std::vector<HWND>& controlsWithSecrets) {
    RedactedLook look{.window = std::move(window), .controls = {}, .blanked = {}};
    look.controls = ReadControls(look.window.handle);
    look.window.title = Wide(redactor.CleanPart(look.window.title));
    for (ControlInfo& control : look.controls) {
        const bool gotOne = IsOrBelongsTo(control.handle, controlsWithSecrets);
        std::wstring clean =
            Wide(gotOne && !control.text.empty() ? Redactor::Mask() : redactor.CleanPart(control.text));
        if (!gotOne && clean == control.text) continue;
        control.text = std::move(clean);
        look.blanked.push_back(control.rectangle);
    }
    return look;
}

std::vector<WindowInfo> WindowsWithoutSecrets(const Redactor& redactor) {
    std::vector<WindowInfo> windows = ListTopLevelWindows();
    for (WindowInfo& window : windows) window.title = Wide(redactor.CleanPart(window.title));
    return windows;
}

}  // namespace dialwright::tools
