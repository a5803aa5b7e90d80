#include "verify/machine.h"

#include "doctor/facts.h"
#include "platform/windows.h"
#include "run/host_place.h"
#include "run/own_files.h"
#include "verify/wine.h"

#include <shellscalingapi.h>

namespace dialwright::verify {
namespace {

using tools::Json;

std::string ArchitectureName(USHORT machine) {
    switch (machine) {
        case IMAGE_FILE_MACHINE_AMD64: return "x64";
        case IMAGE_FILE_MACHINE_ARM64: return "ARM64";
        case IMAGE_FILE_MACHINE_I386: return "x86";
        default: return "not told";
    }
}

/// What the machine is made of, whatever is emulated on it.
std::string NativeArchitecture() {
    USHORT process = 0;
    USHORT native = 0;
    if (::IsWow64Process2(::GetCurrentProcess(), &process, &native)) return ArchitectureName(native);
    return "not told";
}

std::uint32_t RegistryNumber(const wchar_t* name) {
    DWORD value = 0;
    DWORD bytes = sizeof value;
    ::RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", name, RRF_RT_REG_DWORD,
                   nullptr, &value, &bytes);
    return value;
}

/// The true version, whatever a manifest or a setting makes the usual call say.
std::string SystemVersion() {
    using GetVersion = LONG(WINAPI*)(OSVERSIONINFOEXW*);
    const auto getVersion = reinterpret_cast<GetVersion>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion")));
    OSVERSIONINFOEXW version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (getVersion == nullptr || getVersion(&version) != 0) return "not told";
    return std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) + "." +
           std::to_string(version.dwBuildNumber) + "." + std::to_string(RegistryNumber(L"UBR"));
}

bool IsElevated() {
    HANDLE token = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token)) return false;
    const tools::UniqueHandle closed(token);
    TOKEN_ELEVATION elevation{};
    DWORD bytes = 0;
    return ::GetTokenInformation(token, TokenElevation, &elevation, sizeof elevation, &bytes) &&
           elevation.TokenIsElevated != 0;
}

BOOL CALLBACK VisitMonitor(HMONITOR monitor, HDC, RECT* place, LPARAM parameter) {
    UINT dpi = 0;
    UINT vertical = 0;
    ::GetDpiForMonitor(monitor, MDT_EFFECTIVE_DPI, &dpi, &vertical);
    MONITORINFO info{};
    info.cbSize = sizeof info;
    ::GetMonitorInfoW(monitor, &info);
    reinterpret_cast<Json*>(parameter)->push_back({{"width", place->right - place->left},
                                                   {"height", place->bottom - place->top},
                                                   {"dpi", dpi},
                                                   {"primary", (info.dwFlags & MONITORINFOF_PRIMARY) != 0}});
    return TRUE;
}

Json Monitors() {
    Json monitors = Json::array();
    ::EnumDisplayMonitors(nullptr, nullptr, &VisitMonitor, reinterpret_cast<LPARAM>(&monitors));
    return monitors;
}

template <class Value>
Json OrNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

std::string PlatformText(const std::optional<std::string>& wine, const std::string& version,
                         const std::string& native) {
    if (wine) return "Wine " + *wine + ", which is not Windows";
    return "Windows " + version + " on " + native;
}

}  // namespace

Machine ReadMachine(const Setting& setting, const Mask& mask) {
    const tools::Facts facts =
        tools::ReadFacts({.library = setting.Library(), .workFolder = setting.work}, std::nullopt);
    const auto wine = WineVersion();
    const std::string version = SystemVersion();
    const std::string native = NativeArchitecture();
    const std::string own(NameOf(facts.program.architecture));
    const auto integrity = facts.integrity ? std::optional(std::string(NameOf(*facts.integrity))) : std::nullopt;
    return {.platform = PlatformText(wine, version, native),
            .json = {{"isWindows", !wine},
                     {"wine", OrNull(wine)},
                     {"windowsVersion", version},
                     {"nativeArchitecture", native},
                     {"emulated", native != own},
                     {"session", facts.session},
                     {"remote", facts.isRemote},
                     {"locked", OrNull(facts.isLocked)},
                     {"inputDesktop", mask(facts.inputDesktop)},
                     {"elevated", IsElevated()},
                     {"integrity", OrNull(integrity)},
                     {"dpi", facts.dpi},
                     {"monitors", Monitors()},
                     {"codePage", facts.codePage},
                     {"systemCodePage", facts.systemCodePage}}};
}

}  // namespace dialwright::verify
