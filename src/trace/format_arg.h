#pragma once

#include <concepts>
#include <cstdint>
#include <span>

namespace dialwright {

/// One argument of the line writer, with its kind. Text is borrowed; it must live until the line is written.
struct FormatArg {
    enum class Kind : std::uint8_t { Integer, Narrow, Wide, Pointer };

    // Not explicit: an argument list is written as plain values.
    template <std::integral Number>
    FormatArg(Number value) noexcept : kind(Kind::Integer), integer(static_cast<std::uint64_t>(value)) {}
    FormatArg(const char* value) noexcept : kind(Kind::Narrow), narrow(value) {}
    FormatArg(const wchar_t* value) noexcept : kind(Kind::Wide), wide(value) {}
    FormatArg(const void* value) noexcept : kind(Kind::Pointer), pointer(value) {}

    Kind kind;
    union {
        std::uint64_t integer;
        const char* narrow;
        const wchar_t* wide;
        const void* pointer;
    };
};

/// The arguments of one line, counted: what reads them can ask for the next, and never reach past the last.
class FormatArgs {
public:
    explicit FormatArgs(std::span<const FormatArg> all) noexcept : left(all) {}

    /// Null when all are used up.
    const FormatArg* Next() noexcept {
        if (left.empty()) return nullptr;
        const FormatArg* const next = &left.front();
        left = left.subspan(1);
        return next;
    }

private:
    std::span<const FormatArg> left;
};

}  // namespace dialwright
