#include "run/report.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace dialwright::tools {

std::vector<std::string> LineReport::MessageLines() const {
    std::vector<std::string> all;
    for (const std::string& message : messages) {
        std::size_t begin = 0;
        for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
            end = message.find('\n', begin);
            all.push_back((begin == 0 ? "" : "    ") + message.substr(begin, end - begin));
        }
    }
    return all;
}

std::size_t FileReport::Count(LineStatus status) const {
    return static_cast<std::size_t>(std::ranges::count(lines, status, &LineReport::status));
}

double FileReport::Milliseconds() const {
    return std::transform_reduce(lines.begin(), lines.end(), 0.0, std::plus<>(),
                                 std::mem_fn(&LineReport::milliseconds));
}

std::size_t RunReport::Count(LineStatus status) const {
    std::size_t count = 0;
    for (const FileReport& file : files) count += file.Count(status);
    return count;
}

}  // namespace dialwright::tools
