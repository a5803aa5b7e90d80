#include "support/log_capture.h"

#include <array>
#include <cstdio>
#include <sstream>
#include <stdexcept>

#include "platform/windows.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace dialwright::testing {
namespace {

int OpenTemporaryFile() {
    std::array<wchar_t, MAX_PATH> folder{};
    std::array<wchar_t, MAX_PATH> path{};
    ::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    ::GetTempFileNameW(folder.data(), L"dlw", 0, path.data());
    const int file = ::_wopen(path.data(), _O_RDWR | _O_BINARY | _O_TRUNC | _O_TEMPORARY, _S_IREAD | _S_IWRITE);
    if (file < 0) throw std::runtime_error("no temporary file");
    return file;
}

}  // namespace

LogCapture::LogCapture() : file(OpenTemporaryFile()), output(file) {}

LogCapture::~LogCapture() {
    output.GiveBack();
    ::_close(file);
}

std::string LogCapture::Text() const {
    std::fflush(stdout);
    const long length = ::_lseek(file, 0, SEEK_END);
    std::string text(static_cast<std::size_t>(length), '\0');
    ::_lseek(file, 0, SEEK_SET);
    std::size_t done = 0;
    while (done < text.size()) {
        const int count = ::_read(file, text.data() + done, static_cast<unsigned>(text.size() - done));
        if (count <= 0) throw std::runtime_error("the captured output cannot be read");
        done += static_cast<std::size_t>(count);
    }
    return text;
}

std::vector<std::string> LogCapture::Messages() const {
    const std::string indent(80, ' ');
    std::vector<std::string> messages;
    std::istringstream text(Text());
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with(indent) && !messages.empty()) {
            messages.back() += "\n" + line.substr(indent.size());
        } else {
            messages.push_back(line);
        }
    }
    return messages;
}

std::vector<std::string> LogCapture::MessagesFrom(const std::string& beginning) const {
    std::vector<std::string> messages = Messages();
    std::erase_if(messages, [&](const std::string& message) { return !message.starts_with(beginning); });
    return messages;
}

}  // namespace dialwright::testing
