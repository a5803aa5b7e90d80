#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "secret_file/secret_file.h"

namespace dialwright::tools {

/// Shorter values stand everywhere by chance.
inline constexpr std::size_t kLeastSecretBytes = 4;

/// Why these cannot be looked for, without any value; empty when they can.
[[nodiscard]] std::string WhatIsTooShort(const std::vector<Secret>& secrets);

/// The forms in which the trace may hold a value: as it is, as it stands in a quoted token, and both after the trace
/// has read them as a format, which eats percent signs.
[[nodiscard]] std::vector<std::string> FormsOf(std::string_view value);

/// Looks for secrets in a file that comes in pieces of any size.
class SecretSearch {
public:
    /// Called once for each line and secret; lines count from 1.
    using Found = std::function<void(std::uint64_t line, const std::string& name)>;

    SecretSearch(const std::vector<Secret>& list, Found found);

    void Feed(std::string_view bytes);

private:
    struct Needle {
        std::string text;
        std::size_t secret;
    };
    struct Known {
        std::string name;
        /// The last line where it was told.
        std::uint64_t toldLine = 0;
    };

    void Tell(std::uint64_t where, std::size_t secret);
    [[nodiscard]] std::uint64_t LineFeeds(std::size_t from, std::size_t to) const;

    std::vector<Needle> needles;
    std::vector<Known> secrets;
    Found found;
    std::size_t longest = 0;
    std::string waiting;
    /// The line in which `waiting` begins.
    std::uint64_t line = 1;
    /// So much of `waiting` was searched before.
    std::size_t searched = 0;
};

}  // namespace dialwright::tools
