#include "run/host_place.h"

#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include <shlobj.h>

namespace dialwright::tools {
namespace {

namespace fs = std::filesystem;

constexpr int kMostPlaces = 64;

fs::path FolderOf(const fs::path& base, int number) { return base / std::to_string(number); }

fs::path TraceBeside(const fs::path& program) { return program.parent_path() / "logs" / "trace"; }

/// Holds the folder for as long as the file is open; a program that dies lets go of it.
UniqueHandle LockFolder(const fs::path& folder) {
    const HANDLE file = ::CreateFileW((folder / "in-use").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return UniqueHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

std::string BytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The program may be another version than the one that ran there before. A copy, not a hard link: no name of a file
/// can be removed while it runs under any other.
bool PutProgram(const fs::path& from, const fs::path& to) {
    std::error_code failed;
    if (fs::exists(to, failed) && BytesOf(to) == BytesOf(from)) return true;
    // Not written over: what is there may be one of the names of another file.
    fs::remove(to, failed);
    return !failed && fs::copy_file(from, to, failed);
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
