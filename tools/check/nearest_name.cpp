#include "check/nearest_name.h"

#include <cstddef>

#include "check/edit_distance.h"
#include "language/commands.h"

namespace dialwright::tools {
std::wstring_view NearestCommandName(std::wstring_view name) {
    // Further away it is no slip of the pen. A long name is not worth the work.
    const std::size_t farthest = name.size() / 3 + 1;
    if (name.size() > 60) return {};
    std::wstring_view nearest;
    std::size_t least = farthest + 1;
    for (const CommandSpec& spec : kCommands) {
        const std::size_t distance = EditDistance(name, spec.name);
        if (distance < least) {
            least = distance;
            nearest = spec.name;
        }
    }
    return nearest;
}

}  // namespace dialwright::tools
