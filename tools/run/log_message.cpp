#include "run/log_message.h"

namespace dialwright::tools {
namespace {

constexpr std::size_t kIndent = 80;
constexpr std::string_view kBehindTag = ": ";

bool Continues(std::string_view line) {
    return line.size() >= kIndent && line.substr(0, kIndent).find_first_not_of(' ') == std::string_view::npos;
}

}  // namespace

void MessageCollector::Add(std::string_view line) {
    if (Continues(line) && !messages.empty()) {
        messages.back().text.append("\n").append(line.substr(kIndent));
        return;
    }
    const std::size_t end = line.find(kBehindTag);
    if (end == std::string_view::npos) {
        messages.push_back({.tag = "", .text = std::string(line)});
        return;
    }
    messages.push_back(
        {.tag = std::string(line.substr(0, end)), .text = std::string(line.substr(end + kBehindTag.size()))});
}

}  // namespace dialwright::tools
