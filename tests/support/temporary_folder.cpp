#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace dialwright::testing {
namespace {

/// Opens for reading whatever others do with the file.
HANDLE OpenShared(const std::wstring& path) {
    return ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                         OPEN_EXISTING, 0, nullptr);
}

}  // namespace

TemporaryFolder::TemporaryFolder(const std::wstring& ending) {
    static int counter = 0;
    std::array<wchar_t, MAX_PATH> temporary{};
    ::GetTempPathW(static_cast<DWORD>(temporary.size()), temporary.data());
    const std::wstring begin =
        std::wstring(temporary.data()) + L"dialwright-" + std::to_wstring(::GetCurrentProcessId()) + L"-";
    // An ended process that had this ID may have left the folder, with a file that a child of it still has open.
    constexpr int kTries = 20;
    for (int i = 0; i < kTries; ++i) {
        path = begin + std::to_wstring(++counter) + ending + L"\\";
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
        if (::CreateDirectoryW(path.c_str(), nullptr)) return;
    }
    throw std::runtime_error("no temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::string TemporaryFolder::NarrowPath() const {
    std::array<char, std::size_t{2} * MAX_PATH> narrow{};
    ::WideCharToMultiByte(CP_ACP, 0, path.c_str(), -1, narrow.data(), static_cast<int>(narrow.size()), nullptr,
                          nullptr);
    return narrow.data();
}

bool FileExists(const std::wstring& path) { return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

unsigned long long FileSizeOf(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return 0;
    return static_cast<unsigned long long>(data.nFileSizeHigh) << 32U | data.nFileSizeLow;
}

std::string ReadFile(const std::wstring& path) {
    const HANDLE file = OpenShared(path);
    if (file == INVALID_HANDLE_VALUE) return {};
    LARGE_INTEGER size{};
    ::GetFileSizeEx(file, &size);
    std::string text(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    ::ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &read, nullptr);
    ::CloseHandle(file);
    text.resize(read);
    return text;
}

void WriteFile(const std::wstring& path, const std::string& text) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file);
    DWORD written = 0;
    ::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    ::CloseHandle(file);
    ASSERT_EQ(text.size(), written);
}

bool CanBeWritten(const std::wstring& path) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    ::CloseHandle(file);
    return true;
}

std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find("\r\n", begin)) != std::string::npos; begin = end + 2) {
        lines.push_back(text.substr(begin, end - begin));
    }
    if (begin < text.size()) lines.push_back(text.substr(begin));
    return lines;
}

std::vector<std::string> ReadTrace(const std::wstring& path) { return SplitLines(ReadFile(path)); }

std::vector<std::string> ReadMessages(const std::wstring& path) {
    std::vector<std::string> messages;
    for (const std::string& line : ReadTrace(path)) {
        // Behind the third field in brackets.
        std::size_t end = 0;
        for (int field = 0; field < 3 && end != std::string::npos; ++field) end = line.find("] ", end + 1);
        messages.push_back(end == std::string::npos ? line : line.substr(end + 2));
    }
    return messages;
}

}  // namespace dialwright::testing
