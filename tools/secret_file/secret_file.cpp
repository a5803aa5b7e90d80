#include "secret_file/secret_file.h"

#include <algorithm>

namespace dialwright::tools {

SecretFile ReadSecretFile(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    SecretFile file;
    for (int number = 1; !text.empty(); ++number) {
        std::string_view row = text.substr(0, text.find('\n'));
        text.remove_prefix((std::min)(text.size(), row.size() + 1));
        if (row.ends_with('\r')) row.remove_suffix(1);
        if (row.empty() || row.starts_with('#')) continue;
        const std::size_t equals = row.find('=');
        if (equals == std::string_view::npos || equals == 0) {
            file.problem = "line " + std::to_string(number) + " has no NAME=VALUE";
            return file;
        }
        file.secrets.push_back(
            {.name = std::string(row.substr(0, equals)), .value = std::string(row.substr(equals + 1)), .line = number});
    }
    if (file.secrets.empty()) file.problem = "it holds no NAME=VALUE";
    return file;
}

}  // namespace dialwright::tools
