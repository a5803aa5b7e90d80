#pragma once

#include <string>

#include "platform/windows.h"

namespace practice {

struct TargetOptions {
    std::wstring windowClass = L"#32770";  // any other name becomes a plain window class
    std::wstring title = L"Dialwright practice";
    bool hidden = false;
    bool refuseClose = false;
};

/// A top-level window with one control of every kind; null on failure.
HWND CreateTarget(const TargetOptions& options);

/// An empty top-level window of this class; null on failure.
HWND CreatePlainWindow(const std::wstring& windowClass, const std::wstring& title, bool hidden);

/// Adds one control. Kinds: edit, multiline, password, static, button, check, manualcheck, threestate, radio, group,
/// dropdown, combo, list, panel, refuser (a dropdown that lets no item be selected). Null for an unknown kind.
HWND CreateControl(HWND parent, const std::wstring& kind, int id, const RECT& place, const std::wstring& text);

}  // namespace practice
