#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "check/finding.h"
#include "check/known_windows.h"
#include "check/source_text.h"

namespace dialwright::tools {

/// Every finding in a script, in the order of its lines. What is known of windows finds more, never less. There is a
/// DW1xx finding if and only if the library's ValidateScript refuses the pure script. `checked` is called now and then
/// with the number of the line that comes next.
[[nodiscard]] std::vector<Finding> CheckScript(const SourceText& source, std::span<const KnownWindow> known = {},
                                               const std::function<void(std::size_t line)>& checked = {});

/// All rules there are, by code.
[[nodiscard]] std::span<const Rule> AllRules();

}  // namespace dialwright::tools
