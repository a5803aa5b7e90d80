#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace dialwright {

/// A zero-terminated text in a fixed area of `Size` bytes: no heap, no constructor that runs, so that it may stand in
/// static storage and be read while the process crashes.
template <std::size_t Size>
class FixedText {
public:
    /// Takes over the text, cut to what fits.
    constexpr void Assign(std::string_view text) noexcept {
        length = 0;
        Append(text);
    }

    constexpr void Append(std::string_view text) noexcept {
        const std::size_t count = (std::min)(text.size(), Size - 1 - length);
        std::copy_n(text.data(), count, area.data() + length);
        length += count;
        area[length] = '\0';
    }

    constexpr void Clear() noexcept { Assign({}); }

    [[nodiscard]] constexpr std::string_view View() const noexcept { return {area.data(), length}; }
    [[nodiscard]] constexpr const char* CStr() const noexcept { return area.data(); }
    [[nodiscard]] constexpr bool Empty() const noexcept { return length == 0; }

private:
    std::array<char, Size> area{};
    std::size_t length = 0;
};

/// A path of the platform's narrow calls, at most 259 characters.
using TracePath = FixedText<260>;

}  // namespace dialwright
