#pragma once

#include "platform/windows.h"

namespace dialwright {

/// Puts the thread's last error back: what is done in between must not hide the caller's.
class KeepLastError {
public:
    KeepLastError() noexcept : kept(::GetLastError()) {}
    ~KeepLastError() { ::SetLastError(kept); }
    KeepLastError(const KeepLastError&) = delete;
    KeepLastError& operator=(const KeepLastError&) = delete;

private:
    DWORD kept;
};

}  // namespace dialwright
