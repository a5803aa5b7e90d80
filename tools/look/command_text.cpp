#include "look/command_text.h"

namespace dialwright::tools {
namespace {

constexpr std::wstring_view kPlain =
    L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.,_-+#*()[]{}?^$|:;/@&=!%~<>'";

}  // namespace

std::wstring QuoteToken(std::wstring_view text) {
    if (!text.empty() && text.find_first_not_of(kPlain) == std::wstring_view::npos) return std::wstring(text);
    std::wstring quoted = L"\"";
    for (const wchar_t unit : text) {
        if (unit == L'"' || unit == L'\\') quoted.push_back(L'\\');
        quoted.push_back(unit);
    }
    quoted.push_back(L'"');
    return quoted;
}

std::wstring EscapeForExpression(std::wstring_view text) {
    if (text.empty()) return L".*";
    constexpr std::wstring_view kSpecial = L"\\^$.|?*+()[]{}";
    std::wstring escaped;
    for (const wchar_t unit : text) {
        if (kSpecial.find(unit) != std::wstring_view::npos) escaped.push_back(L'\\');
        escaped.push_back(unit);
    }
    return escaped;
}

}  // namespace dialwright::tools
