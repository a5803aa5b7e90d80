#include "trace/data_dump.h"

#include <array>
#include <charconv>

#include "target.h"

namespace dialwright::fuzz {
namespace {

std::size_t ReadHex(std::string_view digits) {
    std::size_t value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    Require(read.ec == std::errc() && read.ptr == digits.data() + digits.size(), "hexadecimal digits stand there");
    return value;
}

void CheckRow(std::string_view row, std::size_t offset, std::string_view bytes) {
    Require(row.ends_with("\r\n"), "a row ends its line");
    Require(ReadHex(row.substr(0, 8)) == (offset & 0xFFFFFFFF), "it begins with the offset");
    constexpr std::size_t kCharactersAt = 8 + 2 + kDumpRowBytes * 3 + 2;
    Require(row.size() == kCharactersAt + bytes.size() + 2, "its length is that of its bytes");
    for (std::size_t i = 0; i < kDumpRowBytes; ++i) {
        const std::string_view cell = row.substr(10 + 3 * i, 3);
        if (i >= bytes.size()) {
            Require(cell == "   ", "no byte, no digits");
            continue;
        }
        const auto byte = static_cast<unsigned char>(bytes[i]);
        Require(ReadHex(cell.substr(0, 2)) == byte && cell[2] == ' ', "each byte is read back");
        const char shown = row[kCharactersAt + i];
        Require(shown == (byte >= ' ' && byte <= '~' ? bytes[i] : '.'), "each character is shown, or a dot for it");
    }
}

}  // namespace

void Try(Input input) {
    const auto offset = input.Any<std::uint64_t>();
    const std::string all = input.RestAsBytes();
    for (std::size_t at = 0; at <= all.size(); at += kDumpRowBytes) {
        const std::string bytes = all.substr(at, kDumpRowBytes);
        std::array<char, kDumpRowLength> area;
        BoundedText text(area);
        PutDumpRow(text, offset + at, {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
        CheckRow(text.View(), offset + at, bytes);
    }
}

}  // namespace dialwright::fuzz
