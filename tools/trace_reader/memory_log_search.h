#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace dialwright::tools {

/// The last lines of a process, as its memory held them.
struct MemoryLines {
    /// Lines ever stored; those before the last 1,024 are gone.
    std::uint64_t counter = 0;
    /// From the oldest to the newest, each cut to 1,023 bytes.
    std::vector<std::string> lines;
};

/// Looks for the memory logs in a dump, which comes in pieces of any size. The label alone proves nothing, as it stands
/// in the library's image too; counter and lines must make sense.
class MemoryLogSearch {
public:
    explicit MemoryLogSearch(std::function<void(const MemoryLines&)> take) : take(std::move(take)) {}

    void Feed(std::string_view bytes);

private:
    std::function<void(const MemoryLines&)> take;
    std::string waiting;
};

}  // namespace dialwright::tools
