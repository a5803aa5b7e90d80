#include <array>
#include <cwchar>

#include "language/numbers.h"
#include "language/splitting.h"
#include "trace/trace.h"
#include "window/describe.h"
#include "window/enumeration.h"
#include "window/window.h"

namespace dialwright {
namespace {

struct ControlIdSearchContext {
    int controlId;
    HWND* result;
};

bool IsStandardDialog(HWND hwnd) {
    std::array<wchar_t, 256> className{};
    ::GetClassNameW(hwnd, className.data(), static_cast<int>(className.size()));
    return std::wcscmp(className.data(), L"#32770") == 0;
}

bool VisitDescendant(HWND child, const ControlIdSearchContext& search) {
    if (::GetDlgCtrlID(child) != search.controlId) return true;
    // Kept on purpose: the log names the callback within the function, as readers of it expect.
    TraceLog("Window::FindChildControl::<lambda_1>::operator ()", LOG_INFO,
             "Found matching child control: Handle: 0x%ls ID: %d", FormatHandleHex(child).c_str(), search.controlId);
    *search.result = child;
    return false;
}

constexpr const char* kHierarchyTag = "Window::FindControlByHierarchy";

// Kept on purpose: the messages of the path lookup that are put together in pieces print handles in lower case, the
// others in upper case.
void LogAssembled(LogLevel level, const std::wstring& message) {
    TraceLog(kHierarchyTag, level, "%ls", message.c_str());
}

/// The child of `parent` at the 1-based position that the segment names, or null.
HWND StepIntoChild(HWND parent, const std::wstring& segment) {
    TraceLog(kHierarchyTag, LOG_DEBUG, "Processing segment: %ls", segment.c_str());
    const int position = ConvertToInt(segment);
    HWND child = ::GetWindow(parent, GW_CHILD);
    for (int walked = 1; ::IsWindow(child); ++walked) {
        const int controlId = ::GetDlgCtrlID(child);
        TraceLog(kHierarchyTag, LOG_DEBUG, "Enumerating child window: 0x%ls with control ID: %d",
                 FormatHandleHex(child).c_str(), controlId);
        if (walked == position) {
            const std::wstring handle = FormatHandleLowerHex(child);
            LogAssembled(LOG_DEBUG, L"Found child window with control ID: " + std::to_wstring(::GetDlgCtrlID(child)) +
                                        L" and HWND: 0x" + handle);
            LogAssembled(LOG_INFO, L"Successfully found child window: 0x" + handle + L" for segment: " + segment);
            return child;
        }
        child = ::GetWindow(child, GW_HWNDNEXT);
    }
    return nullptr;
}

}  // namespace

HWND Window::GetControlHandle(int controlId) const {
    constexpr const char* kTag = "Window::GetControlHandle";
    if (hwndWindow == nullptr) {
        TraceLog(kTag, LOG_ERROR, "GetControlHandle - Parent window not initialized");
        return nullptr;
    }
    if (!IsStandardDialog(hwndWindow)) return FindChildControl(controlId);
    const HWND control = ::GetDlgItem(hwndWindow, controlId);
    TraceLog(kTag, LOG_DEBUG, "Standard dialog control handle: 0x%ls", FormatHandleHex(control).c_str());
    return control;
}

HWND Window::FindChildControl(int controlId) const {
    HWND control = nullptr;
    GuardedContext<ControlIdSearchContext> search{{.controlId = controlId, .result = &control}, nullptr};
    ::EnumChildWindows(
        hwndWindow,
        [](HWND child, LPARAM parameter) noexcept -> BOOL {
            return VisitGuarded<ControlIdSearchContext>(
                parameter, [child](const ControlIdSearchContext& context) { return VisitDescendant(child, context); });
        },
        CallbackParameter(search));
    search.RethrowError();
    if (control == nullptr) {
        TraceLog("Window::FindChildControl", LOG_ERROR, "Child control not found - ID: %d", controlId);
    }
    return control;
}

HWND Window::FindControlByHierarchy(const std::wstring& hierarchyPath) const {
    if (hwndWindow == nullptr) {
        TraceLog(kHierarchyTag, LOG_ERROR, "Error: hwndWindow is null. Cannot traverse hierarchy.");
        return nullptr;
    }
    LogAssembled(LOG_DEBUG,
                 L"Starting to find control by hierarchy. Initial hwndWindow: 0x" + FormatHandleLowerHex(hwndWindow));
    HWND current = hwndWindow;
    for (const std::wstring& segment : SplitHierarchyPath(hierarchyPath)) {
        current = StepIntoChild(current, segment);
        if (current == nullptr) {
            TraceLog(kHierarchyTag, LOG_ERROR, "Failed to find child window at segment: %ls in hierarchy path: %ls",
                     segment.c_str(), hierarchyPath.c_str());
            return nullptr;
        }
    }
    LogAssembled(LOG_DEBUG, L"Final control HWND found: 0x" + FormatHandleLowerHex(current));
    return current;
}

}  // namespace dialwright
