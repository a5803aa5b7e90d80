#include "turns.h"

#include <algorithm>
#include <cstdio>

namespace dialwright::bench {
namespace {

void PrintList(const char* side, const std::vector<double>& values) {
    std::printf("\"%s\": [", side);
    for (std::size_t i = 0; i < values.size(); ++i) std::printf("%s%.3f", i == 0 ? "" : ", ", values[i]);
    std::printf("]");
}

}  // namespace

double Median(std::vector<double> values) {
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void Report::Add(const std::string& row, const Turns& turns) {
    rows[row] = {.ours = {Median(turns.ours)}, .floor = {Median(turns.floor)}};
}

void Report::AddPairs(const std::string& row, const Turns& turns) { rows[row] = turns; }

void Report::Add(const std::string& row, double microseconds) { rows[row] = {.ours = {microseconds}, .floor = {}}; }

void Report::Print() const {
    std::printf("{\"written\": %d, \"rows\": {", written);
    const char* between = "";
    for (const auto& [row, turns] : rows) {
        std::printf("%s\"%s\": {", between, row.c_str());
        PrintList("ours", turns.ours);
        std::printf(", ");
        PrintList("peer", turns.floor);
        std::printf("}");
        between = ", ";
    }
    std::printf("}}\n");
}

}  // namespace dialwright::bench
