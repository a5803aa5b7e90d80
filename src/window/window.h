#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <type_traits>

#include "language/tokenizer.h"
#include "platform/windows.h"
#include "window/polling.h"

namespace dialwright {

/// One top-level window, found when the object is made and used by one command. Every operation runs on the
/// caller's thread and logs what it does under its own name. Results tell success; a missing control is null.
/// Lookups and actions throw nothing of their own apart from what is said at each; all may throw std::bad_alloc.
class Window {
public:
    /// Searches the top-level windows until one matches both criteria or the timeout (0 means 10,000 ms) is over;
    /// `hwndWindow` stays null in the latter case. Throws std::regex_error for a criterion that does not compile
    /// or explodes on some window.
    Window(const std::wstring& className, const std::wstring& windowTitle, unsigned int timeoutMs, bool useRegex);

    // Control lookup.

    /// By control ID: a direct child of a standard dialog, any descendant of another window.
    [[nodiscard]] HWND GetControlHandle(int controlId) const;
    /// By 1-based child positions such as "2.1". Throws the errors of ConvertToInt for an unreadable segment.
    [[nodiscard]] HWND FindControlByHierarchy(const std::wstring& hierarchyPath) const;
    /// By rectangle relative to the top-level window's outer one; each edge may differ by the tolerance.
    [[nodiscard]] HWND FindControlByPosition(int left, int top, int right, int bottom, int tolerance) const;
    /// All zero, with an error line, when the platform has no rectangle for the handle.
    [[nodiscard]] static RECT GetScreenRect(HWND hwnd);
    /// Relative to the root window's outer rectangle; all zero, with an error line, for a dead handle.
    [[nodiscard]] static RECT GetLocalCoordinates(HWND hwnd);
    /// EnumChildWindows callback; the parameter is that of a GuardedContext<PositionSearchContext>.
    static BOOL CALLBACK EnumAllChildrenProc(HWND child, LPARAM context) noexcept;

    // Control actions. Sent messages block until the target has handled them, whatever the timeout. All are false for a
    // null handle. Typing, clearing and clicking are true otherwise, even where the control died in the meantime.

    /// A press and release of the left button in the middle, posted; whether they arrive is not looked at.
    static void SimulateMouseClick(HWND control);
    [[nodiscard]] static bool SetTextHelper(HWND control, const std::wstring& text);
    [[nodiscard]] static bool ClearTextHelper(HWND control);
    [[nodiscard]] static bool ClickHelper(HWND button);
    /// True when the item was found and taken.
    [[nodiscard]] static bool SelectDropdownByValueInternal(HWND combo, const std::wstring& value);
    [[nodiscard]] static bool SelectDropdownByIndexInternal(HWND combo, int index);
    /// True when the control reports the state afterwards.
    [[nodiscard]] static bool SetCheckState(HWND control, int state, const std::wstring& label);

    // Window state. Each searches its window by arguments[1] and arguments[2] and acts on it once.

    [[nodiscard]] static bool BringToFront(const TokenList& arguments, bool useRegex, unsigned int timeoutMs);
    [[nodiscard]] static bool MinimizeWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs);
    [[nodiscard]] static bool MaximizeWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs);
    [[nodiscard]] static bool RestoreWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs);
    [[nodiscard]] static bool CloseWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs);
    [[nodiscard]] static bool MoveWindow(const TokenList& arguments, bool useRegex, unsigned int timeoutMs, int x,
                                         int y, int width, int height);

    /// Whether less than the timeout has passed since the search began. Search and control attempts share it.
    [[nodiscard]] bool HasTimeLeft() const { return ElapsedMs(searchStart) < static_cast<std::int64_t>(timeoutMs); }

    HWND hwndWindow = nullptr;
    std::uint64_t timeoutMs;
    std::chrono::steady_clock::time_point searchStart;

private:
    [[nodiscard]] HWND FindChildControl(int controlId) const;
};

// A window search is a value that commands make and drop: three members, nothing to release.
static_assert(std::is_trivially_destructible_v<Window> && !std::is_polymorphic_v<Window>);
static_assert(sizeof(Window) == sizeof(HWND) + sizeof(std::uint64_t) + sizeof(std::chrono::steady_clock::time_point));

}  // namespace dialwright
