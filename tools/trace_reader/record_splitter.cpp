#include "trace_reader/record_splitter.h"

#include <algorithm>

namespace dialwright::tools {
namespace {

constexpr std::size_t kIndent = 80;
constexpr std::string_view kLineEnd = "\r\n";

// The library writes no message above 4 KiB. What is longer is no trace, and must not fill the memory.
constexpr std::size_t kMostBytes = std::size_t{1} << 20U;

enum class Follower : unsigned char { Unknown, Continuation, Record };

/// What the bytes behind a line end are. A message that ends in a line end leaves an empty line behind it.
Follower Judge(std::string_view behind) {
    if (behind.empty() || behind == "\r") return Follower::Unknown;
    if (behind.starts_with(kLineEnd)) return Follower::Continuation;
    const std::size_t blanks = (std::min)(behind.find_first_not_of(' '), behind.size());
    if (blanks >= kIndent) return Follower::Continuation;
    return blanks == behind.size() ? Follower::Unknown : Follower::Record;
}

}  // namespace

void RecordSplitter::Feed(std::string_view bytes) {
    waiting.erase(0, begin);
    searched -= begin;
    begin = 0;
    waiting += bytes;
}

std::optional<std::size_t> RecordSplitter::EndOfRecord() {
    for (;;) {
        const std::size_t end = waiting.find(kLineEnd, searched);
        if (end == std::string::npos) {
            searched = waiting.empty() ? 0 : (std::max)(searched, waiting.size() - 1);
            return std::nullopt;
        }
        const Follower follower = Judge(std::string_view(waiting).substr(end + kLineEnd.size()));
        searched = end;
        if (follower == Follower::Unknown) return std::nullopt;
        if (follower == Follower::Record) return end;
        searched = end + kLineEnd.size();
    }
}

std::string RecordSplitter::Take(std::size_t end, std::size_t next) {
    std::string record = waiting.substr(begin, end - begin);
    begin = next;
    searched = next;
    return record;
}

std::optional<std::string> RecordSplitter::Next() {
    if (const auto end = EndOfRecord()) return Take(*end, *end + kLineEnd.size());
    if (waiting.size() - begin < kMostBytes) return std::nullopt;
    return Take(begin + kMostBytes, begin + kMostBytes);
}

std::optional<std::string> RecordSplitter::TakeEnded() {
    const bool ended = waiting.size() - begin >= kLineEnd.size() && waiting.ends_with(kLineEnd);
    return ended ? TakeRest() : std::nullopt;
}

std::optional<std::string> RecordSplitter::TakeRest() {
    if (begin == waiting.size()) return std::nullopt;
    const bool ended = waiting.size() - begin >= kLineEnd.size() && waiting.ends_with(kLineEnd);
    return Take(waiting.size() - (ended ? kLineEnd.size() : 0), waiting.size());
}

}  // namespace dialwright::tools
