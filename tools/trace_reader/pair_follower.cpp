#include "trace_reader/pair_follower.h"

#include <utility>

namespace dialwright::tools {
namespace {

constexpr int kPiecesOfALook = 64;

bool IsNewer(const FileState& state, const FileState& than) {
    // Both may have been touched within one tick of the clock; then the one that was begun anew is the smaller.
    return state.written != than.written ? state.written > than.written
                                         : state != FileState() && state.size < than.size;
}

}  // namespace

PairFollower::PairFollower(TracePair pair, std::uint64_t lastBytes) : pair(std::move(pair)), current(this->pair.first) {
    Begin(lastBytes);
}

const std::wstring& PairFollower::Other() const { return current.Path() == pair.first ? pair.second : pair.first; }

void PairFollower::Begin(std::uint64_t lastBytes) {
    const FileState first = StateOf(pair.first);
    const FileState second = StateOf(pair.second);
    hasBegun = first != FileState() || second != FileState();
    if (!hasBegun) return;
    const bool secondIsNewer = IsNewer(second, first);
    const std::uint64_t size = secondIsNewer ? second.size : first.size;
    skipsOne = size > lastBytes;
    current = FilePieces(secondIsNewer ? pair.second : pair.first, skipsOne ? size - lastBytes : 0);
    otherState = secondIsNewer ? first : second;
}

void PairFollower::Poll(const Take& take) {
    if (!hasBegun) Begin(UINT64_MAX);
    if (!hasBegun) return;
    Drained drained = Drain(take, kPiecesOfALook);
    // Of a host that writes as fast as we read; the caller may have had enough.
    if (drained == Drained::Part) return;
    while (StateOf(Other()) != otherState && StateOf(Other()) != FileState()) {
        // Nobody writes the current file any more; what came between the two looks is read now.
        DrainWhole(take);
        GoOnIn(Other(), take);
        drained = Drain(take, kPiecesOfALook);
    }
    if (drained != Drained::Nothing) return;
    if (const auto record = splitter.TakeEnded()) take(*record);
}

void PairFollower::Finish(const Take& take) {
    if (const auto record = splitter.TakeRest()) take(*record);
}

void PairFollower::HandOn(const Take& take) {
    while (const auto record = splitter.Next()) {
        if (!std::exchange(skipsOne, false)) take(*record);
    }
}

PairFollower::Drained PairFollower::Drain(const Take& take, int mostPieces) {
    auto drained = Drained::Nothing;
    std::string bytes;
    for (int piece = 0; piece < mostPieces; ++piece) {
        const auto outcome = current.Next(bytes);
        if (outcome == FilePieces::Outcome::BegunAnew) {
            ReadAnew(take);
        } else if (outcome == FilePieces::Outcome::Bytes) {
            splitter.Feed(bytes);
            HandOn(take);
        } else {
            return drained;
        }
        drained = Drained::All;
    }
    return Drained::Part;
}

void PairFollower::DrainWhole(const Take& take) {
    while (Drain(take, kPiecesOfALook) == Drained::Part) continue;
}

void PairFollower::GoOnIn(const std::wstring& file, const Take& take) {
    Finish(take);
    const std::wstring before = current.Path();
    current = FilePieces(file);
    otherState = StateOf(before);
}

void PairFollower::ReadAnew(const Take& take) {
    ++losses;
    Finish(take);
    // The host went through the other file meanwhile: that one is whole.
    const FileState now = StateOf(Other());
    if (now != otherState && now != FileState()) {
        const std::wstring back = current.Path();
        GoOnIn(Other(), take);
        DrainWhole(take);
        GoOnIn(back, take);
        return;
    }
    current.Restart();
}

}  // namespace dialwright::tools
