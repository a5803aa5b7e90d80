#include "trace_reader/file_pieces.h"

#include <memory>

#include "platform/windows.h"

namespace dialwright::tools {
namespace {

constexpr DWORD kPieceBytes = 256 * 1024;
constexpr DWORD kHeadBytes = 256;

struct HandleCloser {
    void operator()(void* handle) const noexcept { ::CloseHandle(handle); }
};

std::string ReadAt(HANDLE file, std::uint64_t offset, DWORD most) {
    std::string bytes(most, '\0');
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32U);
    DWORD read = 0;
    if (!::ReadFile(file, bytes.data(), most, &read, &place)) read = 0;
    bytes.resize(read);
    return bytes;
}

}  // namespace

FilePieces::Outcome FilePieces::Next(std::string& bytes) {
    const HANDLE opened =
        ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return Outcome::Missing;
    const std::unique_ptr<void, HandleCloser> file(opened);
    return Read(file.get(), bytes);
}

void FilePieces::Restart() {
    offset = 0;
    head.clear();
}

FilePieces::Outcome FilePieces::Read(void* file, std::string& bytes) {
    if (!IsTheSame(file)) return Outcome::BegunAnew;
    bytes = ReadAt(file, offset, kPieceBytes);
    offset += bytes.size();
    return bytes.empty() ? Outcome::End : Outcome::Bytes;
}

bool FilePieces::IsTheSame(void* file) {
    const std::string now = ReadAt(file, 0, kHeadBytes);
    if (!now.starts_with(head)) return false;
    head = now;
    return true;
}

}  // namespace dialwright::tools
