#include "trace/settings_key.h"

#include "platform/windows.h"

namespace dialwright {
namespace {

std::optional<std::uint32_t> ReadNumber(HKEY key, const char* name) {
    DWORD type = 0;
    DWORD value = 0;
    DWORD size = sizeof value;
    const LSTATUS status = ::RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
    if (status != ERROR_SUCCESS || type != REG_DWORD || size != sizeof value) return std::nullopt;
    return value;
}

}  // namespace

StoredSettings ReadSettingsKey(const char* keyPath) noexcept {
    HKEY key = nullptr;
    if (::RegOpenKeyA(HKEY_LOCAL_MACHINE, keyPath, &key) != ERROR_SUCCESS) return {};
    const StoredSettings stored{.flag = ReadNumber(key, "flag"), .size = ReadNumber(key, "size")};
    ::RegCloseKey(key);
    return stored;
}

}  // namespace dialwright
