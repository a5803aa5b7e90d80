#include "check/nearest_name.h"

#include <algorithm>
#include <cstddef>
#include <cwctype>
#include <vector>

#include "language/commands.h"

namespace dialwright::tools {
namespace {

/// How many letters must be put in, left out or changed.
std::size_t Distance(std::wstring_view from, std::wstring_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    for (std::size_t i = 0; i <= to.size(); ++i) row[i] = i;
    for (std::size_t i = 1; i <= from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const bool same = std::towlower(from[i - 1]) == std::towlower(to[j - 1]);
            const std::size_t changed = diagonal + (same ? 0 : 1);
            diagonal = row[j];
            row[j] = (std::min)({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::wstring_view NearestCommandName(std::wstring_view name) {
    // Further away it is no slip of the pen. A long name is not worth the work.
    const std::size_t farthest = name.size() / 3 + 1;
    if (name.size() > 60) return {};
    std::wstring_view nearest;
    std::size_t least = farthest + 1;
    for (const CommandSpec& spec : kCommands) {
        const std::size_t distance = Distance(name, spec.name);
        if (distance < least) {
            least = distance;
            nearest = spec.name;
        }
    }
    return nearest;
}

}  // namespace dialwright::tools
