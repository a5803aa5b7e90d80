#pragma once

#include <string>

#include "platform/windows.h"

namespace dialwright::bench {

/// What a target is to have.
struct TargetShape {
    int windows = 1;
    int children = 1;
    int depth = 1;
};

/// A running bench_target.exe, which lies beside this program. Where it cannot be started, this program ends with 1.
class TargetProcess {
public:
    explicit TargetProcess(const TargetShape& shape);
    ~TargetProcess();
    TargetProcess(const TargetProcess&) = delete;
    TargetProcess& operator=(const TargetProcess&) = delete;

    [[nodiscard]] static std::wstring Title(const std::wstring& name);
    [[nodiscard]] static HWND Find(const std::wstring& name);

    /// Returns when the target has handled all that was posted to it.
    void Settle() const;

private:
    HANDLE ready;
    HANDLE settled;
    HWND controls = nullptr;
    PROCESS_INFORMATION process{};
};

/// Says what is wrong on standard error, and ends the program with 1.
[[noreturn]] void Fail(const std::string& what);

/// Ends the program where `sound` is false.
inline void Require(bool sound, const std::string& what) {
    if (!sound) Fail(what);
}

}  // namespace dialwright::bench
