#pragma once

#include <string>
#include <string_view>

namespace dialwright {

/// The text in UTF-8; a lone surrogate becomes U+FFFD. Throws only std::bad_alloc.
[[nodiscard]] std::string ToUtf8(std::wstring_view text);

}  // namespace dialwright
