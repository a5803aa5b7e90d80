#include "trace/own_lines.h"

#include "trace/build_timestamp.h"
#include "trace/clock.h"
#include "trace/line_writer.h"

namespace dialwright {
namespace {

constexpr const char* kInfo = "   info";

}  // namespace

void WriteHeaderLine(const LoggerState& logger) noexcept {
    const SYSTEMTIME& start = logger.startTime;
    TraceLine(nullptr, 0, 1359, kInfo,
              "(Time Zone: %s) (%s, %ds) %04d-%02d-%02d %02d:%02d:%02d.%03d type: %x size: %d memory: %p",
              RefreshedZoneName().CStr(), BuildTimestamp(), SecondsSinceSystemStart(), start.wYear, start.wMonth,
              start.wDay, start.wHour, start.wMinute, start.wSecond, start.wMilliseconds, logger.settings.load(),
              logger.sizeLimitMiB, static_cast<const void*>(logger.memoryLog));
}

void WriteSettingChangedLine(const LoggerState& logger) noexcept {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    TraceLine(nullptr, 0, 689, kInfo,
              "(%s, %ds) setting changed at %04d-%02d-%02d %02d:%02d:%02d.%03d type: %x size: %d memory: %p",
              BuildTimestamp(), SecondsSinceSystemStart(), now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
              now.wSecond, now.wMilliseconds, logger.settings.load(), logger.sizeLimitMiB,
              static_cast<const void*>(logger.memoryLog));
}

void WriteStoppedLine() noexcept {
    TraceLine(nullptr, 0, kStoppedLine.sourceLine, kStoppedLine.levelText, kStoppedLine.format);
}

void WriteCrashLine(const char* hostPath) noexcept { TraceLine(nullptr, 0, 400, kInfo, "%s", hostPath); }

}  // namespace dialwright
