#pragma once

#include <cstddef>
#include <regex>
#include <string>

namespace dialwright::tools {

/// What a command names a window by.
struct WindowCriteria {
    std::wstring className;
    std::wstring title;
    bool literal = false;
};

/// Compares class and title of windows as the library does.
class NameMatcher {
public:
    /// Throws std::regex_error for what is no expression, or too large a one for the stack that is left.
    NameMatcher(WindowCriteria criteria, std::size_t stackBytes);

    /// Throws std::regex_error where an expression explodes.
    [[nodiscard]] bool Takes(const std::wstring& className, const std::wstring& title) const;

private:
    WindowCriteria wanted;
    std::wregex titleExpression;
    std::wregex classExpression;
};

}  // namespace dialwright::tools
