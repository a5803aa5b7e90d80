#include "api/logging_setup.h"
#include "platform/windows.h"
#include "trace/logger.h"

namespace {

void StopLogging(bool processEnds) noexcept {
    if (processEnds) return dialwright::TraceStopAtExit();
    dialwright::TraceStop();
    dialwright::ReleaseTrace();
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
    switch (reason) {
        case DLL_PROCESS_ATTACH: return dialwright::ConfigureLogging() ? TRUE : FALSE;
        case DLL_PROCESS_DETACH: StopLogging(reserved != nullptr); return TRUE;
        default: return TRUE;
    }
}
