#include "verify/wine.h"

#include <string_view>

#include "platform/windows.h"

namespace dialwright::verify {
namespace {

/// Wine's own libraries carry these words behind their first header, also where it hides its other traces.
bool IsWinesOwn(HMODULE library) {
    constexpr std::size_t kBehindHeader = 0x40;
    const auto* const words = reinterpret_cast<const char*>(library) + kBehindHeader;
    return std::string_view(words, 4) == "Wine";
}

bool HasRegistryKey() {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Wine", 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    ::RegCloseKey(key);
    return true;
}

}  // namespace

std::optional<std::string> WineVersion() {
    using Version = const char*(__cdecl*)();
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    const auto version =
        reinterpret_cast<Version>(reinterpret_cast<void*>(::GetProcAddress(ntdll, "wine_get_version")));
    if (version != nullptr) return version();
    if (IsWinesOwn(ntdll) || HasRegistryKey()) return "of a version that it hides";
    return std::nullopt;
}

}  // namespace dialwright::verify
