#include "trace/trace.h"
#include "window/window.h"

namespace dialwright {
namespace {

/// The six operations log alike: their name opens the messages of a failure.
struct Operation {
    const char* tag;
    const char* name;
};

/// The window that a command names, or null with the operation's own message.
HWND FindTarget(const Operation& operation, const TokenList& arguments, bool useRegex, unsigned int timeoutMs) {
    const HWND hwnd = Window(arguments[1], arguments[2], timeoutMs, useRegex).hwndWindow;
    if (hwnd == nullptr) TraceLog(operation.tag, LOG_ERROR, "%s: No valid window handle", operation.name);
    return hwnd;
}

bool ReportFailure(const Operation& operation) {
    const int error = static_cast<int>(::GetLastError());
    TraceLog(operation.tag, LOG_ERROR, "%s failed with error: %d", operation.name, error);
    return false;
}

bool ReportSuccess(const Operation& operation, const char* message) {
    TraceLog(operation.tag, LOG_DEBUG, "%s", message);
    return true;
}

bool Show(HWND hwnd, int command, const Operation& operation, const char* done) {
    if (hwnd == nullptr) return false;
    // Kept on purpose: the platform's result says whether the window was visible before, so a hidden window is
    // reported as a failure although it is shown now, with whatever the last error then is.
    return ::ShowWindow(hwnd, command) ? ReportSuccess(operation, done) : ReportFailure(operation);
}

/// Joins this thread's input state to the target's, where the platform allows it, for as long as it lives.
class AttachedInput {
public:
    explicit AttachedInput(HWND hwnd) noexcept
        : target(::GetWindowThreadProcessId(hwnd, nullptr)),
          self(::GetCurrentThreadId()),
          attached(::AttachThreadInput(self, target, TRUE)) {}
    ~AttachedInput() {
        if (!attached) return;
        const DWORD error = ::GetLastError();  // what failed before must still be told
        ::AttachThreadInput(self, target, FALSE);
        ::SetLastError(error);
    }
    AttachedInput(const AttachedInput&) = delete;
    AttachedInput& operator=(const AttachedInput&) = delete;

private:
    DWORD target;
    DWORD self;
    BOOL attached;
};

/// Above all others, and then no longer topmost: the pair leaves the window first in its ordinary order.
void RaiseAboveOthers(HWND hwnd) {
    constexpr UINT kFlags = SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW;
    ::SetWindowPos(hwnd, HWND_TOPMOST, 0, 0, 0, 0, kFlags);
    ::SetWindowPos(hwnd, HWND_NOTOPMOST, 0, 0, 0, 0, kFlags);
}

bool TakeForeground(HWND hwnd) {
    const AttachedInput input(hwnd);
    RaiseAboveOthers(hwnd);
    return ::SetForegroundWindow(hwnd) != FALSE;
}

}  // namespace

bool Window::MinimizeWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs) {
    constexpr Operation kOperation{.tag = "Window::MinimizeWindow", .name = "MinimizeWindow"};
    const HWND hwnd = FindTarget(kOperation, arguments, useRegex, timeoutMs);
    return Show(hwnd, SW_MINIMIZE, kOperation, "Window minimized");
}

bool Window::MaximizeWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs) {
    constexpr Operation kOperation{.tag = "Window::MaximizeWindow", .name = "MaximizeWindow"};
    const HWND hwnd = FindTarget(kOperation, arguments, useRegex, timeoutMs);
    return Show(hwnd, SW_MAXIMIZE, kOperation, "Window maximized");
}

bool Window::RestoreWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs) {
    constexpr Operation kOperation{.tag = "Window::RestoreWindow", .name = "RestoreWindow"};
    const HWND hwnd = FindTarget(kOperation, arguments, useRegex, timeoutMs);
    return Show(hwnd, SW_RESTORE, kOperation, "Window restored");
}

bool Window::CloseWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs) {
    constexpr Operation kOperation{.tag = "Window::CloseWindow", .name = "CloseWindow"};
    const HWND hwnd = FindTarget(kOperation, arguments, useRegex, timeoutMs);
    if (hwnd == nullptr) return false;
    return ::PostMessageW(hwnd, WM_CLOSE, 0, 0) ? ReportSuccess(kOperation, "Window close requested")
                                                : ReportFailure(kOperation);
}

bool Window::MoveWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs, int x, int y, int width,
                        int height) {
    constexpr Operation kOperation{.tag = "Window::MoveWindow", .name = "MoveWindow"};
    const HWND hwnd = FindTarget(kOperation, arguments, useRegex, timeoutMs);
    if (hwnd == nullptr) return false;
    if (!::MoveWindow(hwnd, x, y, width, height, TRUE)) return ReportFailure(kOperation);
    TraceLog(kOperation.tag, LOG_DEBUG, "Moved window to X:%d Y:%d W:%d H:%d", x, y, width, height);
    return true;
}

bool Window::BringToFront(const TokenList& arguments, bool useRegex, unsigned int timeoutMs) {
    constexpr Operation kOperation{.tag = "Window::BringToFront", .name = "BringToFront"};
    const HWND hwnd = FindTarget(kOperation, arguments, useRegex, timeoutMs);
    if (hwnd == nullptr) return false;
    if (::IsIconic(hwnd)) ::ShowWindow(hwnd, SW_RESTORE);
    if (TakeForeground(hwnd)) return ReportSuccess(kOperation, "Window brought to front successfully");
    const int error = static_cast<int>(::GetLastError());
    TraceLog(kOperation.tag, LOG_ERROR, "BringToFront failed (Error %d). Foreground access may be restricted.", error);
    return false;
}

}  // namespace dialwright
