#include "trace_reader/record_source.h"

#include <algorithm>
#include <limits>

#include "trace_reader/trace_line.h"

namespace dialwright::tools {
namespace {

constexpr std::int64_t kBeforeAll = (std::numeric_limits<std::int64_t>::min)();

/// The first moment that one of the file's first lines tells.
std::int64_t FirstInstant(const std::wstring& path) {
    FilePieces file(path);
    std::string bytes;
    if (file.Next(bytes) != FilePieces::Outcome::Bytes) return kBeforeAll;
    RecordSplitter splitter;
    splitter.Feed(bytes);
    for (auto record = splitter.Next(); record; record = splitter.Next()) {
        if (const auto instant = InstantOf(ReadFields(*record))) return *instant;
    }
    return InstantOf(ReadFields(splitter.TakeRest().value_or(""))).value_or(kBeforeAll);
}

}  // namespace

std::vector<std::wstring> OlderFirst(const TracePair& pair) {
    std::vector<std::wstring> files = pair.Files();
    std::erase_if(files, [](const std::wstring& file) { return StateOf(file) == FileState(); });
    const bool swapped = files.size() == 2 && FirstInstant(files[1]) < FirstInstant(files[0]);
    if (swapped) std::swap(files[0], files[1]);
    return files;
}

PairRecords::PairRecords(const TracePair& pair) {
    for (const std::wstring& file : OlderFirst(pair)) files.emplace_back(file);
}

std::optional<std::string> PairRecords::Next() {
    for (;;) {
        if (auto record = splitter.Next()) return record;
        if (current == files.size()) return std::nullopt;
        if (FeedMore()) continue;
        ++current;
        if (auto record = splitter.TakeRest()) return record;
    }
}

bool PairRecords::FeedMore() {
    std::string bytes;
    const auto outcome = files[current].Next(bytes);
    if (outcome == FilePieces::Outcome::Bytes) {
        splitter.Feed(bytes);
        return true;
    }
    if (outcome != FilePieces::Outcome::End) broken.push_back(files[current].Path());
    return false;
}

JoinedRecords::JoinedRecords(const std::vector<TracePair>& pairs) {
    for (const TracePair& pair : pairs) {
        sources.push_back({.records = PairRecords(pair), .head = std::nullopt, .instant = kBeforeAll});
        Advance(sources.back());
    }
}

void JoinedRecords::Advance(Source& source) {
    source.head = source.records.Next();
    if (!source.head) return;
    source.instant = InstantOf(ReadFields(*source.head)).value_or(source.instant);
}

std::optional<JoinedRecord> JoinedRecords::Next() {
    Source* earliest = nullptr;
    for (Source& source : sources) {
        if (source.head && (earliest == nullptr || source.instant < earliest->instant)) earliest = &source;
    }
    if (earliest == nullptr) return std::nullopt;
    JoinedRecord record{.text = std::move(earliest->head).value_or(""),
                        .source = static_cast<std::size_t>(earliest - sources.data())};
    Advance(*earliest);
    return record;
}

std::vector<std::wstring> JoinedRecords::Broken() const {
    std::vector<std::wstring> files;
    for (const Source& source : sources) {
        files.insert(files.end(), source.records.Broken().begin(), source.records.Broken().end());
    }
    return files;
}

}  // namespace dialwright::tools
