#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dialwright::tools {

/// One line of a script file. `number` counts from 1.
struct SourceLine {
    std::size_t number = 0;
    std::wstring text;
    /// Its first non-blank is "#": a comment of the tools, which the library would refuse.
    bool isComment = false;
};

/// A script as it stands in a file.
struct SourceText {
    std::vector<SourceLine> lines;
    /// Bytes that are no UTF-8 were read as U+FFFD.
    bool hadInvalidBytes = false;
    /// The library would read up to the first of them.
    bool hadZero = false;
};

/// Reads UTF-8, with or without a byte-order mark. Lines end at a line feed; a carriage return before it stays part of
/// the line, as the library sees it.
[[nodiscard]] SourceText ReadSource(std::string_view utf8);

/// The same of any text: what is no UTF-8 becomes U+FFFD.
[[nodiscard]] std::wstring Wide(std::string_view utf8);

/// A character that no output of ours may hold.
[[nodiscard]] constexpr bool IsControl(wchar_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

/// What the library is given: every line but the comments, each in its place, so that line numbers stay.
[[nodiscard]] std::wstring PureScript(const SourceText& source);

}  // namespace dialwright::tools
