#pragma once

#include <cstdint>
#include <string>

namespace dialwright {

// All conversions are decimal, skip leading white space, accept a sign and ignore what follows the digits:
// "12abc" is 12. The texts of their exceptions reach the log, so they are fixed here instead of being
// whatever the standard library at hand says.

/// Throws std::invalid_argument "invalid stoi argument" without digits, std::out_of_range
/// "stoi argument out of range" beyond 32 bits.
[[nodiscard]] int ConvertToInt(const std::wstring& text);

/// Throws as ConvertToInt with "stoul" in its texts. A minus sign wraps around: "-1" is 4294967295.
[[nodiscard]] std::uint32_t ConvertToUnsigned(const std::wstring& text);

/// Writes *value and returns true, or returns false and leaves *value alone.
[[nodiscard]] bool TryParseInt(const std::wstring& text, int* value);

/// Whether the text starts with a number that fits 64 bits; the test by which a last token is a timeout.
[[nodiscard]] bool ReadsAsInteger(const std::wstring& text);

}  // namespace dialwright
