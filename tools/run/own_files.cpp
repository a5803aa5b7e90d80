#include "run/own_files.h"

#include <string>
#include <system_error>

#include "platform/windows.h"

namespace dialwright::tools {

std::filesystem::path OwnProgram() {
    constexpr DWORD kMostUnits = 32768;
    std::wstring path(kMostUnits, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), kMostUnits));
    std::error_code failed;
    const std::filesystem::path real = std::filesystem::canonical(path, failed);
    return failed ? std::filesystem::path(path) : real;
}

std::filesystem::path HostProgram() { return OwnProgram().parent_path() / "dialwright-host.exe"; }

std::filesystem::path LibraryFile() { return OwnProgram().parent_path() / "Dialwright.dll"; }

}  // namespace dialwright::tools
