#include "verify/program_copy.h"

#include <system_error>

namespace dialwright::verify {

namespace fs = std::filesystem;

fs::path CopyProgram(const fs::path& program, const fs::path& folder) {
    std::error_code failed;
    const fs::path copy = folder / program.filename();
    fs::create_directories(folder, failed);
    fs::copy_file(program, copy, fs::copy_options::overwrite_existing, failed);
    return failed ? program : copy;
}

}  // namespace dialwright::verify
