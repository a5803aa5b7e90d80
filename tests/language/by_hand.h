#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "language/tokenizer.h"

// The answers of the command language, reached in another way: by plain scans, without its own code.
namespace dialwright::testing {

[[nodiscard]] TokenList ScanByHand(const std::wstring& line);

/// A number as a text begins with it, digit for digit. Its magnitude stops growing far outside of every range asked
/// for.
struct NumberByHand {
    bool isNegative = false;
    std::uint64_t magnitude = 0;

    [[nodiscard]] bool IsWithin(std::uint64_t mostBelowZero, std::uint64_t mostAbove) const {
        return magnitude <= (isNegative ? mostBelowZero : mostAbove);
    }
};

/// Nothing where the text begins with no number.
[[nodiscard]] std::optional<NumberByHand> ReadNumberByHand(const std::wstring& text);

/// The masked form of a line that begins with a masked command, from the back: the timeout if the last token reads as
/// one, then the text, then the rest as it is.
[[nodiscard]] std::wstring MaskFromTheBack(const std::wstring& line);

/// Whether validation takes the line, by the table of commands alone.
[[nodiscard]] bool IsValidByHand(const std::wstring& line);

/// The same of a script: it has a line that is not blank, and all those are valid.
[[nodiscard]] bool IsValidScriptByHand(const std::wstring& script);

}  // namespace dialwright::testing
