#include "process_figures.h"

#include <cstdint>

#include "platform/windows.h"

#include <tlhelp32.h>

namespace dialwright::testing {
namespace {

unsigned CountThreads() {
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    unsigned count = 0;
    for (BOOL more = ::Thread32First(snapshot, &entry); more; more = ::Thread32Next(snapshot, &entry)) {
        if (entry.th32OwnerProcessID == ::GetCurrentProcessId()) ++count;
    }
    ::CloseHandle(snapshot);
    return count;
}

// Handles are small multiples of four, given anew when they are free.
constexpr std::uintptr_t kHighestHandle = 0x2000;

/// One by one: the call that counts them says 0 under Wine.
unsigned CountHandles() {
    unsigned count = 0;
    for (std::uintptr_t value = 4; value < kHighestHandle; value += 4) {
        DWORD flags = 0;
        if (::GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
    }
    return count;
}

struct AddressSpace {
    unsigned long long inUse = 0;
    unsigned long long privateBytes = 0;
};

AddressSpace LookAtAddressSpace() {
    AddressSpace sum;
    MEMORY_BASIC_INFORMATION region{};
    std::uintptr_t at = 0;
    while (::VirtualQuery(reinterpret_cast<const void*>(at), &region, sizeof region) != 0) {
        if (region.State != MEM_FREE) sum.inUse += region.RegionSize;
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) sum.privateBytes += region.RegionSize;
        at = reinterpret_cast<std::uintptr_t>(region.BaseAddress) + region.RegionSize;
    }
    return sum;
}

unsigned CountGuiObjects() {
    const HANDLE self = ::GetCurrentProcess();
    return ::GetGuiResources(self, GR_GDIOBJECTS) + ::GetGuiResources(self, GR_USEROBJECTS);
}

}  // namespace

ProcessFigures ProcessFigures::Now() {
    const AddressSpace space = LookAtAddressSpace();
    return {.threads = CountThreads(),
            .handles = CountHandles(),
            .addressSpace = space.inUse,
            .privateBytes = space.privateBytes,
            .guiObjects = CountGuiObjects()};
}

std::string ProcessFigures::Text() const {
    return std::to_string(threads) + " " + std::to_string(handles) + " " + std::to_string(addressSpace);
}

}  // namespace dialwright::testing
