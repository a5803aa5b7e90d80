#include "look/inspect_page.h"

#include <cstdint>
#include <map>

#include "look/inspect_page_parts.h"

namespace dialwright::tools {
namespace {

using Parts = std::map<std::string_view, std::string_view>;

/// Puts parts in place of their names in double braces. What is put in is not searched again.
std::string FillIn(std::string_view page, const Parts& parts) {
    std::string filled;
    for (;;) {
        const std::size_t begin = page.find("{{");
        const std::size_t end = page.find("}}", begin);
        filled += page.substr(0, begin);
        if (end == std::string_view::npos) return filled;
        filled += parts.at(page.substr(begin + 2, end - begin - 2));
        page.remove_prefix(end + 2);
    }
}

}  // namespace

std::string EscapeForScript(std::string_view json) {
    std::string escaped;
    escaped.reserve(json.size());
    for (const char c : json) {
        switch (c) {
            case '<': escaped += "\\u003c"; break;
            case '>': escaped += "\\u003e"; break;
            case '&': escaped += "\\u0026"; break;
            default: escaped.push_back(c);
        }
    }
    return escaped;
}

std::string Base64(std::string_view bytes) {
    constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t count = bytes.size() - at < 3 ? bytes.size() - at : 3;
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            group = group << 8U | (i < count ? static_cast<unsigned char>(bytes[at + i]) : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text.push_back(i <= count ? kLetters[group >> (18U - 6U * i) & 0x3FU] : '=');
        }
    }
    return text;
}

std::string InspectPage(std::string_view json, std::string_view png) {
    const std::string data = EscapeForScript(json);
    const std::string picture = png.empty() ? "" : "data:image/png;base64," + Base64(png);
    return FillIn(kPageHtml, {{"css", kPageCss}, {"js", kPageJs}, {"data", data}, {"picture", picture}});
}

}  // namespace dialwright::tools
