#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace dialwright::tools {

enum class Severity : std::uint8_t { Error, Warning };

/// What a check has found. Line and column count from 1, columns in UTF-16 units.
struct Finding {
    /// "DW102". DW1xx: the library refuses the script. DW2xx: the line must fail when it runs. DW3xx: a warning.
    std::string_view code;
    std::size_t line = 1;
    std::size_t column = 1;
    std::size_t length = 0;
    std::wstring text;

    [[nodiscard]] Severity Level() const { return code[2] == '3' ? Severity::Warning : Severity::Error; }
};

/// A code with what it stands for in general, for lists and reports.
struct Rule {
    std::string_view code;
    std::string_view name;
    std::string_view summary;
};

}  // namespace dialwright::tools
