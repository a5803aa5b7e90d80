#pragma once

#include <array>

namespace dialwright {

/// A path of at most 259 units, zero-terminated, as the platform's wide calls take it; empty when it has no such form.
using WidePath = std::array<wchar_t, 260>;

/// Reads a narrow path as UTF-8, and by the ANSI code page where it is not valid UTF-8: the platform names the host's
/// folder in that page.
[[nodiscard]] WidePath WidenPath(const char* path) noexcept;

/// Creates the missing folders of a path, up to its last "\". Fails silently, also where the ANSI code page, in which
/// the platform takes the name, cannot spell it.
void CreateFoldersOf(const WidePath& path) noexcept;

}  // namespace dialwright
