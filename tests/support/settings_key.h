#pragma once

#include <string>

#include "platform/windows.h"

namespace dialwright::testing {

/// A registry key of the logger's settings, of this process alone; removed by the destructor.
class SettingsKey {
public:
    SettingsKey();
    ~SettingsKey();
    SettingsKey(const SettingsKey&) = delete;
    SettingsKey& operator=(const SettingsKey&) = delete;

    /// Below HKEY_LOCAL_MACHINE.
    [[nodiscard]] const std::string& Path() const { return path; }

    void Set(const char* name, DWORD value) const;
    void SetText(const char* name, const std::string& value) const;
    void Remove(const char* name) const;

private:
    std::string path;
    HKEY key = nullptr;
};

}  // namespace dialwright::testing
