#include "interrupt.h"

#include <atomic>

#include "subcommand.h"

namespace dialwright::tools {
namespace {

std::atomic<HANDLE> current = nullptr;

/// The first press asks whoever can end in order; the second one, or the first where there is nobody, ends at once.
BOOL WINAPI Ask(DWORD /*kind*/) {
    const HANDLE event = current.exchange(nullptr);
    if (event == nullptr) ::ExitProcess(kInterrupted);
    return ::SetEvent(event);
}

}  // namespace

void EndWhenInterrupted() { ::SetConsoleCtrlHandler(&Ask, TRUE); }

Interrupt::Interrupt() : asked(::CreateEventW(nullptr, TRUE, FALSE, nullptr)) { current = asked; }

Interrupt::~Interrupt() {
    current = nullptr;
    ::CloseHandle(asked);
}

bool Interrupt::ComesWithin(DWORD milliseconds) const {
    return ::WaitForSingleObject(asked, milliseconds) == WAIT_OBJECT_0;
}

}  // namespace dialwright::tools
