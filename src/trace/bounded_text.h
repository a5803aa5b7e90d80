#pragma once

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <span>
#include <string_view>

namespace dialwright {

/// Writes text into an area of the caller's, and drops what does not fit.
class BoundedText {
public:
    explicit BoundedText(std::span<char> target) noexcept : area(target) {}

    void Put(char character) noexcept {
        if (used < area.size()) area[used++] = character;
    }

    /// A literal of known length, without its terminator: where it fits the copy is a few instructions.
    template <std::size_t Size>
    void Put(const char (&literal)[Size]) noexcept {
        if (area.size() - used < Size - 1) return Put(std::string_view(literal, Size - 1));
        std::memcpy(area.data() + used, literal, Size - 1);
        used += Size - 1;
    }

    void Put(std::string_view text) noexcept {
        const std::size_t count = (std::min)(text.size(), area.size() - used);
        if (count != 0) std::memcpy(area.data() + used, text.data(), count);
        used += count;
    }

    void PutRepeated(char character, std::size_t times) noexcept {
        const std::size_t count = (std::min)(times, area.size() - used);
        if (count != 0) std::memset(area.data() + used, character, count);
        used += count;
    }

    /// In decimal, with zeros in front up to so many digits.
    template <std::integral Number>
    void PutNumber(Number number, std::size_t digits = 1) noexcept {
        char buffer[24];
        const char* const end = std::to_chars(std::begin(buffer), std::end(buffer), number).ptr;
        std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
        if (text.starts_with('-')) {
            Put('-');
            text.remove_prefix(1);
        }
        if (text.size() < digits) PutRepeated('0', digits - text.size());
        Put(text);
    }

    /// Forgets all but the first bytes.
    void CutTo(std::size_t length) noexcept { used = (std::min)(used, length); }

    /// Replaces the last byte, if there is one.
    void ReplaceLast(char character) noexcept {
        if (used != 0) area[used - 1] = character;
    }

    [[nodiscard]] std::size_t Size() const noexcept { return used; }
    [[nodiscard]] std::string_view View() const noexcept { return {area.data(), used}; }

private:
    std::span<char> area;
    std::size_t used = 0;
};

}  // namespace dialwright
