#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "measuring.h"

namespace dialwright::bench {

/// How long each call took, in microseconds.
struct Turns {
    std::vector<double> ours;
    std::vector<double> floor;
};

/// Times two calls in turns, each as often, after one of each that counts for nothing. Who goes first changes from pair
/// to pair, so that what drifts meets both alike. `settle` runs behind every call, untimed.
template <class Ours, class Floor, class Settle>
Turns TakeTurns(int pairs, Ours ours, Floor floor, Settle settle) {
    Turns turns;
    const auto time = [&](auto& call, std::vector<double>& times) {
        const Stopwatch watch;
        call();
        times.push_back(watch.Seconds() * 1e6);
        settle();
    };
    time(ours, turns.ours);
    time(floor, turns.floor);
    turns = {};
    for (int pair = 0; pair < pairs; ++pair) {
        if (pair % 2 == 0) time(ours, turns.ours);
        time(floor, turns.floor);
        if (pair % 2 != 0) time(ours, turns.ours);
    }
    return turns;
}

template <class Ours, class Floor>
Turns TakeTurns(int pairs, Ours ours, Floor floor) {
    return TakeTurns(pairs, ours, floor, [] {});
}

[[nodiscard]] double Median(std::vector<double> values);

/// What one call takes, in microseconds: the median, after one that counts for nothing.
template <class Call>
double MicrosecondsOf(int calls, Call call) {
    std::vector<double> times;
    call();
    for (int i = 0; i < calls; ++i) {
        const Stopwatch watch;
        call();
        times.push_back(watch.Seconds() * 1e6);
    }
    return Median(std::move(times));
}

/// What a program has measured, by rows, and its one line of JSON.
class Report {
public:
    /// The two medians.
    void Add(const std::string& row, const Turns& turns);

    /// Every pair.
    void AddPairs(const std::string& row, const Turns& turns);

    /// A figure without another to compare with.
    void Add(const std::string& row, double microseconds);

    /// How much the whole run has written, for the check of what it wrote.
    void SetWritten(int count) { written = count; }

    void Print() const;

private:
    std::map<std::string, Turns> rows;
    int written = 0;
};

}  // namespace dialwright::bench
