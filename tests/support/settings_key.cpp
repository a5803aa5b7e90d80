#include "support/settings_key.h"

#include <stdexcept>

namespace dialwright::testing {

SettingsKey::SettingsKey() : path("Software\\DialwrightTest-" + std::to_string(::GetCurrentProcessId())) {
    if (::RegCreateKeyA(HKEY_LOCAL_MACHINE, path.c_str(), &key) != ERROR_SUCCESS) throw std::runtime_error("no key");
}

SettingsKey::~SettingsKey() {
    ::RegCloseKey(key);
    ::RegDeleteKeyA(HKEY_LOCAL_MACHINE, path.c_str());
}

void SettingsKey::Set(const char* name, DWORD value) const {
    ::RegSetValueExA(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
}

void SettingsKey::SetText(const char* name, const std::string& value) const {
    ::RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                     static_cast<DWORD>(value.size() + 1));
}

void SettingsKey::Remove(const char* name) const { ::RegDeleteValueA(key, name); }

}  // namespace dialwright::testing
