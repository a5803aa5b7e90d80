#include "version.h"

#include "doctor/library_file.h"
#include "run/own_files.h"

namespace dialwright::tools {
namespace {

std::string Describe(const ProgramFile& file, const std::string& version) {
    return version + " " + std::string(NameOf(file.architecture));
}

}  // namespace

std::string VersionText() {
    const ProgramFile library = ReadProgramFile(LibraryFile().wstring());
    return "dialwright " + Describe(ReadProgramFile(OwnProgram().wstring()), DIALWRIGHT_VERSION) + "\nDialwright.dll " +
           (library.exists ? Describe(library, library.version) : "not found");
}

}  // namespace dialwright::tools
