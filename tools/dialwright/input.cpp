#include "input.h"

#include <cstdio>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <io.h>

namespace dialwright::tools {
namespace {

bool outputLost = false;

}  // namespace
std::optional<std::string> ReadInput(const std::string& path) {
    if (path == "-") {
        ::_setmode(::_fileno(stdin), _O_BINARY);
        std::string text;
        for (int c = std::fgetc(stdin); c != EOF; c = std::fgetc(stdin)) text.push_back(static_cast<char>(c));
        return text;
    }
    std::ifstream file(FilePath(path), std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

bool WriteWholeFile(const std::string& path, std::string_view bytes) {
    std::ofstream file(FilePath(path), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

void WriteOutput(std::string_view text) {
    static const bool isSetUp = [] {
        constexpr std::size_t kBuffer = std::size_t{1} << 16U;
        ::_setmode(::_fileno(stdout), _O_BINARY);
        // A console would get every character by itself otherwise.
        return std::setvbuf(stdout, nullptr, _IOFBF, kBuffer) == 0;
    }();
    (void)isSetUp;
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    outputLost = std::fflush(stdout) != 0 || !isWritten || outputLost;
}

bool OutputWasLost() { return outputLost; }

std::filesystem::path FilePath(const std::string& utf8) { return std::u8string(utf8.begin(), utf8.end()); }

}  // namespace dialwright::tools
