#include "interrupt.h"

#include <atomic>

namespace dialwright::tools {
namespace {

std::atomic<HANDLE> current = nullptr;

BOOL WINAPI Ask(DWORD /*kind*/) {
    const HANDLE event = current;
    return event != nullptr ? ::SetEvent(event) : FALSE;
}

}  // namespace

Interrupt::Interrupt() : asked(::CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    current = asked;
    ::SetConsoleCtrlHandler(&Ask, TRUE);
}

Interrupt::~Interrupt() {
    ::SetConsoleCtrlHandler(&Ask, FALSE);
    current = nullptr;
    ::CloseHandle(asked);
}

bool Interrupt::ComesWithin(DWORD milliseconds) const {
    return ::WaitForSingleObject(asked, milliseconds) == WAIT_OBJECT_0;
}

}  // namespace dialwright::tools
