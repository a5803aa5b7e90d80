#pragma once

#include <string>

#include "platform/windows.h"

namespace dialwright::bench {

// How a target and the program that it works for know each other. The process ID is that of the latter.

inline constexpr const wchar_t* kTargetClass = L"BenchWindow";

inline std::wstring TargetTitle(DWORD host, const std::wstring& name) {
    return L"Bench " + std::to_wstring(host) + L" " + name;
}

inline std::wstring EventName(DWORD host, const std::wstring& name) {
    return L"dialwright-bench-" + std::to_wstring(host) + L"-" + name;
}

// The controls of the window named so.
inline constexpr const wchar_t* kControlsWindow = L"controls";
inline constexpr int kEditId = 12;
inline constexpr int kButtonId = 13;
inline constexpr int kComboId = 14;
inline constexpr int kCheckId = 15;
inline constexpr const wchar_t* kItem = L"Debit card";

// The window whose children are siblings, and the one whose children are a chain.
inline constexpr const wchar_t* kFlatWindow = L"flat";
inline constexpr const wchar_t* kDeepWindow = L"deep";
inline constexpr int kFirstChildId = 100;

/// Posted to the window of the controls, and answered by an event: what was posted before it has been handled then.
inline constexpr UINT kSettle = WM_APP + 1;

}  // namespace dialwright::bench
