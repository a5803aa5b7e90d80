#include "run/format_match.h"

namespace dialwright::tools {
namespace {

/// The length of the conversion at the beginning of this text, such as 3 for "%ls".
std::size_t ConversionLength(std::string_view format) { return format.find_first_of("diuxsp", 1) + 1; }

}  // namespace

std::optional<std::vector<std::string>> MatchFormat(std::string_view format, std::string_view text) {
    std::vector<std::string> found;
    for (;;) {
        const std::size_t conversion = format.find('%');
        const std::string_view literal = format.substr(0, conversion);
        if (!text.starts_with(literal)) return std::nullopt;
        text.remove_prefix(literal.size());
        if (conversion == std::string_view::npos) {
            return text.empty() ? std::optional(std::move(found)) : std::nullopt;
        }
        format.remove_prefix(conversion);
        format.remove_prefix(ConversionLength(format));
        // The last conversion takes all that is left but the text behind it.
        const std::string_view next = format.substr(0, format.find('%'));
        const bool isLast = next.size() == format.size();
        const std::size_t end = next.empty() ? text.size() : isLast ? text.rfind(next) : text.find(next);
        if (end == std::string_view::npos) return std::nullopt;
        found.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
    }
}

}  // namespace dialwright::tools
