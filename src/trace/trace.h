#pragma once

#include <cstdint>

namespace dialwright {

enum LogLevel : std::uint32_t {
    LOG_INFO = 0x1,
    LOG_DEBUG = 0x2,
    LOG_WARNING = 0x4,
    LOG_ERROR = 0x8,
};

#if defined(__clang__) || defined(__GNUC__)
#define DIALWRIGHT_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define DIALWRIGHT_PRINTF_FORMAT(formatIndex, firstArgument)
#endif

/// Logs one message: to the trace once for each level of the mask that the settings enable, and always to
/// standard output, in UTF-8. `tag` is the caller's qualified name; `format` is a printf format in which wide
/// strings are "%ls". Callable from any thread at any time; never throws, and drops a message that there is no
/// memory for.
void TraceLog(const char* tag, std::uint32_t levels, const char* format, ...) noexcept DIALWRIGHT_PRINTF_FORMAT(3, 4);

}  // namespace dialwright
