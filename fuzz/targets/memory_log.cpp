#include "trace/memory_log.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "pieces.h"
#include "target.h"
#include "trace_reader/memory_log_search.h"

namespace dialwright::fuzz {
namespace {

using tools::MemoryLines;

struct Freed {
    void operator()(TraceMemLog* log) const noexcept { FreeMemoryLog(log); }
};

std::vector<MemoryLines> Search(Input& input, std::string_view dump, bool inPieces) {
    std::vector<MemoryLines> found;
    tools::MemoryLogSearch search([&](const MemoryLines& lines) { found.push_back(lines); });
    if (inPieces) {
        InPieces(input, dump, [&](std::string_view piece) { search.Feed(piece); });
    } else {
        search.Feed(dump);
    }
    return found;
}

/// What a log must hold: the last lines, each cut.
std::vector<std::string> LastLines(const std::vector<std::string>& texts, std::uint64_t count) {
    std::vector<std::string> lines;
    const std::uint64_t kept = (std::min)(count, std::uint64_t{kMemoryLogSlots});
    for (std::uint64_t i = count - kept; i < count; ++i) {
        lines.push_back(texts[i % texts.size()].substr(0, kMemoryLogSlotBytes - 1));
    }
    return lines;
}

}  // namespace

void Try(Input input) {
    const auto count = input.Between<std::uint64_t>(1, 1100);
    std::vector<std::string> texts(input.Between<std::size_t>(1, 3));
    for (std::string& text : texts) {
        text = input.Bytes(40);
        std::erase(text, '\0');
    }
    if (input.Flag()) texts.back().resize(1500, 'x');
    const std::unique_ptr<TraceMemLog, Freed> log(AllocateMemoryLog());
    for (std::uint64_t i = 0; i < count; ++i) StoreInMemoryLog(*log, texts[i % texts.size()]);

    const std::string before = input.Bytes(60);
    std::string dump = before + "TraceMemLogHead";
    dump.append(reinterpret_cast<const char*>(log.get()), sizeof *log);
    dump += input.RestAsBytes();
    const auto found = Search(input, dump, false);
    Require(!found.empty(), "a log in a dump is found, also behind its label alone");
    const MemoryLines& lines = found.back();
    Require(lines.counter == count && lines.lines == LastLines(texts, count), "with its last lines");
    const auto again = Search(input, dump, true);
    Require(again.size() == found.size() && again.back().lines == lines.lines, "in whatever pieces the dump comes");
}

}  // namespace dialwright::fuzz
