#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace dialwright::tools {

/// Reads a file that a host may be writing, renaming or deleting: each piece opens it with all sharing and closes it
/// again. Held open, a file could not be begun anew by the host, who would lose lines then.
class FilePieces {
public:
    enum class Outcome : std::uint8_t {
        Bytes,
        /// No more bytes for now.
        End,
        /// Another file has this name now; the rest of the one before is gone.
        BegunAnew,
        Missing,
    };

    explicit FilePieces(std::wstring file, std::uint64_t from = 0) : path(std::move(file)), offset(from) {}

    /// Reads on where the last piece ended.
    [[nodiscard]] Outcome Next(std::string& bytes);

    /// Reads from the beginning again, of whatever file has the name now.
    void Restart();

    [[nodiscard]] const std::wstring& Path() const { return path; }

private:
    [[nodiscard]] Outcome Read(void* file, std::string& bytes);
    [[nodiscard]] bool IsTheSame(void* file);

    std::wstring path;
    std::uint64_t offset;
    /// How the file begins. A trace file begins with its time, so no two begin alike.
    std::string head;
};

}  // namespace dialwright::tools
