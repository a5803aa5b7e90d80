#include "platform/text_encoding.h"

#include "platform/windows.h"

namespace dialwright {
namespace {

constexpr std::size_t kMostBytesPerUnit = 3;

/// The platform takes lengths as int. A piece must not end between the halves of a surrogate pair.
std::wstring_view FirstPiece(std::wstring_view text) {
    constexpr std::size_t kMostUnits = 1U << 28U;
    if (text.size() <= kMostUnits) return text;
    const bool splitsPair = IS_HIGH_SURROGATE(text[kMostUnits - 1]) && IS_LOW_SURROGATE(text[kMostUnits]);
    return text.substr(0, splitsPair ? kMostUnits - 1 : kMostUnits);
}

/// Into an area of three bytes a unit, which is enough for any text. Returns the bytes written.
std::size_t ConvertAll(std::wstring_view text, char* area) {
    std::size_t used = 0;
    while (!text.empty()) {
        const std::wstring_view piece = FirstPiece(text);
        used += ToUtf8(piece, {area + used, kMostBytesPerUnit * piece.size()});
        text.remove_prefix(piece.size());
    }
    return used;
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string utf8(kMostBytesPerUnit * text.size(), '\0');
    utf8.resize(ConvertAll(text, utf8.data()));
    return utf8;
}

std::string_view ToUtf8(std::pmr::monotonic_buffer_resource& memory, std::wstring_view text) {
    auto* const utf8 = static_cast<char*>(memory.allocate(kMostBytesPerUnit * text.size() + 1, 1));
    return {utf8, ConvertAll(text, utf8)};
}

std::size_t ToUtf8(std::wstring_view text, std::span<char> area) noexcept {
    const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), area.data(),
                                            static_cast<int>(area.size()), nullptr, nullptr);
    return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

}  // namespace dialwright
