#include "trace/line_builder.h"

#include "trace/format_interpreter.h"

namespace dialwright {
namespace {

constexpr std::size_t kCutMessageBytes = 4092;

void PutMessage(BoundedText& message, const char* format, FormatArgs arguments) {
    InterpretFormat(message, format, arguments);
    if (message.Size() < kMessageBytes) return;
    message.CutTo(kCutMessageBytes);
    message.Put("...");
}

}  // namespace

std::string_view BuildLine(LineArea& area, const LoggerState& logger, const TimeStamp& time, const LineSource& source,
                           FormatArgs arguments) noexcept {
    BoundedText prefix(std::span(area).first(kMostPrefixBytes));
    PutPrefix(prefix, {.settings = logger.settings,
                       .time = time,
                       .processId = ::GetCurrentProcessId(),
                       .threadId = ::GetCurrentThreadId(),
                       .loggerName = logger.nameIsShown ? logger.loggerName.View() : std::string_view(),
                       .sourceLine = source.sourceLine,
                       .levelText = source.levelText});
    BoundedText message(std::span(area).subspan(prefix.Size(), kMessageBytes));
    PutMessage(message, source.format, arguments);
    return {area.data(), prefix.Size() + message.Size()};
}

}  // namespace dialwright
