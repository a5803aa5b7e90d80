#pragma once

#include <memory>

#include "platform/windows.h"

namespace dialwright::tools {

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const noexcept { ::CloseHandle(handle); }
};

/// Owns a handle of the system; CreateFile's invalid value has to be made null before.
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

}  // namespace dialwright::tools
