#include "trace_reader/filter.h"

#include <algorithm>
#include <initializer_list>
#include <ranges>

namespace dialwright::tools {
namespace {

constexpr std::size_t kDateLength = 10;

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool ContainsInAnyCase(std::string_view text, std::string_view part) {
    const auto same = [](char a, char b) { return Lower(a) == Lower(b); };
    return !std::ranges::search(text, part, same).empty() || part.empty();
}

bool HasForm(std::string_view text, std::string_view form) {
    return text.size() == form.size() && std::ranges::equal(text, form, [](char c, char sign) {
               return sign == 'd' ? c >= '0' && c <= '9' : c == sign;
           });
}

bool IsTimeOfDay(std::string_view text) {
    if (HasForm(text, "dd:dd") || HasForm(text, "dd:dd:dd")) return true;
    return text.size() > 9 && text.size() <= 16 && HasForm(text.substr(0, 9), "dd:dd:dd.") &&
           text.substr(9).find_first_not_of("0123456789") == std::string_view::npos;
}

template <class Field, class Wanted>
Verdict Ask(const Field& field, Wanted wanted) {
    if (!field.has_value()) return Verdict::NotJudged;
    return wanted(*field) ? Verdict::Shown : Verdict::LeftOut;
}

Verdict JudgeId(const std::optional<std::uint32_t>& id, const std::vector<std::uint32_t>& wanted) {
    if (wanted.empty()) return Verdict::Shown;
    return Ask(id, [&](std::uint32_t value) { return std::ranges::find(wanted, value) != wanted.end(); });
}

}  // namespace

std::optional<TimeBound> TimeBound::Read(std::string_view text) {
    TimeBound bound;
    bound.text = text;
    bound.hasDate = HasForm(text.substr(0, kDateLength), "dddd-dd-dd");
    if (!bound.hasDate) return IsTimeOfDay(text) ? std::optional(bound) : std::nullopt;
    if (text.size() == kDateLength) return bound;
    if (text[kDateLength] != ' ' && text[kDateLength] != 'T') return std::nullopt;
    bound.text[kDateLength] = ' ';
    return IsTimeOfDay(text.substr(kDateLength + 1)) ? std::optional(bound) : std::nullopt;
}

int TimeBound::Compare(std::string_view lineTime) const {
    const std::string_view comparable = hasDate ? lineTime : lineTime.substr(kDateLength + 1);
    return comparable.substr(0, text.size()).compare(text);
}

Verdict Filter::Judge(const TraceFields& fields, std::string_view whole) const {
    const std::optional<std::string_view> time = fields.time.empty() ? std::nullopt : std::optional(fields.time);
    const std::optional<std::string_view> name = fields.HasPrefix() ? std::optional(fields.function) : std::nullopt;
    const auto verdicts = {
        !atLeast ? Verdict::Shown : Ask(fields.level, [&](TraceLevel level) { return level >= *atLeast; }),
        function.empty() ? Verdict::Shown
                         : Ask(name, [&](std::string_view value) { return ContainsInAnyCase(value, function); }),
        JudgeId(fields.process, processes),
        JudgeId(fields.thread, threads),
        !since ? Verdict::Shown : Ask(time, [&](std::string_view value) { return since->Compare(value) >= 0; }),
        !until ? Verdict::Shown : Ask(time, [&](std::string_view value) { return until->Compare(value) <= 0; }),
        ContainsInAnyCase(whole, text) ? Verdict::Shown : Verdict::LeftOut};
    if (std::ranges::find(verdicts, Verdict::LeftOut) != verdicts.end()) return Verdict::LeftOut;
    return std::ranges::find(verdicts, Verdict::NotJudged) != verdicts.end() ? Verdict::NotJudged : Verdict::Shown;
}

}  // namespace dialwright::tools
