#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace dialwright::tools {

/// Cuts the bytes of a trace file into records: a line with its continuation lines, without the line end behind it.
/// Bytes come in pieces of any size.
class RecordSplitter {
public:
    void Feed(std::string_view bytes);

    /// The next record that surely is whole: the one behind it has begun.
    [[nodiscard]] std::optional<std::string> Next();

    /// The last record, when its line has ended and nobody has anything to add; to be asked when no more bytes came.
    [[nodiscard]] std::optional<std::string> TakeEnded();

    /// All that is left, a torn line at the end included.
    [[nodiscard]] std::optional<std::string> TakeRest();

private:
    [[nodiscard]] std::optional<std::size_t> EndOfRecord();
    std::string Take(std::size_t end, std::size_t next);

    std::string waiting;
    std::size_t begin = 0;
    /// Up to here there is no end of a record.
    std::size_t searched = 0;
};

}  // namespace dialwright::tools
