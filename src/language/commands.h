#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace dialwright {

/// What a command's own arguments mean, for tools that explain or check a line.
enum class ArgumentKind : std::uint8_t {
    ControlId,
    ControlPath,
    Rectangle,
    Tolerance,
    Text,
    ItemText,
    DropdownIndex,
    CheckState,
    Position,
    Size,
};

inline constexpr std::size_t kMostOwnArguments = 3;

/// One command of the language. Counts include the command name, class and title.
struct CommandSpec {
    std::wstring_view name;
    std::uint64_t minTokens;
    std::array<ArgumentKind, kMostOwnArguments> argumentKinds;

    /// The one token more is the optional timeout in milliseconds.
    [[nodiscard]] constexpr std::uint64_t MaxTokens() const { return minTokens + 1; }

    /// The arguments after class and title, without the timeout.
    [[nodiscard]] constexpr std::span<const ArgumentKind> Arguments() const {
        return std::span(argumentKinds).first(static_cast<std::size_t>(minTokens) - 3);
    }
};

inline constexpr std::size_t kCommandCount = 27;

/// The whole vocabulary, in the order in which it is listed everywhere.
extern const std::array<CommandSpec, kCommandCount> kCommands;

/// Removes a trailing ".NonRegex" and tells whether criteria are regular expressions (no suffix).
/// A name that is nothing but the suffix stays as it is.
[[nodiscard]] std::wstring StripNonRegexSuffix(std::wstring name, bool* useRegex);

}  // namespace dialwright
