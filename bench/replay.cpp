#include "replay.h"

#include <cstdio>
#include <fstream>

#include "platform/windows.h"
#include "target_process.h"

#include <io.h>

namespace dialwright::bench {
namespace {

HANDLE FileOfStandardOutput() { return reinterpret_cast<HANDLE>(::_get_osfhandle(1)); }

}  // namespace

Replay::Replay(const std::string& path, std::size_t offset) {
    std::ifstream file(path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(offset));
    for (std::string line; std::getline(file, line);) {
        if (messages.empty() || !line.starts_with(' ')) messages.emplace_back();
        messages.back() += line + "\n";
    }
    Require(!messages.empty(), "the command has written nothing");
}

void Replay::Write() const {
    for (const std::string& message : messages) {
        DWORD written = 0;
        ::WriteFile(FileOfStandardOutput(), message.data(), static_cast<DWORD>(message.size()), &written, nullptr);
        Require(written == message.size(), "standard output cannot be written");
    }
}

std::size_t BytesWritten() {
    std::fflush(stdout);
    LARGE_INTEGER size{};
    Require(::GetFileSizeEx(FileOfStandardOutput(), &size) != FALSE, "standard output is no file");
    return static_cast<std::size_t>(size.QuadPart);
}

}  // namespace dialwright::bench
