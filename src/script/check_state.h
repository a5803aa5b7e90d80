#pragma once

namespace dialwright {

inline constexpr int kChecked = 1;
inline constexpr const wchar_t* kRadioLabel = L"Radio button";
inline constexpr const wchar_t* kCheckboxLabel = L"Checkbox";

/// Whether a check box can be asked for this state (0 or 1); logs an error under `tag` where it can't.
[[nodiscard]] bool IsCheckboxState(int state, const char* tag);

}  // namespace dialwright
