#include "verify/process_figures.h"

#include "look/unique_handle.h"

#include <tlhelp32.h>

namespace dialwright::verify {
namespace {

unsigned CountThreads() {
    const tools::UniqueHandle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    unsigned count = 0;
    for (BOOL more = ::Thread32First(snapshot.get(), &entry); more; more = ::Thread32Next(snapshot.get(), &entry)) {
        if (entry.th32OwnerProcessID == ::GetCurrentProcessId()) ++count;
    }
    return count;
}

unsigned CountHandles() {
    DWORD told = 0;
    if (::GetProcessHandleCount(::GetCurrentProcess(), &told) && told != 0) return told;
    // Wine says 0. Handles are small multiples of four, given anew when they are free.
    constexpr std::uintptr_t kHighestHandle = 0x4000;
    unsigned count = 0;
    for (std::uintptr_t value = 4; value < kHighestHandle; value += 4) {
        DWORD flags = 0;
        if (::GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
    }
    return count;
}

/// Region by region: the call that counts them says 0 under Wine.
std::uint64_t PrivateBytes() {
    std::uint64_t sum = 0;
    MEMORY_BASIC_INFORMATION region{};
    std::uintptr_t at = 0;
    while (::VirtualQuery(reinterpret_cast<const void*>(at), &region, sizeof region) != 0) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) sum += region.RegionSize;
        at = reinterpret_cast<std::uintptr_t>(region.BaseAddress) + region.RegionSize;
    }
    return sum;
}

}  // namespace

ProcessFigures ProcessFigures::Now() {
    return {.threads = CountThreads(), .handles = CountHandles(), .privateBytes = PrivateBytes()};
}

}  // namespace dialwright::verify
