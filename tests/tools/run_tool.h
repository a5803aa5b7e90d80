#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/windows.h"

namespace dialwright::testing {

/// What a program said and how it ended; no code when it did not end in time.
struct Ended {
    std::optional<DWORD> code;
    std::vector<std::string> lines;

    [[nodiscard]] std::string Text() const;
};

/// Runs dialwright.exe to its end; what it says on standard output and standard error comes in one stream.
[[nodiscard]] Ended RunTool(const std::vector<std::wstring>& arguments, const std::string& input = "");

/// Runs another copy of it, or any program, by its full path.
[[nodiscard]] Ended RunOther(const std::wstring& program, const std::vector<std::wstring>& arguments,
                             const std::string& input = "");

}  // namespace dialwright::testing
