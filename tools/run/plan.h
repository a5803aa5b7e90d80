#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "check/source_text.h"
#include "run/secrets.h"

namespace dialwright::tools {

/// A line as it will be handed to the library.
struct PlannedLine {
    std::size_t number = 0;
    std::wstring text;
    /// As people may see it.
    std::wstring shown;
    std::vector<std::wstring> secrets;
    /// The environment's variable that one of them came from; empty where none did.
    std::wstring variable;
};

struct PlannedFile {
    std::string name;
    std::vector<PlannedLine> lines;
};

/// What is wrong with a line's secrets.
struct PlanProblem {
    std::string file;
    std::size_t line = 0;
    std::size_t column = 0;
    std::wstring text;
};

/// Only these lines run; both are counted from 1 and included.
struct LineRange {
    std::size_t from = 1;
    std::size_t to = static_cast<std::size_t>(-1);
};

/// The lines of a script that hold a command, with their secrets filled in. Adds to `problems`.
[[nodiscard]] PlannedFile PlanScript(std::string name, const SourceText& source, const LineRange& range,
                                     const SecretSources& secrets, std::vector<PlanProblem>& problems);

}  // namespace dialwright::tools
