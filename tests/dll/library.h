#pragma once

#include <string>

namespace dialwright::testing {

// The exports of the DLL beside this test, loaded at the first call and looked up by name.

[[nodiscard]] int ValidateCommand(const std::wstring& command);
[[nodiscard]] int ExecuteCommand(const std::wstring& command);

}  // namespace dialwright::testing
