#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "doctor/facts.h"

namespace dialwright::tools {

enum class State : std::uint8_t { Ok, Warning, Blocked };

[[nodiscard]] std::string_view NameOf(State state);

/// One thing that was looked at.
struct Row {
    std::string name;
    State state = State::Ok;
    std::string found;
    /// What to do; empty where nothing has to be done.
    std::string advice = {};
};

/// Whether the library can work here; `version` is this program's.
[[nodiscard]] std::vector<Row> Judge(const Facts& facts, std::string_view version);

[[nodiscard]] State WorstOf(const std::vector<Row>& rows);

}  // namespace dialwright::tools
