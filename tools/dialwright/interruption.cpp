#include "interruption.h"

#include "platform/windows.h"

namespace dialwright::tools {
namespace {

std::atomic<bool> interrupted{false};

BOOL WINAPI TakeNotice(DWORD) {
    interrupted = true;
    return TRUE;
}

}  // namespace

const std::atomic<bool>& Interruption() {
    static const BOOL listens = ::SetConsoleCtrlHandler(&TakeNotice, TRUE);
    (void)listens;
    return interrupted;
}

}  // namespace dialwright::tools
