#pragma once

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "trace/fixed_text.h"

namespace dialwright {

/// One of the logger's two streams with the pair of files that it writes. All of it is guarded by the logger's lock;
/// nothing is ever left pending in the stream, as both streams are given one buffer.
struct TraceStream {
    std::FILE* file = nullptr;
    /// The platform's handle of the open file, or null: for the exit path, which must not touch the C runtime.
    std::atomic<void*> handle = nullptr;
    /// The file's size in bytes as last measured: where the next write begins.
    std::atomic<std::uint64_t> size = 0;
    TracePath current;
    TracePath first;
    TracePath second;
};

/// Opens the current path for appending, shared for reading only, and measures it. False when it cannot be opened.
bool OpenStream(TraceStream& stream, bool createFolders) noexcept;

/// Does nothing to a closed stream.
void CloseStream(TraceStream& stream) noexcept;

/// Writes at once; returns the bytes that are in the file now. A disk that fills up may take a part: what is behind
/// the last whole line is then cut off again. Does not change `size`.
[[nodiscard]] std::uint64_t WriteStream(TraceStream& stream, std::string_view text) noexcept;

/// Closes the stream and deletes the other file of its pair, which becomes the current one.
void SwitchToOtherFile(TraceStream& stream) noexcept;

/// Deletes the file of a narrow path; fails silently.
void DeleteTraceFile(const TracePath& path) noexcept;

}  // namespace dialwright
