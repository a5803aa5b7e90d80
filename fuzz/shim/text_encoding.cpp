#include "platform/text_encoding.h"

#include <cstring>

// By hand, as the platform's converter is not there. A unit of this build's wide text holds any character; halves of a
// pair are put together as the platform does.

namespace dialwright {
namespace {

bool IsFirstHalf(wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsSecondHalf(wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void Append(std::string& utf8, char32_t character) {
    const auto put = [&](char32_t bits) { utf8.push_back(static_cast<char>(bits)); };
    const auto follow = [&](unsigned shift) { put(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6U);
        follow(0);
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12U);
        follow(6);
        follow(0);
    } else {
        put(0xF0 | character >> 18U);
        follow(12);
        follow(6);
        follow(0);
    }
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string utf8;
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto character = static_cast<char32_t>(text[i]);
        if (IsFirstHalf(text[i]) && i + 1 < text.size() && IsSecondHalf(text[i + 1])) {
            character = 0x10000 + ((character - 0xD800) << 10U) + (static_cast<char32_t>(text[++i]) - 0xDC00);
        } else if (IsFirstHalf(text[i]) || IsSecondHalf(text[i])) {
            character = 0xFFFD;
        }
        Append(utf8, character);
    }
    return utf8;
}

std::string_view ToUtf8(std::pmr::monotonic_buffer_resource& memory, std::wstring_view text) {
    const std::string utf8 = ToUtf8(text);
    auto* const area = static_cast<char*>(memory.allocate(utf8.size() + 1, 1));
    std::memcpy(area, utf8.data(), utf8.size());
    return {area, utf8.size()};
}

std::size_t ToUtf8(std::wstring_view text, std::span<char> area) noexcept {
    const std::string utf8 = ToUtf8(text);
    if (utf8.size() > area.size()) return 0;
    std::memcpy(area.data(), utf8.data(), utf8.size());
    return utf8.size();
}

}  // namespace dialwright
