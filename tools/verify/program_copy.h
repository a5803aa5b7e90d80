#pragma once

#include <filesystem>

namespace dialwright::verify {

/// A copy of the program in this folder, so that its trace is nobody else's and the SDK's folder stays as it is. No
/// link: one could not be deleted while the program itself runs. The program where it is when no copy can be made.
[[nodiscard]] std::filesystem::path CopyProgram(const std::filesystem::path& program,
                                                const std::filesystem::path& folder);

}  // namespace dialwright::verify
