#include "verify/leaving_host.h"

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>

#include "verify/library.h"

namespace dialwright::verify {
namespace {

constexpr int kLines = 2000;

/// "Bogus.thread.number", so that a line that is missing is seen.
void LogWithoutEnd(const Library& library, int thread, std::atomic<int>& sum) {
    for (int number = 1;; ++number) {
        const std::wstring name = L"Bogus." + std::to_wstring(thread) + L"." + std::to_wstring(number);
        library->validateCommand(name.c_str());
        ++sum;
    }
}

}  // namespace

int LogAndLeave(const Setting& setting, std::string_view way) {
    // Never freed: the threads use it to the end.
    static const Library* const library = new Library(setting);
    static std::atomic<int> sum = 0;
    for (int thread = 0; thread < kLeavingThreads; ++thread)
        std::thread([thread] { LogWithoutEnd(*library, thread, sum); }).detach();
    while (sum < kLines) ::Sleep(1);  // between two looks at the condition
    if (way == "ExitProcess") ::ExitProcess(kLeavingCode);
    if (way == "TerminateProcess") ::TerminateProcess(::GetCurrentProcess(), kLeavingCode);
    return kLeavingCode;
}

void LogAndCrash(const Setting& setting) {
    const Library library(setting);
    library->validateCommand(L"Bogus.BeforeTheCrash");
    ::RaiseException(EXCEPTION_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}

}  // namespace dialwright::verify
