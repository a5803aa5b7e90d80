#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "trace/format_interpreter.h"

namespace dialwright {

using Arguments = std::vector<FormatArg>;
using namespace std::string_view_literals;

inline constexpr std::size_t kLineBytes = 4096;
inline constexpr const char* kNoNarrow = nullptr;
inline constexpr const wchar_t* kNoWide = nullptr;

/// What the line writer makes of a format in an area of this size.
inline std::string Interpret(const std::string& format, const Arguments& arguments, std::size_t room = kLineBytes) {
    std::vector<char> area(room);
    BoundedText text(area);
    InterpretFormat(text, format.c_str(), FormatArgs(arguments));
    return std::string(text.View());
}

}  // namespace dialwright
