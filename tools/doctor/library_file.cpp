#include "doctor/library_file.h"

#include <array>
#include <cstring>
#include <fstream>
#include <vector>

#include "platform/windows.h"

namespace dialwright::tools {
namespace {

constexpr std::size_t kHeaderBytes = 4096;

std::string FirstBytes(const std::wstring& path) {
    std::ifstream file(path.c_str(), std::ios::binary);
    std::string bytes(kHeaderBytes, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

template <class Number>
Number NumberAt(std::string_view bytes, std::size_t at) {
    Number number = 0;
    if (at + sizeof number <= bytes.size()) std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

std::string VersionOf(const std::wstring& path) {
    const DWORD size = ::GetFileVersionInfoSizeW(path.c_str(), nullptr);
    std::vector<std::byte> data(size);
    if (size == 0 || !::GetFileVersionInfoW(path.c_str(), 0, size, data.data())) return {};
    void* found = nullptr;
    UINT length = 0;
    if (!::VerQueryValueW(data.data(), L"\\", &found, &length) || length < sizeof(VS_FIXEDFILEINFO)) return {};
    VS_FIXEDFILEINFO info{};
    std::memcpy(&info, found, sizeof info);
    return std::to_string(HIWORD(info.dwFileVersionMS)) + "." + std::to_string(LOWORD(info.dwFileVersionMS)) + "." +
           std::to_string(HIWORD(info.dwFileVersionLS));
}

}  // namespace

std::string_view NameOf(Architecture architecture) {
    switch (architecture) {
        case Architecture::X64: return "x64";
        case Architecture::Arm64: return "ARM64";
        case Architecture::X86: return "x86";
        case Architecture::Other: return "another architecture";
        case Architecture::None: break;
    }
    return "no program";
}

Architecture ArchitectureOf(std::string_view firstBytes) {
    constexpr std::size_t kHeaderOffsetAt = 0x3C;
    constexpr std::string_view kSignature("PE\0\0", 4);
    const auto header = NumberAt<std::uint32_t>(firstBytes, kHeaderOffsetAt);
    if (!firstBytes.starts_with("MZ") || header >= firstBytes.size()) return Architecture::None;
    if (!firstBytes.substr(header).starts_with(kSignature)) return Architecture::None;
    switch (NumberAt<std::uint16_t>(firstBytes, header + kSignature.size())) {
        case IMAGE_FILE_MACHINE_AMD64: return Architecture::X64;
        case IMAGE_FILE_MACHINE_ARM64: return Architecture::Arm64;
        case IMAGE_FILE_MACHINE_I386: return Architecture::X86;
        default: return Architecture::Other;
    }
}

ProgramFile ReadProgramFile(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {};
    return {.exists = true, .architecture = ArchitectureOf(FirstBytes(path)), .version = VersionOf(path)};
}

}  // namespace dialwright::tools
