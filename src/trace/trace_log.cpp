#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <exception>
#include <memory_resource>
#include <string>

#include "platform/last_error.h"
#include "trace/levels.h"
#include "trace/line_writer.h"
#include "trace/message_text.h"
#include "trace/standard_output.h"
#include "trace/trace.h"

namespace dialwright {
namespace {

// Most messages need no heap then: quicker, and a process that ends under logging threads leaves its heap in peace.
constexpr std::size_t kStackBytes = 8192;

void LogMessage(const char* tag, std::uint32_t levels, const char* format, std::va_list arguments) {
    std::array<std::byte, kStackBytes> onStack;
    std::pmr::monotonic_buffer_resource memory(onStack.data(), onStack.size(), std::pmr::new_delete_resource());
    const std::string_view message = FormatMessageText(memory, format, arguments);
    const std::string_view tagText = tag;
    std::pmr::string line(&memory);
    line.reserve(tagText.size() + message.size() + 4);
    line.append(tagText).append(": ");
    AppendIndented(line, message);
    // Kept on purpose: the finished line goes on as a format, so the line writer reads it a second time and two
    // percent signs of a message become one in the trace. It has no arguments then, so the line writer must read none.
    // Standard output shows the text unharmed.
    ForEachLevel(levels & TraceSettings(),
                 [&](const LevelRow& level) { TraceLine(nullptr, 0, level.sourceLine, level.text, line.c_str()); });
    line += '\n';
    WriteStandardOutput(line);
}

}  // namespace

void TraceLog(const char* tag, std::uint32_t levels, const char* format, ...) noexcept {
    const KeepLastError lastError;
    const int hostsErrno = errno;
    std::va_list arguments;
    va_start(arguments, format);
    try {
        LogMessage(tag, levels, format, arguments);
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): logging must not fail its caller
    }
    va_end(arguments);
    errno = hostsErrno;
}

}  // namespace dialwright
