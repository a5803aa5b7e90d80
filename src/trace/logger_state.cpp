#include "trace/logger_state.h"

#include "trace/trace.h"

namespace dialwright {
namespace {

constinit LoggerState logger;

}  // namespace

LoggerState& Logger() noexcept { return logger; }

ForceInfoLevel::ForceInfoLevel(LoggerState& state) noexcept : logger(state), before(state.settings) {
    logger.settings = before | LOG_INFO;
}

ForceInfoLevel::~ForceInfoLevel() { logger.settings = before; }

}  // namespace dialwright
