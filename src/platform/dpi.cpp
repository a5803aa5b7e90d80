#include "platform/dpi.h"

#include "platform/windows.h"

namespace dialwright {
namespace {

using SetAwareness = HRESULT(WINAPI*)(int awareness);
constexpr int kPerMonitorAware = 2;

/// From the system folder alone: a library of that name beside the host or in the current folder is not ours
/// to run. The library stays loaded, as a search makes this call each time.
SetAwareness FindSetAwareness() noexcept {
    const HMODULE scaling = ::LoadLibraryExW(L"shcore.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (scaling == nullptr) return nullptr;
    return reinterpret_cast<SetAwareness>(reinterpret_cast<void*>(::GetProcAddress(scaling, "SetProcessDpiAwareness")));
}

}  // namespace

void RequestPerMonitorDpiAwareness() noexcept {
    static const SetAwareness setAwareness = FindSetAwareness();
    if (setAwareness != nullptr) setAwareness(kPerMonitorAware);
}

}  // namespace dialwright
