#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace dialwright {

/// Token 0 is the command name, 1 the window class, 2 the title; the command's own arguments follow.
using TokenList = std::vector<std::wstring>;

/// A token together with the place it was read from: `offset` and `length` cover the quotes and escapes
/// as written, so a tool can point at the very characters of the line.
struct Token {
    std::wstring text;
    std::size_t offset = 0;
    std::size_t length = 0;
    bool quoted = false;
};

/// Splits a command line into tokens. Accepts any text; an unterminated quote stays part of its token.
/// Throws only std::bad_alloc.
[[nodiscard]] TokenList TokenizeCommand(const std::wstring& line);

/// The same tokens, each with its place in the line.
[[nodiscard]] std::vector<Token> TokenizeWithOffsets(const std::wstring& line);

}  // namespace dialwright
