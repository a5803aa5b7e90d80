#include "trace/trace_directory.h"

#include <array>
#include <cstring>

#include "platform/windows.h"

namespace dialwright {
namespace {

constexpr const char* kBelowTheFolder = "logs\\trace\\";
constexpr int kLocalAppData = 28;

using Path = std::array<char, 260>;
using GetFolderPath = HRESULT(WINAPI*)(HWND owner, int folder, HANDLE token, DWORD flags, char* path);

/// Loads the shell for this one question, from the system folder alone. Only on the thread of whoever asks for this
/// folder by name, never while the library itself is loaded.
TracePath LocalAppDataFolder() {
    TracePath folder;
    const HMODULE shell = ::LoadLibraryExW(L"shell32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (shell == nullptr) return folder;
    const auto getFolderPath =
        reinterpret_cast<GetFolderPath>(reinterpret_cast<void*>(::GetProcAddress(shell, "SHGetFolderPathA")));
    Path path{};
    if (getFolderPath != nullptr && SUCCEEDED(getFolderPath(nullptr, kLocalAppData, nullptr, 0, path.data()))) {
        folder.Assign(path.data());
    }
    ::FreeLibrary(shell);
    return folder;
}

TracePath HostFolder() {
    Path host{};
    ::GetModuleFileNameA(nullptr, host.data(), static_cast<DWORD>(host.size()));
    host.back() = '\0';
    const std::string_view path = host.data();
    TracePath folder;
    folder.Assign(path.substr(0, path.rfind('\\') + 1));
    return folder;
}

}  // namespace

TracePath ComposeTraceDirectory(const char* directory) noexcept {
    TracePath composed;
    if (directory != nullptr && ::_stricmp(directory, "%localappdata%") == 0) {
        composed = LocalAppDataFolder();
        if (!composed.Empty()) {
            composed.Append("\\Harbelle\\");
            composed.Append(kBelowTheFolder);
            return composed;
        }
        directory = nullptr;
    }
    if (directory != nullptr && *directory != '\0') {
        composed.Assign(directory);
        return composed;
    }
    composed = HostFolder();
    if (!composed.Empty()) composed.Append(kBelowTheFolder);
    return composed;
}

}  // namespace dialwright
