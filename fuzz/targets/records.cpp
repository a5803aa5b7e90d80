#include "trace_reader/record_splitter.h"

#include <vector>

#include "pieces.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

using Records = std::vector<std::string>;

void TakeAll(tools::RecordSplitter& splitter, Records& records) {
    while (auto record = splitter.Next()) records.push_back(std::move(*record));
}

Records Whole(std::string_view bytes) {
    Records records;
    tools::RecordSplitter splitter;
    splitter.Feed(bytes);
    TakeAll(splitter, records);
    if (auto rest = splitter.TakeRest()) records.push_back(std::move(*rest));
    Require(!splitter.TakeRest(), "behind the rest is nothing");
    return records;
}

Records Pieces(Input& input, std::string_view bytes) {
    Records records;
    tools::RecordSplitter splitter;
    InPieces(input, bytes, [&](std::string_view piece) {
        splitter.Feed(piece);
        TakeAll(splitter, records);
    });
    if (auto rest = splitter.TakeRest()) records.push_back(std::move(*rest));
    return records;
}

/// Bytes as a file may hold them: "i" stands for the indent of a further line, "r" for a line end.
std::string Unfolded(std::string_view folded) {
    std::string bytes;
    for (const char c : folded) {
        if (c == 'i') {
            bytes.append(80, ' ');
        } else if (c == 'r') {
            bytes += "\r\n";
        } else {
            bytes.push_back(c);
        }
    }
    return bytes;
}

}  // namespace

void Try(Input input) {
    const std::string bytes = Unfolded(input.Bytes(200));
    const Records records = Whole(bytes);
    Require(Pieces(input, bytes) == records, "the records are the same in whatever pieces the bytes come");
    std::string joined;
    for (const std::string& record : records) joined += record + "\r\n";
    Require(joined == bytes || joined == bytes + "\r\n", "records and line ends are all the bytes, and nothing else");
}

}  // namespace dialwright::fuzz
