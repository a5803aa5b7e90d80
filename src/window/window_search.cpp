#include "window/window_search.h"

#include <array>

#include "language/criterion.h"
#include "platform/dpi.h"
#include "platform/stack.h"
#include "trace/trace.h"
#include "window/describe.h"
#include "window/enumeration.h"
#include "window/window.h"

namespace dialwright {
namespace {

constexpr std::uint64_t kDefaultTimeoutMs = 10000;
constexpr int kTextUnits = 256;  // longer titles are matched by their beginning

bool BelongsToProcess(HWND hwnd, DWORD processId) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(hwnd, &owner);
    return owner == processId;
}

/// The title decides first: the class expression is not even tried on a window whose title does not match.
bool MeetsCriteria(const wchar_t* title, const wchar_t* className, const WindowSearchContext& search) {
    if (search.useRegex) {
        return MatchesWhole(title, search.titleRegex) && MatchesWhole(className, search.classRegex);
    }
    return ContainsLiteral(title, search.title) && EqualsLiteral(className, search.className);
}

bool VisitTopLevelWindow(HWND hwnd, WindowSearchContext& search) {
    std::array<wchar_t, kTextUnits> title{};
    std::array<wchar_t, kTextUnits> className{};
    ::GetWindowTextW(hwnd, title.data(), kTextUnits);
    ::GetClassNameW(hwnd, className.data(), kTextUnits);
    if (search.processId != 0 && !BelongsToProcess(hwnd, search.processId)) return true;
    if (!MeetsCriteria(title.data(), className.data(), search)) return true;
    search.foundWindow = hwnd;
    return false;
}

GuardedContext<WindowSearchContext> PrepareSearch(const std::wstring& className, const std::wstring& title,
                                                  bool useRegex) {
    GuardedContext<WindowSearchContext> search;
    search.title = title;
    search.className = className;
    search.useRegex = useRegex;
    if (useRegex) {
        search.titleRegex = CompileCriterion(title, StackBytesLeft());
        search.classRegex = CompileCriterion(className, StackBytesLeft());
    }
    return search;
}

HWND EnumerateOnce(GuardedContext<WindowSearchContext>& search) {
    ::EnumWindows(&EnumTopLevelProc, CallbackParameter(search));
    search.RethrowError();
    return search.foundWindow;
}

}  // namespace

BOOL CALLBACK EnumTopLevelProc(HWND hwnd, LPARAM context) noexcept {
    return VisitGuarded<WindowSearchContext>(
        context, [hwnd](WindowSearchContext& search) { return VisitTopLevelWindow(hwnd, search); });
}

Window::Window(const std::wstring& className, const std::wstring& windowTitle, unsigned int timeoutMs, bool useRegex)
    : timeoutMs(timeoutMs == 0 ? kDefaultTimeoutMs : timeoutMs), searchStart(std::chrono::steady_clock::now()) {
    constexpr const char* kTag = "Window::Window";
    const int printedTimeout = static_cast<int>(this->timeoutMs);
    TraceLog(kTag, LOG_INFO,
             "Initializing window search:\nClass:    %ls\nTitle:    %ls\nTimeout:  %dms\nRegex:    %ls\nPID:      %ls",
             className.c_str(), windowTitle.c_str(), printedTimeout, useRegex ? L"Yes" : L"No", L"Any");
    RequestPerMonitorDpiAwareness();

    auto search = PrepareSearch(className, windowTitle, useRegex);
    while (HasTimeLeft()) {
        hwndWindow = EnumerateOnce(search);
        if (hwndWindow != nullptr) {
            TraceLog(kTag, LOG_INFO, "Window found successfully. Parent Window Handle: 0x%ls",
                     FormatHandleHex(hwndWindow).c_str());
            return;
        }
        SleepForPollInterval();
    }
    TraceLog(kTag, LOG_ERROR, "Window search failed after %dms", printedTimeout);
}

}  // namespace dialwright
