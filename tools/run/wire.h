#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/windows.h"

namespace dialwright::tools {

// How dialwright.exe and its worker talk: requests go to the worker's standard input, answers come on its standard
// output among the library's messages. An answer is a line that begins with a random word of this run, so that no text
// of a window can pass for one.

enum class RequestKind : std::uint32_t {
    Begin = 1,  ///< word, and the library's full path
    Execute,    ///< a command line
    Launch,     ///< program, and its arguments
};

struct Request {
    RequestKind kind;
    std::wstring first;
    std::wstring second;
};

/// False when the other side is gone.
[[nodiscard]] bool WriteRequest(HANDLE pipe, const Request& request);
/// Blocks until a whole request is there; nothing at the end of the pipe.
[[nodiscard]] std::optional<Request> ReadRequest(HANDLE pipe);

struct Answer {
    /// What the library's function returned.
    int result = 0;
    std::uint64_t microseconds = 0;
    /// The system's error for a library that cannot be loaded, the process ID for a program that was launched.
    std::uint32_t value = 0;
};

/// Without a line end.
[[nodiscard]] std::string FormatAnswer(const std::string& word, const Answer& answer);
/// Nothing for a line that is no answer.
[[nodiscard]] std::optional<Answer> ReadAnswer(const std::string& word, std::string_view line);

}  // namespace dialwright::tools
