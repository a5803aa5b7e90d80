#include "junit.h"

#include <array>
#include <cstdio>
#include <string_view>

#include "printable.h"

namespace dialwright::tools {
namespace {

/// Without control characters, and with what XML keeps for itself written out.
std::string Escape(std::string_view text) {
    std::string escaped;
    for (const char c : Printable(text)) {
        switch (c) {
            case '&': escaped += "&amp;"; break;
            case '<': escaped += "&lt;"; break;
            case '>': escaped += "&gt;"; break;
            case '"': escaped += "&quot;"; break;
            default: escaped.push_back(c);
        }
    }
    return escaped;
}

std::string Attribute(const char* name, std::string_view value) {
    return " " + std::string(name) + "=\"" + Escape(value) + "\"";
}

std::string Seconds(double milliseconds) {
    std::array<char, 32> text{};
    constexpr double kMillisecondsPerSecond = 1000;
    std::snprintf(text.data(), text.size(), "%.3f", milliseconds / kMillisecondsPerSecond);
    return text.data();
}

/// U+FFFE and U+FFFF have no place in XML.
std::string WithoutNoncharacters(std::string text) {
    for (const char* nonCharacter : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
        for (std::size_t at = text.find(nonCharacter); at != std::string::npos; at = text.find(nonCharacter, at)) {
            text.replace(at, 3, "\xEF\xBF\xBD");
        }
    }
    return text;
}

/// The messages, a line each.
std::string SystemOut(const LineReport& line) {
    if (line.messages.empty()) return "";
    std::string text;
    for (const std::string& message : line.MessageLines()) text += Escape(message) + "\n";
    return "      <system-out>" + text + "</system-out>\n";
}

std::string Outcome(const LineReport& line) {
    if (line.status == LineStatus::Skipped) return "      <skipped/>\n";
    if (line.status != LineStatus::Failed) return "";
    std::string details = line.reason + ". " + line.suggestion;
    for (const std::string& file : line.files) details += " See " + file + ".";
    return "      <failure" + Attribute("type", line.code) + Attribute("message", line.reason) + ">" + Escape(details) +
           "</failure>\n";
}

std::string Case(const LineReport& line) {
    return "    <testcase" + Attribute("name", "L" + std::to_string(line.line) + " " + line.text) +
           Attribute("classname", line.file) + Attribute("time", Seconds(line.milliseconds)) + ">\n" + Outcome(line) +
           SystemOut(line) + "    </testcase>\n";
}

std::string Suite(const FileReport& file) {
    std::string suite =
        "  <testsuite" + Attribute("name", file.file) + Attribute("tests", std::to_string(file.lines.size())) +
        Attribute("failures", std::to_string(file.Count(LineStatus::Failed))) + Attribute("errors", "0") +
        Attribute("skipped", std::to_string(file.Count(LineStatus::Skipped))) +
        Attribute("time", Seconds(file.Milliseconds())) + Attribute("file", file.file) + ">\n";
    for (const LineReport& line : file.lines) suite += Case(line);
    return suite + "  </testsuite>\n";
}

}  // namespace

std::string FormatRunAsJUnit(const RunReport& report) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"dialwright\">\n";
    for (const FileReport& file : report.files) text += Suite(file);
    return WithoutNoncharacters(text + "</testsuites>\n");
}

}  // namespace dialwright::tools
