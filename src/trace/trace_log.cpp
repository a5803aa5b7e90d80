#include <cerrno>
#include <cstdarg>
#include <exception>
#include <string>

#include "trace/levels.h"
#include "trace/line_writer.h"
#include "trace/message_text.h"
#include "trace/standard_output.h"
#include "trace/trace.h"

namespace dialwright {
namespace {

void LogMessage(const char* tag, std::uint32_t levels, const char* format, std::va_list arguments) {
    const std::string message = IndentContinuationLines(FormatMessageText(format, arguments));
    const std::string line = std::string(tag) + ": " + message;
    // Kept on purpose: the finished line goes on as a format, so the line writer reads it a second time and two
    // percent signs of a message become one in the trace. It has no arguments then, so the line writer must read none.
    // Standard output shows the text unharmed.
    ForEachLevel(levels & TraceSettings(),
                 [&](const LevelRow& level) { TraceLine(nullptr, 0, level.sourceLine, level.text, line.c_str()); });
    WriteStandardOutput(line + "\n");
}

}  // namespace

void TraceLog(const char* tag, std::uint32_t levels, const char* format, ...) noexcept {
    const int hostsErrno = errno;
    std::va_list arguments;
    va_start(arguments, format);
    try {
        LogMessage(tag, levels, format, arguments);
    } catch (const std::exception&) {
        errno = hostsErrno;  // no memory for the message: logging must not fail its caller
    }
    va_end(arguments);
    errno = hostsErrno;
}

}  // namespace dialwright
