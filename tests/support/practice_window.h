#pragma once

#include <string>
#include <vector>

#include "platform/windows.h"
#include "support/child_process.h"

namespace dialwright::testing {

inline constexpr const wchar_t* kDialogClass = L"#32770";
inline constexpr const wchar_t* kPlainClass = L"PracticeTarget";

/// Short for a command that is to fail at its control, and long enough for a busy machine to come as far as the
/// control.
inline constexpr DWORD kBriefMs = 1000;

/// Texts for a title that no other window has; letters, digits, blanks and hyphens only.
[[nodiscard]] std::wstring UniqueTitle();

/// A practice target in a process of its own, with a title of its own.
class PracticeWindow {
public:
    explicit PracticeWindow(const std::wstring& windowClass = kDialogClass,
                            const std::vector<std::wstring>& moreOptions = {},
                            const std::wstring& windowTitle = UniqueTitle());

    [[nodiscard]] HWND Handle() const { return window; }
    [[nodiscard]] const std::wstring& Title() const { return title; }

    /// The first descendant with this ID.
    [[nodiscard]] HWND Control(int id) const;

    /// `name "class" "title" rest`, the criteria quoted.
    [[nodiscard]] std::wstring Line(const std::wstring& name, const std::wstring& rest = L"") const;
    /// With a timeout of `kBriefMs`, for commands that use it up.
    [[nodiscard]] std::wstring BriefLine(const std::wstring& name, const std::wstring& rest = L"") const;

    /// Carries out a command of the practice target and waits until that has happened.
    void Do(const std::wstring& command);
    /// Carries it out so much later, while this test goes on.
    void DoAfter(DWORD milliseconds, const std::wstring& command);

    /// What the window and its controls received since the last call, without what arose inside another message.
    [[nodiscard]] std::vector<std::string> TakeEvents();
    /// The same with the inner messages.
    [[nodiscard]] std::vector<std::string> TakeAllEvents();

    [[nodiscard]] ChildProcess& Process() { return process; }

private:
    std::wstring windowClass;
    std::wstring title;
    ChildProcess process;
    HWND window = nullptr;
    int marks = 0;
    std::vector<std::string> events;
};

}  // namespace dialwright::testing
