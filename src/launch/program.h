#pragma once

namespace dialwright {

class Program {
public:
    /// Starts a program by the command line "programPath arguments" and stores its process ID where `processId` is
    /// not null; false, with a log line and nothing stored, where the platform cannot start it. Does not wait and
    /// keeps no handle. Throws only std::bad_alloc.
    [[nodiscard]] static bool Launch(const wchar_t* programPath, const wchar_t* arguments, unsigned long* processId);
};

}  // namespace dialwright
