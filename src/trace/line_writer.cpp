#include "trace/line_writer.h"

#include <mutex>
#include <string_view>

#include "trace/clock.h"
#include "trace/data_dump.h"
#include "trace/echo.h"
#include "trace/line_builder.h"
#include "trace/logger_state.h"
#include "trace/trace_files.h"

namespace dialwright {
namespace {

constexpr std::size_t kEchoDumpAbove = 2048;
constexpr std::string_view kErrorLevel = "  error";

class LineUnderWay {
public:
    explicit LineUnderWay(LoggerState& state) noexcept : logger(state) { ++logger.linesUnderWay; }
    ~LineUnderWay() { --logger.linesUnderWay; }
    LineUnderWay(const LineUnderWay&) = delete;
    LineUnderWay& operator=(const LineUnderWay&) = delete;

private:
    LoggerState& logger;
};

struct LineToWrite {
    std::string_view text;
    const char* levelText;
    std::span<const unsigned char> data;
};

void Append(LoggerState& logger, std::string_view text) {
    const std::size_t used = logger.used;
    BoundedText rest(std::span(logger.writeBuffer).first(kWriteBufferBytes).subspan(used));
    rest.Put(text);
    // Guarded by the lock; only the exit path reads it without, when no other thread is left.
    logger.used.store(used + rest.Size(), std::memory_order_relaxed);
}

/// Kept on purpose: nothing ends the text in the buffer, so older text behind it is echoed with it, at most to the
/// buffer's end.
void Echo(LoggerState& logger, std::size_t position, const char* levelText, bool continuation) {
    const std::uint64_t settings = logger.settings;
    if ((settings & (TRACE_DEBUGGER | TRACE_CONSOLE)) == 0) return;
    EchoText(settings, levelText, continuation, logger.writeBuffer.data() + position);
}

void AppendDump(LoggerState& logger, const LineToWrite& line) {
    std::size_t echoed = logger.used;
    for (std::size_t offset = 0; offset < line.data.size(); offset += kDumpRowBytes) {
        std::array<char, kDumpRowLength> area;
        BoundedText row(area);
        const auto rest = line.data.subspan(offset);
        PutDumpRow(row, offset, rest.first((std::min)(rest.size(), kDumpRowBytes)));
        Append(logger, row.View());
        TraceFlush(logger, logger.used);
        const bool wroteOut = logger.used == 0;
        if (!wroteOut && logger.used - echoed <= kEchoDumpAbove) continue;
        Echo(logger, echoed, line.levelText, true);
        echoed = logger.used;
    }
    if (logger.used > echoed) Echo(logger, echoed, line.levelText, true);
}

void AppendLine(LoggerState& logger, const LineToWrite& line) {
    const std::size_t position = logger.used;
    Append(logger, line.text);
    if (line.data.data() != nullptr) {
        std::array<char, 32> area;
        BoundedText length(area);
        length.Put(" length=");
        length.PutNumber(line.data.size());
        Append(logger, length.View());
    }
    Append(logger, "\r\n");
    TraceFlush(logger, logger.used);
    Echo(logger, position, line.levelText, false);
    AppendDump(logger, line);
}

void Dispatch(LoggerState& logger, const LineToWrite& line) {
    if ((logger.settings & TRACE_MEMORY) != 0 && logger.memoryLog != nullptr) {
        StoreInMemoryLog(*logger.memoryLog, line.text);
    }
    AppendLine(logger, line);
    if (line.levelText == kErrorLevel) AppendToErrorFile(logger, line.text);
}

}  // namespace

std::uint64_t TraceSettings() noexcept { return Logger().settings; }

void WriteTraceLine(const void* data, std::size_t dataLength, int sourceLine, const char* levelText, const char* format,
                    FormatArgs arguments) noexcept {
    LoggerState& logger = Logger();
    const LineUnderWay underWay(logger);
    if (!logger.started || (logger.settings & kAllSinks) == 0) return;
    logger.lastLine.store(PerformanceCounter(), std::memory_order_relaxed);
    LineArea area;
    const std::string_view line =
        BuildLine(area, logger, Now(), {.sourceLine = sourceLine, .levelText = levelText, .format = format}, arguments);
    const std::lock_guard lock(logger.lock);
    Dispatch(logger, {.text = line,
                      .levelText = levelText,
                      .data = {static_cast<const unsigned char*>(data), data != nullptr ? dataLength : 0}});
}

}  // namespace dialwright
