#include "run/host_place.h"

#include <string>
#include <system_error>

#include <shlobj.h>

namespace dialwright::tools {
namespace {

namespace fs = std::filesystem;

constexpr int kMostPlaces = 64;
constexpr DWORD kRemovalMs = 2000;
constexpr DWORD kPauseMs = 20;

fs::path FolderOf(const fs::path& base, int number) { return base / std::to_string(number); }

fs::path TraceBeside(const fs::path& program) { return program.parent_path() / "logs" / "trace"; }

/// Holds the folder for as long as the file is open; a program that dies lets go of it.
UniqueHandle LockFolder(const fs::path& folder) {
    const HANDLE file = ::CreateFileW((folder / "in-use").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return UniqueHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

/// A worker that was told to end may take a moment until the system lets go of its program.
bool RemoveProgram(const fs::path& program) {
    const ULONGLONG end = ::GetTickCount64() + kRemovalMs;
    std::error_code failed;
    for (;;) {
        fs::remove(program, failed);
        if (!failed || ::GetTickCount64() >= end) return !failed;
        ::Sleep(kPauseMs);
    }
}

/// The program may be another version than the one that ran there before.
bool PutProgram(const fs::path& from, const fs::path& to) {
    if (!RemoveProgram(to)) return false;
    std::error_code failed;
    if (::CreateHardLinkW(to.c_str(), from.c_str(), nullptr)) return true;
    return fs::copy_file(from, to, failed);
}

}  // namespace

HostPlace::HostPlace(const fs::path& program, const fs::path& base) : original(program), program(program) {
    if (base.empty()) return;
    for (int number = 1; number <= kMostPlaces; ++number) {
        const fs::path folder = FolderOf(base, number);
        std::error_code failed;
        fs::create_directories(folder, failed);
        if (failed) return;
        lock = LockFolder(folder);
        if (lock == nullptr) continue;
        this->program = folder / program.filename();
        if (PutProgram(program, this->program)) return;
        GiveUp();
    }
}

fs::path HostPlace::TraceFolder() const { return TraceBeside(program); }

void HostPlace::GiveUp() {
    lock.reset();
    program = original;
}

fs::path FirstTraceFolder(const fs::path& base) { return TraceBeside(FolderOf(base, 1) / "any"); }

fs::path UsersHostFolder() {
    PWSTR folder = nullptr;
    const bool known = SUCCEEDED(::SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &folder));
    const fs::path path = known ? fs::path(folder) / "Dialwright" / "hosts" : fs::path();
    ::CoTaskMemFree(folder);
    return path;
}

}  // namespace dialwright::tools
