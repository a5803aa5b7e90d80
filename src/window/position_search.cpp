#include "window/position_search.h"

#include "trace/trace.h"
#include "window/describe.h"
#include "window/enumeration.h"
#include "window/window.h"

namespace dialwright {
namespace {

constexpr const char* kEnumTag = "Window::EnumAllChildrenProc";

Rectangle TargetOf(const PositionSearchContext& search) {
    return {.left = search.left, .top = search.top, .right = search.right, .bottom = search.bottom};
}

bool VisitChild(HWND child, PositionSearchContext& search, LPARAM context) {
    if (*search.result != nullptr) {
        TraceLog(kEnumTag, LOG_DEBUG, "EnumAllChildrenProc - Early exit (match already found)");
        return false;
    }
    const Rectangle local = ToRectangle(Window::GetLocalCoordinates(child));
    const Rectangle target = TargetOf(search);
    if (EdgesWithinTolerance(local, target, search.tolerance)) {
        *search.result = child;
        TraceLog(kEnumTag, LOG_INFO, "Position match found:\nHWND: 0x%ls\nActual:   %ls\nExpected: %ls\nTolerance: %d",
                 FormatHandleHex(child).c_str(), FormatRectangle(local).c_str(), FormatRectangle(target).c_str(),
                 search.tolerance);
        return false;
    }
    // Kept on purpose: the platform visits all descendants anyway, so windows below the first level are read more
    // than once, and after a match in here the next window of each enclosing enumeration logs an early exit.
    ::EnumChildWindows(child, &Window::EnumAllChildrenProc, context);
    return true;
}

}  // namespace

BOOL CALLBACK Window::EnumAllChildrenProc(HWND child, LPARAM context) noexcept {
    return VisitGuarded<PositionSearchContext>(
        context, [&](PositionSearchContext& search) { return VisitChild(child, search, context); });
}

HWND Window::FindControlByPosition(int left, int top, int right, int bottom, int tolerance) const {
    constexpr const char* kTag = "Window::FindControlByPosition";
    HWND control = nullptr;
    GuardedContext<PositionSearchContext> search{
        {.left = left, .top = top, .right = right, .bottom = bottom, .tolerance = tolerance, .result = &control},
        nullptr};
    const std::wstring target = FormatRectangle(TargetOf(search));
    TraceLog(kTag, LOG_INFO, "Starting position-based search:\nTarget Area: %ls\nTolerance:   %d\nParent:      0x%ls",
             target.c_str(), tolerance, FormatHandleHex(hwndWindow).c_str());

    const HWND root = ::GetAncestor(hwndWindow, GA_ROOT);
    if (root == nullptr) {
        TraceLog(kTag, LOG_ERROR, "Invalid window hierarchy for: 0x%ls", FormatHandleHex(hwndWindow).c_str());
        return nullptr;
    }
    ::EnumChildWindows(root, &Window::EnumAllChildrenProc, CallbackParameter(search));
    search.RethrowError();

    if (control != nullptr) {
        const RECT position = GetLocalCoordinates(control);
        TraceLog(kTag, LOG_INFO, "Position search successful:\nFound HWND: 0x%ls\nPosition:   %ls",
                 FormatHandleHex(control).c_str(), FormatRect(position).c_str());
    } else {
        TraceLog(kTag, LOG_WARNING, "Position search failed:\nTarget:    %ls\nTolerance: %d\nParent:    0x%ls",
                 target.c_str(), tolerance, FormatHandleHex(root).c_str());
    }
    return control;
}

RECT Window::GetScreenRect(HWND hwnd) {
    RECT rect{};
    if (!::GetWindowRect(hwnd, &rect)) {
        TraceLog("Window::GetScreenRect", LOG_ERROR, "GetWindowRect failed for HWND: 0x%ls",
                 FormatHandleHex(hwnd).c_str());
    }
    return rect;
}

RECT Window::GetLocalCoordinates(HWND hwnd) {
    constexpr const char* kTag = "Window::GetLocalCoordinates";
    if (hwnd == nullptr || !::IsWindow(hwnd)) {
        TraceLog(kTag, LOG_ERROR, "GetLocalCoordinates - Invalid window handle (HWND: 0x%ls)",
                 FormatHandleHex(hwnd).c_str());
        return {};
    }
    const HWND root = ::GetAncestor(hwnd, GA_ROOT);
    const Rectangle absolute = ToRectangle(GetScreenRect(hwnd));
    const Rectangle parent = ToRectangle(GetScreenRect(root));
    const Rectangle relative = RelativeTo(absolute, parent);
    TraceLog(kTag, LOG_DEBUG, "Coordinate transformation:\nAbsolute: %ls\nParent:   %ls\nRelative: %ls",
             FormatRectangle(absolute).c_str(), FormatRectangle(parent).c_str(), FormatRectangle(relative).c_str());
    return {.left = relative.left, .top = relative.top, .right = relative.right, .bottom = relative.bottom};
}

}  // namespace dialwright
