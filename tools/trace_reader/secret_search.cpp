#include "trace_reader/secret_search.h"

#include <algorithm>
#include <set>
#include <utility>

#include "trace/format_interpreter.h"

namespace dialwright::tools {
namespace {

std::string AsInQuotes(std::string_view value) {
    std::string escaped;
    for (const char c : value) {
        if (c == '"' || c == '\\') escaped.push_back('\\');
        escaped.push_back(c);
    }
    return escaped;
}

std::string AsFormat(const std::string& value) {
    std::string area(value.size() + 1, '\0');
    BoundedText text(area);
    InterpretFormat(text, value.c_str(), FormatArgs({}));
    return std::string(text.View());
}

std::string ProblemOf(const Secret& secret, const std::string& place) {
    if (secret.name.empty()) return place + " has no NAME=VALUE";
    if (secret.value.size() >= kLeastSecretBytes) return {};
    return place + ": the value of " + secret.name + " is shorter than " + std::to_string(kLeastSecretBytes) +
           " bytes and would be found everywhere by chance";
}

Secret ReadSecret(std::string_view row) {
    const std::size_t equals = row.find('=');
    if (equals == std::string_view::npos) return {};
    return {.name = std::string(row.substr(0, equals)), .value = std::string(row.substr(equals + 1))};
}

}  // namespace

SecretList ReadSecrets(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    SecretList list;
    for (int number = 1; !text.empty(); ++number) {
        std::string_view row = text.substr(0, text.find('\n'));
        text.remove_prefix((std::min)(text.size(), row.size() + 1));
        if (row.ends_with('\r')) row.remove_suffix(1);
        if (row.empty() || row.starts_with('#')) continue;
        list.secrets.push_back(ReadSecret(row));
        list.problem = ProblemOf(list.secrets.back(), "line " + std::to_string(number));
        if (!list.problem.empty()) return list;
    }
    if (list.secrets.empty()) list.problem = "it holds no NAME=VALUE";
    return list;
}

std::vector<std::string> FormsOf(std::string_view value) {
    const std::string plain(value);
    const std::string quoted = AsInQuotes(value);
    std::set<std::string> forms = {plain, quoted, AsFormat(plain), AsFormat(quoted)};
    std::erase_if(forms, [](const std::string& form) { return form.size() < kLeastSecretBytes; });
    return {forms.begin(), forms.end()};
}

SecretSearch::SecretSearch(const std::vector<Secret>& list, Found found) : found(std::move(found)) {
    for (const Secret& secret : list) {
        for (const std::string& form : FormsOf(secret.value)) {
            needles.push_back({.text = form, .secret = secrets.size()});
            longest = (std::max)(longest, form.size());
        }
        secrets.push_back({.name = secret.name});
    }
}

void SecretSearch::Feed(std::string_view bytes) {
    waiting += bytes;
    std::set<std::pair<std::size_t, std::size_t>> places;
    for (const Needle& needle : needles) {
        // What lies wholly in the part that was searched before has been told.
        std::size_t at = searched >= needle.text.size() ? searched - needle.text.size() + 1 : 0;
        for (; (at = waiting.find(needle.text, at)) != std::string::npos; ++at) places.emplace(at, needle.secret);
    }
    std::uint64_t currentLine = line;
    std::size_t counted = 0;
    for (const auto& [at, secret] : places) {
        currentLine += LineFeeds(std::exchange(counted, at), at);
        Tell(currentLine, secret);
    }
    const std::size_t done = waiting.size() - (std::min)(waiting.size(), longest - 1);
    line += LineFeeds(0, done);
    waiting.erase(0, done);
    searched = waiting.size();
}

void SecretSearch::Tell(std::uint64_t where, std::size_t secret) {
    if (std::exchange(secrets[secret].toldLine, where) != where) found(where, secrets[secret].name);
}

std::uint64_t SecretSearch::LineFeeds(std::size_t from, std::size_t to) const {
    return static_cast<std::uint64_t>(std::ranges::count(std::string_view(waiting).substr(from, to - from), '\n'));
}

}  // namespace dialwright::tools
