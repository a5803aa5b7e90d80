#include "trace_reader/secret_search.h"

#include <algorithm>
#include <set>
#include <utility>

#include "pieces.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

using Places = std::set<std::pair<std::uint64_t, std::string>>;

Places Naive(const std::vector<tools::Secret>& secrets, const std::string& bytes) {
    Places places;
    for (const tools::Secret& secret : secrets) {
        for (const std::string& form : tools::FormsOf(secret.value)) {
            for (std::size_t at = bytes.find(form); at != std::string::npos; at = bytes.find(form, at + 1)) {
                const std::string before = bytes.substr(0, at);
                places.emplace(1 + static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n')),
                               secret.name);
            }
        }
    }
    return places;
}

Places Searched(Input& input, const std::vector<tools::Secret>& secrets, const std::string& bytes) {
    Places places;
    tools::SecretSearch search(secrets, [&](std::uint64_t line, const std::string& name) {
        Require(places.emplace(line, name).second, "a line and a secret are told once");
    });
    InPieces(input, bytes, [&](std::string_view piece) { search.Feed(piece); });
    return places;
}

}  // namespace

void Try(Input input) {
    std::vector<tools::Secret> secrets;
    for (const char* name : {"A", "B", "C"}) {
        std::string value = input.Bytes(16);
        std::erase_if(value, [](char c) { return c == '\0' || c == '\n'; });
        secrets.push_back({.name = name, .value = value});
    }
    std::erase_if(secrets, [](const tools::Secret& secret) { return secret.value.size() < tools::kLeastSecretBytes; });
    if (secrets.empty()) return;
    std::string bytes;
    while (!input.IsEmpty() && bytes.size() < 300) {
        if (input.Flag()) {
            bytes += input.OneOf(secrets).value;
        } else {
            bytes += input.Bytes(20);
        }
    }
    Require(Searched(input, secrets, bytes) == Naive(secrets, bytes),
            "a plain search finds the same in the same lines");
}

}  // namespace dialwright::fuzz
