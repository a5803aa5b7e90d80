#include "target_process.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include "target_names.h"

namespace dialwright::bench {
namespace {

constexpr DWORD kPatienceMs = 60'000;

HANDLE CreateNamedEvent(const wchar_t* name) {
    return ::CreateEventW(nullptr, FALSE, FALSE, EventName(::GetCurrentProcessId(), name).c_str());
}

std::wstring FolderOfThisProgram() {
    std::array<wchar_t, 1024> path{};
    ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    const std::wstring whole = path.data();
    return whole.substr(0, whole.rfind(L'\\') + 1);
}

std::wstring CommandLine(const TargetShape& shape) {
    return L"\"" + FolderOfThisProgram() + L"bench_target.exe\" --host " + std::to_wstring(::GetCurrentProcessId()) +
           L" --windows " + std::to_wstring(shape.windows) + L" --children " + std::to_wstring(shape.children) +
           L" --depth " + std::to_wstring(shape.depth);
}

}  // namespace

void Fail(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(1);
}

TargetProcess::TargetProcess(const TargetShape& shape)
    : ready(CreateNamedEvent(L"ready")), settled(CreateNamedEvent(L"settled")) {
    std::wstring line = CommandLine(shape);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        Fail("bench_target.exe cannot be started");
    }
    const std::array<HANDLE, 2> signs = {ready, process.hProcess};
    Require(::WaitForMultipleObjects(2, signs.data(), FALSE, kPatienceMs) == WAIT_OBJECT_0,
            "bench_target.exe does not get ready");
    controls = Find(kControlsWindow);
    Settle();
}

TargetProcess::~TargetProcess() {
    ::TerminateProcess(process.hProcess, 0);
    ::WaitForSingleObject(process.hProcess, kPatienceMs);
    for (const HANDLE handle : {process.hProcess, process.hThread, ready, settled}) ::CloseHandle(handle);
}

std::wstring TargetProcess::Title(const std::wstring& name) { return TargetTitle(::GetCurrentProcessId(), name); }

HWND TargetProcess::Find(const std::wstring& name) {
    const HWND window = ::FindWindowW(kTargetClass, Title(name).c_str());
    Require(window != nullptr, "the target lacks a window");
    return window;
}

void TargetProcess::Settle() const {
    ::PostMessageW(controls, kSettle, 0, 0);
    Require(::WaitForSingleObject(settled, kPatienceMs) == WAIT_OBJECT_0, "the target does not settle");
}

}  // namespace dialwright::bench
