#include "github.h"

#include <string_view>

namespace dialwright::tools {
namespace {

/// Hides what would end a value of a workflow command.
std::string Escape(std::string_view text, bool isProperty) {
    std::string escaped;
    for (const char c : text) {
        const bool special = c == '%' || (isProperty && (c == ':' || c == ','));
        constexpr std::string_view kHex = "0123456789ABCDEF";
        if (special) {
            const auto byte = static_cast<unsigned char>(c);
            escaped += {'%', kHex[byte >> 4U], kHex[byte & 0xFU]};
        } else {
            escaped.push_back(c);
        }
    }
    return escaped;
}

}  // namespace

std::string GithubAnnotation(const Annotation& annotation) {
    const std::string column = annotation.column == 0 ? "" : ",col=" + std::to_string(annotation.column);
    return "::" + annotation.level + " file=" + Escape(annotation.file, true) +
           ",line=" + std::to_string(annotation.line) + column + ",title=" + Escape(annotation.title, true) +
           "::" + Escape(annotation.text, false) + "\n";
}

}  // namespace dialwright::tools
