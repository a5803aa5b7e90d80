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

}  // namespace

std::string WhatIsTooShort(const std::vector<Secret>& secrets) {
    const auto isTooShort = [](const Secret& secret) { return secret.value.size() < kLeastSecretBytes; };
    const auto found = std::ranges::find_if(secrets, isTooShort);
    if (found == secrets.end()) return {};
    return "line " + std::to_string(found->line) + ": the value of " + found->name + " is shorter than " +
           std::to_string(kLeastSecretBytes) + " bytes and would be found everywhere by chance";
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
