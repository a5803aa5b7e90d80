#include "run/message_table.h"

#include "platform/windows.h"
#include "run/format_match.h"
#include "run/reason.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

using namespace tools;

/// The format with values in place of its conversions, as the library writes it.
std::string Filled(std::string_view format, const std::vector<std::string>& values) {
    std::string text;
    std::size_t used = 0;
    for (std::size_t at = 0; at < format.size(); ++at) {
        if (format[at] != '%') {
            text.push_back(format[at]);
            continue;
        }
        text += values[used++ % values.size()];
        at = format.find_first_of("diuxsp", at + 1);
    }
    return text;
}

void CheckRow(const MessageRow& row, const std::vector<std::string>& values) {
    const LogMessage message{.tag = row.tag == "*" ? "Window::MoveWindow" : std::string(row.tag),
                             .text = Filled(row.format, values)};
    const auto matched = MatchFormat(row.format, message.text);
    Require(matched.has_value(), "a message of a format is recognized as one");
    Require(Filled(row.format, matched->empty() ? std::vector<std::string>{""} : *matched) == message.text,
            "the values that are read make the same message");
    const auto known = Recognize(message);
    Require(known.has_value(), "every message of the table is known");
    (void)known->Sentence();
    Course course;
    course.Follow({&message, 1});
    Require(!course.WhyItFailed().code.empty() && !course.WhyItFailed().sentence.empty(), "there is always a reason");
}

}  // namespace

void Try(Input input) {
    const MessageRow& row = AllMessages()[input.Between<std::size_t>(0, AllMessages().size() - 1)];
    CheckRow(row, {input.Bytes(12), input.Bytes(12), input.Bytes(12)});
    MessageCollector collector;
    std::size_t lines = 0;
    std::string joined;
    for (; !input.IsEmpty() && lines < 20; ++lines) {
        const std::string line = (input.Between(0, 3) == 0 ? std::string(80, ' ') : "") + input.Bytes(40);
        collector.Add(line);
        joined += line;
    }
    Require(collector.All().size() <= lines, "there are no more messages than lines");
    std::size_t bytes = 0;
    for (const LogMessage& message : collector.All()) bytes += message.tag.size() + message.text.size();
    Require(bytes <= joined.size() + lines, "messages are made of their lines");
    Course course;
    course.Follow(collector.All());
    (void)course.WhyItFailed();
}

}  // namespace dialwright::fuzz
