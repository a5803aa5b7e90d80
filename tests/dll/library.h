#pragma once

#include <string>

namespace dialwright::testing {

// The exports of the DLL beside this test, loaded at the first call and looked up by name.

[[nodiscard]] int ValidateCommand(const std::wstring& command);
[[nodiscard]] int ValidateScript(const std::wstring& script);
[[nodiscard]] int ExecuteCommand(const std::wstring& command);
[[nodiscard]] int ExecuteScript(const std::wstring& script);
[[nodiscard]] int ProgramLaunch(const std::wstring& program, const std::wstring& arguments, unsigned long* processId);

}  // namespace dialwright::testing
