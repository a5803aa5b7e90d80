#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "input.h"

namespace dialwright::fuzz {

/// Hands the bytes on in pieces of any size, as they might come from a file.
template <class Take>
void InPieces(Input& input, std::string_view bytes, Take&& take) {
    while (!bytes.empty()) {
        // Where nobody says how large a piece is, the rest is one.
        const std::size_t size = input.IsEmpty() ? bytes.size() : input.Between<std::size_t>(1, bytes.size());
        take(bytes.substr(0, size));
        bytes.remove_prefix(size);
    }
}

inline bool Contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }
inline bool Contains(std::wstring_view text, std::wstring_view part) {
    return text.find(part) != std::wstring_view::npos;
}

}  // namespace dialwright::fuzz
