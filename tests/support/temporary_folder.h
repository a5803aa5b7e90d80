#pragma once

#include <string>
#include <vector>

#include "platform/windows.h"

namespace dialwright::testing {

/// A new folder below the user's temporary folder, removed with all that is in it. Paths end in a backslash.
class TemporaryFolder {
public:
    /// A name that ends in this text, so that a test can have one that is hard to spell.
    explicit TemporaryFolder(const std::wstring& ending = L"");
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::wstring& Path() const { return path; }
    /// In the ANSI code page, as the platform's narrow calls name it.
    [[nodiscard]] std::string NarrowPath() const;
    [[nodiscard]] std::wstring File(const std::wstring& name) const { return path + name; }

private:
    std::wstring path;
};

[[nodiscard]] bool FileExists(const std::wstring& path);

/// 0 for a file that is not there.
[[nodiscard]] unsigned long long FileSizeOf(const std::wstring& path);

/// The whole file, also while another has it open for writing. Empty when it cannot be read.
[[nodiscard]] std::string ReadFile(const std::wstring& path);

/// Fails the running test when the file cannot be written.
void WriteFile(const std::wstring& path, const std::string& text);

/// Whether somebody could open the file for writing now, if it were for him.
[[nodiscard]] bool CanBeWritten(const std::wstring& path);

/// The pieces between CR LF; a rest behind the last one is a piece of its own.
[[nodiscard]] std::vector<std::string> SplitLines(const std::string& text);

/// The lines of a trace file, each with its continuation.
[[nodiscard]] std::vector<std::string> ReadTrace(const std::wstring& path);

/// What stands behind the prefix of each line.
[[nodiscard]] std::vector<std::string> ReadMessages(const std::wstring& path);

}  // namespace dialwright::testing
