#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace dialwright::verify {

/// The folder of the trace of a host program.
[[nodiscard]] std::filesystem::path TraceFolderOf(const std::filesystem::path& program);

/// The lines of the host's main files, or of its error files, in the order in which they were written; each with its
/// continuation lines. Empty where there is none.
[[nodiscard]] std::vector<std::string> ReadTrace(const std::filesystem::path& program, bool errors = false);

/// What the first line that is not whole is; empty where all are whole.
[[nodiscard]] std::string TornLine(const std::vector<std::string>& lines);

/// The logger's last word in a trace that ended in order.
[[nodiscard]] bool HasEndedInOrder(const std::vector<std::string>& lines);

}  // namespace dialwright::verify
