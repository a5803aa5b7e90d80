// The files beside this program: are they there, and do they belong together?

#include "doctor/library_file.h"
#include "verify/checks.h"

#include <dialwright/dialwright.h>

namespace dialwright::verify {
namespace {

using tools::ProgramFile;

Verdict Judge(const ProgramFile& file, const ProgramFile& own, bool hasVersion) {
    if (!file.exists) return Failed("there is no such file");
    const std::string found =
        (file.version.empty() ? "no version" : file.version) + " " + std::string(NameOf(file.architecture));
    if (file.architecture != own.architecture)
        return Failed(found + ", and this program is " + std::string(NameOf(own.architecture)));
    if (hasVersion && file.version != DIALWRIGHT_VERSION_STRING)
        return Failed(found + ", and this program is " DIALWRIGHT_VERSION_STRING);
    return Passed(found);
}

}  // namespace

void CheckFiles(const Setting& setting, Journal& journal) {
    const ProgramFile own = tools::ReadProgramFile(setting.Program().wstring());
    // Of all files, the library alone carries its version.
    for (const auto& path :
         {setting.Library(), setting.Tool(), setting.Worker(), setting.PracticeTarget(), setting.PlainHost()}) {
        journal.Do(path.filename().string(),
                   [&] { return Judge(tools::ReadProgramFile(path.wstring()), own, path == setting.Library()); });
    }
}

}  // namespace dialwright::verify
