#pragma once

#include <filesystem>

#include "look/unique_handle.h"

namespace dialwright::tools {

/// Where a worker runs. Its trace lies beside its program, so each worker that runs at the same time needs a folder of
/// its own: the trace of two programs in one folder would go to the first alone.
class HostPlace {
public:
    /// Takes a free folder below `base` and puts the worker's program there, or falls back on the program where it is
    /// when none can be had.
    HostPlace(const std::filesystem::path& program, const std::filesystem::path& base);

    [[nodiscard]] const std::filesystem::path& Program() const { return program; }
    [[nodiscard]] std::filesystem::path TraceFolder() const;
    /// False where the trace may be missing, as other workers may run in the same folder or it cannot be written.
    [[nodiscard]] bool IsOwn() const { return lock != nullptr; }
    /// Goes back to the program where it is; for a system that runs nothing from the user's folders.
    void GiveUp();

private:
    std::filesystem::path original;
    std::filesystem::path program;
    UniqueHandle lock;
};

/// Where the first worker's trace lies.
[[nodiscard]] std::filesystem::path FirstTraceFolder(const std::filesystem::path& base);

/// The folder for workers below the user's local application data; empty where the system does not tell it.
[[nodiscard]] std::filesystem::path UsersHostFolder();

}  // namespace dialwright::tools
