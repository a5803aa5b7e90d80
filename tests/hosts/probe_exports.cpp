#include "probe_exports.h"

#include "trace/logger.h"
#include "trace/trace.h"

extern "C" __declspec(dllexport) void ProbeLog(int thread, int line) {
    dialwright::TraceLog("Probe", dialwright::LOG_INFO, "thread %d line %d", thread, line);
}

/// Sets the settings key and polls it at once.
extern "C" __declspec(dllexport) void ProbeSettings(const char* keyPath) {
    dialwright::SetTraceSettingsKey(keyPath);
    dialwright::PollTraceSettings();
}
