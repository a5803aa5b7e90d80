#include "trace/data_dump.h"

namespace dialwright {
namespace {

void PutUpperHex(BoundedText& target, std::size_t value, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) target.Put("0123456789ABCDEF"[value >> shift & 0xFU]);
}

}  // namespace

void PutDumpRow(BoundedText& target, std::size_t offset, std::span<const unsigned char> bytes) noexcept {
    PutUpperHex(target, offset, 8);
    target.Put("  ");
    for (std::size_t i = 0; i < kDumpRowBytes; ++i) {
        if (i < bytes.size()) {
            PutUpperHex(target, bytes[i], 2);
            target.Put(' ');
        } else {
            target.Put("   ");
        }
    }
    target.Put("  ");
    for (const unsigned char byte : bytes) target.Put(byte >= 0x20 && byte <= 0x7E ? static_cast<char>(byte) : '.');
    target.Put("\r\n");
}

}  // namespace dialwright
