#pragma once

#include <filesystem>

namespace dialwright::verify {

/// Where a check finds what it looks at, and where it may write.
struct Setting {
    /// The folder of the library and the programs.
    std::filesystem::path folder;
    /// A folder of this check's own.
    std::filesystem::path work;
    /// Fewer rounds.
    bool quick = false;

    [[nodiscard]] std::filesystem::path Library() const { return folder / "Dialwright.dll"; }
    [[nodiscard]] std::filesystem::path PracticeTarget() const { return folder / "practice_target.exe"; }
    [[nodiscard]] std::filesystem::path Tool() const { return folder / "dialwright.exe"; }
    [[nodiscard]] std::filesystem::path Worker() const { return folder / "dialwright-host.exe"; }
    [[nodiscard]] std::filesystem::path Program() const { return folder / "dialwright-verify.exe"; }
    [[nodiscard]] std::filesystem::path PlainHost() const { return folder / "dialwright-verify-plain.exe"; }
    [[nodiscard]] std::filesystem::path JournalFile() const { return work / "journal"; }
};

}  // namespace dialwright::verify
