#include "check/edit_distance.h"

#include <algorithm>
#include <cwctype>
#include <vector>

namespace dialwright::tools {

std::size_t EditDistance(std::wstring_view from, std::wstring_view to) {
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

}  // namespace dialwright::tools
