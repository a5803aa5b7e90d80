#include "window/describe.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace dialwright {
namespace {

std::wstring FormatHex(HWND hwnd, std::wstring_view digits) {
    std::wstring text;
    auto value = reinterpret_cast<std::uintptr_t>(hwnd);
    do {
        text.push_back(digits[value % 16]);
        value /= 16;
    } while (value != 0);
    std::ranges::reverse(text);
    return text;
}

}  // namespace

std::wstring FormatHandleHex(HWND hwnd) { return FormatHex(hwnd, L"0123456789ABCDEF"); }

std::wstring FormatHandleLowerHex(HWND hwnd) { return FormatHex(hwnd, L"0123456789abcdef"); }

Rectangle ToRectangle(const RECT& rect) {
    return {.left = static_cast<int>(rect.left),
            .top = static_cast<int>(rect.top),
            .right = static_cast<int>(rect.right),
            .bottom = static_cast<int>(rect.bottom)};
}

std::wstring FormatRect(const RECT& rect) { return FormatRectangle(ToRectangle(rect)); }

}  // namespace dialwright
