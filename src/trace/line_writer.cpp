#include "trace/line_writer.h"

namespace dialwright {
namespace {

// All four levels, and a trace file.
constexpr std::uint64_t kSettingsAtSetUp = 0x10F;

}  // namespace

std::uint64_t TraceSettings() noexcept { return kSettingsAtSetUp; }

void TraceLine(const void*, std::size_t, int, const char*, const char*, ...) noexcept {}

}  // namespace dialwright
