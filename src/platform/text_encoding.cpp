#include "platform/text_encoding.h"

#include "platform/windows.h"

namespace dialwright {
namespace {

/// The platform takes lengths as int. A piece must not end between the halves of a surrogate pair.
std::wstring_view FirstPiece(std::wstring_view text) {
    constexpr std::size_t kMostUnits = 1U << 28U;
    if (text.size() <= kMostUnits) return text;
    const bool splitsPair = IS_HIGH_SURROGATE(text[kMostUnits - 1]) && IS_LOW_SURROGATE(text[kMostUnits]);
    return text.substr(0, splitsPair ? kMostUnits - 1 : kMostUnits);
}

}  // namespace

std::pmr::string ToUtf8(std::pmr::memory_resource* memory, std::wstring_view text) {
    std::pmr::string utf8(memory);
    while (!text.empty()) {
        const std::wstring_view piece = FirstPiece(text);
        const int units = static_cast<int>(piece.size());
        const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, piece.data(), units, nullptr, 0, nullptr, nullptr);
        const std::size_t used = utf8.size();
        utf8.resize(used + static_cast<std::size_t>(bytes));
        ::WideCharToMultiByte(CP_UTF8, 0, piece.data(), units, utf8.data() + used, bytes, nullptr, nullptr);
        text.remove_prefix(piece.size());
    }
    return utf8;
}

std::string ToUtf8(std::wstring_view text) { return std::string(ToUtf8(std::pmr::get_default_resource(), text)); }

std::size_t ToUtf8(std::wstring_view text, std::span<char> area) noexcept {
    const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), area.data(),
                                            static_cast<int>(area.size()), nullptr, nullptr);
    return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

}  // namespace dialwright
