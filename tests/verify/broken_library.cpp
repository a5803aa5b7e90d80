// A library with the functions of Dialwright.dll that does its work badly, in the way that DIALWRIGHT_BROKEN names:
//
//   idle     says yes to everything and does nothing
//   crash    crashes in a command
//   hang     never returns from a command
//   leak     leaves a thread, a handle and memory behind each time it is loaded
//   code     ends the process with another exit code
//   filter   takes the host's crash filter away

#include <array>
#include <string_view>

#include "platform/windows.h"

namespace {

bool IsBroken(std::wstring_view way) {
    std::array<wchar_t, 16> value{};
    ::GetEnvironmentVariableW(L"DIALWRIGHT_BROKEN", value.data(), static_cast<DWORD>(value.size()));
    return way == value.data();
}

void Leak() {
    constexpr SIZE_T kBytes = SIZE_T{1} << 20U;
    ::VirtualAlloc(nullptr, kBytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    // Code of the system's, as ours is gone soon.
    const auto sleep = reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(&::Sleep));
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the time that it is to sleep
    ::CloseHandle(::CreateThread(nullptr, 0, sleep, reinterpret_cast<void*>(std::uintptr_t{INFINITE}), 0, nullptr));
}

}  // namespace

extern "C" {

__declspec(dllexport) int ValidateCommand(const wchar_t*) {
    if (IsBroken(L"code")) ::TerminateProcess(::GetCurrentProcess(), 3);
    return 1;
}

__declspec(dllexport) int ValidateScript(const wchar_t*) { return 1; }
__declspec(dllexport) int ExecuteScript(const wchar_t*) { return 1; }
__declspec(dllexport) int ProgramLaunch(const wchar_t*, const wchar_t*, unsigned long*) { return 1; }

__declspec(dllexport) int ExecuteCommand(const wchar_t*) {
    if (IsBroken(L"crash")) ::RaiseException(EXCEPTION_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    if (IsBroken(L"hang")) ::Sleep(INFINITE);
    return 1;
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH && IsBroken(L"leak")) Leak();
    if (reason == DLL_PROCESS_ATTACH && IsBroken(L"filter")) ::SetUnhandledExceptionFilter(nullptr);
    return TRUE;
}
}
