#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dialwright::tools {

/// Two trace files that a host writes by turns.
struct TracePair {
    std::wstring folder;
    /// "host.exe_1_Dialwright.log": the files' names without their number.
    std::wstring name;
    std::wstring first;
    /// Empty for a file that is none of a pair.
    std::wstring second = {};
    bool isError = false;

    [[nodiscard]] std::vector<std::wstring> Files() const;
};

/// The pair that a file of this path belongs to, whether it exists or not.
[[nodiscard]] TracePair PairOf(std::wstring_view path);

/// All pairs of which a file lies in the folder, by name; error files have pairs of their own.
[[nodiscard]] std::vector<TracePair> PairsIn(const std::wstring& folder);

/// Whether there is a folder of this path.
[[nodiscard]] bool IsFolder(const std::wstring& path);

/// The pair's main file and error file, both of both numbers, as far as the name tells them.
[[nodiscard]] std::vector<std::wstring> MainAndErrorFiles(const TracePair& pair);

/// What the system tells of a file without opening it. A file that is missing has no time.
struct FileState {
    std::uint64_t size = 0;
    std::uint64_t written = 0;

    bool operator==(const FileState&) const = default;
};
[[nodiscard]] FileState StateOf(const std::wstring& path);

/// When a file of the pair was written last; 0 when there is none.
[[nodiscard]] std::uint64_t LastWritten(const TracePair& pair);

}  // namespace dialwright::tools
