#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "trace_reader/file_pairs.h"
#include "trace_reader/file_pieces.h"
#include "trace_reader/record_splitter.h"

namespace dialwright::tools {

/// Follows a pair while a host writes it. Only the file that is being written is ever opened; that the host has gone
/// on in the other one is seen from outside, by its size and time.
class PairFollower {
public:
    using Take = std::function<void(const std::string& record)>;

    /// Of files that are there already, the last so many bytes are read.
    PairFollower(TracePair pair, std::uint64_t lastBytes);

    /// Hands on what is new since the last look.
    void Poll(const Take& take);

    /// Hands on what waits for its end.
    void Finish(const Take& take);

    /// How often files went before they were read to their end.
    [[nodiscard]] int Losses() const { return losses; }

private:
    void Begin(std::uint64_t lastBytes);
    enum class Drained : std::uint8_t { Nothing, All, Part };
    /// Reads to the end of the current file, but no more than so many pieces.
    Drained Drain(const Take& take, int mostPieces);
    void DrainWhole(const Take& take);
    void HandOn(const Take& take);
    void GoOnIn(const std::wstring& file, const Take& take);
    void ReadAnew(const Take& take);
    [[nodiscard]] const std::wstring& Other() const;

    TracePair pair;
    FilePieces current;
    FileState otherState;
    RecordSplitter splitter;
    bool hasBegun = false;
    /// Reading began in the midst of a line.
    bool skipsOne = false;
    int losses = 0;
};

}  // namespace dialwright::tools
