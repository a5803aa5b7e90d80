#pragma once

#include <string>
#include <vector>

#include "platform/windows.h"
#include "verify/child_program.h"
#include "verify/setting.h"

namespace dialwright::verify {

/// The practice target in a process of its own, with a title of its own. It tells what its controls receive.
class Practice {
public:
    /// Throws where it does not come up. A token gives it other rights than ours.
    explicit Practice(const Setting& setting, HANDLE token = nullptr);

    [[nodiscard]] HWND Handle() const { return window; }
    [[nodiscard]] DWORD ProcessId() const { return program.Id(); }
    [[nodiscard]] HANDLE Process() const { return program.Process(); }
    [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(window, id); }
    /// `name "class" "title" rest`.
    [[nodiscard]] std::wstring Line(const std::wstring& name, const std::wstring& rest) const;

    /// What its controls have received since the last call, one line each.
    [[nodiscard]] std::vector<std::string> TakeEvents();

    /// Whether it has ended by then.
    [[nodiscard]] bool HasEnded(DWORD deadlineMs) { return program.WaitForEnd(deadlineMs).has_value(); }

private:
    std::wstring title;
    ChildProgram program;
    HWND window = nullptr;
    int marks = 0;
};

}  // namespace dialwright::verify
