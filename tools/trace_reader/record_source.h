#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "trace_reader/file_pairs.h"
#include "trace_reader/file_pieces.h"
#include "trace_reader/record_splitter.h"

namespace dialwright::tools {

/// The files of a pair that exist, the older one first, as their first lines tell.
[[nodiscard]] std::vector<std::wstring> OlderFirst(const TracePair& pair);

/// The records of a pair from the oldest to the newest.
class PairRecords {
public:
    explicit PairRecords(const TracePair& pair);

    [[nodiscard]] std::optional<std::string> Next();

    /// Files whose rest could not be read, as they were begun anew or taken away in the midst.
    [[nodiscard]] const std::vector<std::wstring>& Broken() const { return broken; }

private:
    [[nodiscard]] bool FeedMore();

    std::vector<FilePieces> files;
    std::size_t current = 0;
    RecordSplitter splitter;
    std::vector<std::wstring> broken;
};

/// A record, and which of the joined sources it is from.
struct JoinedRecord {
    std::string text;
    std::size_t source = 0;
};

/// Joins several pairs by the time of their records. The order within a pair stays; of records of the same time that
/// of the pair named first comes first. A record without a time stays behind the one before it.
class JoinedRecords {
public:
    explicit JoinedRecords(const std::vector<TracePair>& pairs);

    [[nodiscard]] std::optional<JoinedRecord> Next();
    [[nodiscard]] std::vector<std::wstring> Broken() const;

private:
    struct Source {
        PairRecords records;
        std::optional<std::string> head;
        std::int64_t instant;
    };
    static void Advance(Source& source);

    std::vector<Source> sources;
};

}  // namespace dialwright::tools
