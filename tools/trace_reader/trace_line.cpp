#include "trace_reader/trace_line.h"

#include <array>
#include <charconv>
#include <chrono>
#include <utility>

namespace dialwright::tools {
namespace {

constexpr std::array<std::pair<std::string_view, TraceLevel>, 4> kLevels = {{{"  debug", TraceLevel::Debug},
                                                                             {"   info", TraceLevel::Info},
                                                                             {"warning", TraceLevel::Warning},
                                                                             {"  error", TraceLevel::Error}}};

/// The source lines of messages with a function in front; all other numbers are the logger's own lines.
constexpr std::uint32_t kFirstMessageNumber = 40;
constexpr std::uint32_t kLastMessageNumber = 43;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Whether the text begins like the form, where "d" stands for any digit and "s" for a sign.
bool BeginsLike(std::string_view text, std::string_view form) {
    if (text.size() < form.size()) return false;
    for (std::size_t i = 0; i < form.size(); ++i) {
        if (form[i] == 'd' ? !IsDigit(text[i]) : form[i] == 's' ? text[i] != '+' && text[i] != '-' : text[i] != form[i])
            return false;
    }
    return true;
}

template <class Number>
std::optional<Number> ReadNumber(std::string_view digits) {
    Number number = 0;
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, number);
    if (digits.empty() || read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return number;
}

std::size_t CountDigits(std::string_view text) {
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count])) ++count;
    return count;
}

void TakeTime(std::string_view& rest, TraceFields& fields) {
    constexpr std::string_view kForm = "[dddd-dd-dd dd:dd:dd.ddddddd UTCsdd:dd] ";
    if (!BeginsLike(rest, kForm)) return;
    fields.time = rest.substr(1, 27);
    fields.zone = rest.substr(29, 9);
    rest.remove_prefix(kForm.size());
}

void TakeIds(std::string_view& rest, TraceFields& fields) {
    if (!rest.starts_with('[')) return;
    const std::size_t processDigits = CountDigits(rest.substr(1));
    const std::size_t colon = 1 + processDigits;
    if (colon >= rest.size() || rest[colon] != ':') return;
    const std::size_t threadDigits = CountDigits(rest.substr(colon + 1));
    const std::size_t end = colon + 1 + threadDigits;
    if (!rest.substr(end).starts_with("] ")) return;
    fields.process = ReadNumber<std::uint32_t>(rest.substr(1, processDigits));
    fields.thread = ReadNumber<std::uint32_t>(rest.substr(colon + 1, threadDigits));
    rest.remove_prefix(end + 2);
}

std::string_view WithoutBlanksBehind(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

void TakeTag(std::string_view& rest, TraceFields& fields) {
    const std::size_t end = rest.find("] ");
    if (!rest.starts_with('[') || end == std::string_view::npos) return;
    std::string_view tag = rest.substr(1, end - 1);
    for (const auto& [text, level] : kLevels) {
        if (!tag.ends_with(text)) continue;
        fields.level = level;
        tag.remove_suffix(text.size());
    }
    tag = WithoutBlanksBehind(tag);
    const std::size_t numberBegin = tag.find_last_of(' ') + 1;
    fields.number = ReadNumber<std::uint32_t>(tag.substr(numberBegin));
    if (fields.number) tag = tag.substr(0, numberBegin);
    fields.logger = WithoutBlanksBehind(tag);
    rest.remove_prefix(end + 2);
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// The function's name stands before the first colon with a blank behind it.
void TakeFunction(std::string_view& rest, TraceFields& fields) {
    const std::uint32_t number = fields.number.value_or(kFirstMessageNumber);
    if (number < kFirstMessageNumber || number > kLastMessageNumber) return;
    const std::string_view firstLine = rest.substr(0, rest.find('\n'));
    const std::size_t colon = firstLine.find(": ");
    if (colon == std::string_view::npos || !IsLetter(rest.front())) return;
    fields.function = rest.substr(0, colon);
    rest.remove_prefix(colon + 2);
}

}  // namespace

std::string_view NameOf(TraceLevel level) {
    for (const auto& [text, value] : kLevels) {
        if (value == level) return text.substr(text.find_first_not_of(' '));
    }
    return {};
}

TraceFields ReadFields(std::string_view line) {
    TraceFields fields;
    std::string_view rest = line;
    TakeTime(rest, fields);
    TakeIds(rest, fields);
    TakeTag(rest, fields);
    if (fields.HasPrefix()) TakeFunction(rest, fields);
    fields.message = rest;
    return fields;
}

std::optional<std::int64_t> InstantOf(const TraceFields& fields) {
    if (fields.time.empty()) return std::nullopt;
    const auto part = [](std::string_view text, std::size_t at, std::size_t length) {
        return ReadNumber<std::int64_t>(text.substr(at, length)).value_or(0);
    };
    const std::string_view time = fields.time;
    const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(part(time, 0, 4))),
                                           std::chrono::month(static_cast<unsigned>(part(time, 5, 2))),
                                           std::chrono::day(static_cast<unsigned>(part(time, 8, 2)))};
    if (!date.ok()) return std::nullopt;
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    const std::int64_t local = ((days * 24 + part(time, 11, 2)) * 60 + part(time, 14, 2)) * 60 + part(time, 17, 2);
    const std::int64_t ahead = (part(fields.zone, 4, 2) * 60 + part(fields.zone, 7, 2)) * 60;
    return (local - (fields.zone[3] == '+' ? ahead : -ahead)) * 10'000'000 + part(time, 20, 7);
}

}  // namespace dialwright::tools
