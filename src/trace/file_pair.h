#pragma once

#include <cstdint>

namespace dialwright {

/// What the choice between two files looks at. A missing file counts as {0, 0}.
struct FileStatus {
    std::int64_t size = 0;
    std::int64_t modified = 0;
};

struct PairChoice {
    bool second = false;
    /// The chosen file is full or may hold old lines: it is deleted and begun anew.
    bool beginAnew = false;

    bool operator==(const PairChoice&) const = default;
};

/// Writing goes on in the newer file until it is full, and then begins anew in the older one. Kept on purpose: the
/// limit in bytes is a signed 32-bit number and wraps, so with 2,048 MiB, say, every file counts as full.
[[nodiscard]] constexpr PairChoice ChooseFileOfPair(FileStatus first, FileStatus second,
                                                    std::uint64_t sizeLimitMiB) noexcept {
    const auto limit = static_cast<std::int32_t>(static_cast<std::uint32_t>(sizeLimitMiB << 20U));
    if (first.modified < second.modified) {
        return second.size < limit ? PairChoice{.second = true, .beginAnew = false}
                                   : PairChoice{.second = false, .beginAnew = true};
    }
    return first.size >= limit ? PairChoice{.second = true, .beginAnew = true}
                               : PairChoice{.second = false, .beginAnew = false};
}

}  // namespace dialwright
