#include "arguments.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace dialwright::bench {

Arguments::Arguments(int count, char** values, std::string usageText, std::vector<std::string> known)
    : usage(std::move(usageText)) {
    const std::vector<std::string> words(values + 1, values + count);
    if (words.size() == 1 && words.front() == "--help") {
        std::printf("%s", usage.c_str());
        std::exit(0);
    }
    for (std::size_t i = 0; i < words.size(); i += 2) {
        if (std::ranges::find(known, words[i]) == known.end()) Refuse(words[i] + " is not an option");
        if (i + 1 == words.size()) Refuse(words[i] + " has no value");
        given[words[i]] = words[i + 1];
    }
}

std::string Arguments::Text(const std::string& option) const {
    const auto found = given.find(option);
    if (found == given.end()) Refuse(option + " is missing");
    return found->second;
}

int Arguments::Number(const std::string& option) const {
    const std::string text = Text(option);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number <= 0) {
        Refuse(option + " wants a number above zero");
    }
    return number;
}

void Arguments::Refuse(const std::string& what) const {
    std::fprintf(stderr, "%s\n%s", what.c_str(), usage.c_str());
    std::exit(2);
}

}  // namespace dialwright::bench
