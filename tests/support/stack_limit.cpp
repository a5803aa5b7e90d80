#include "support/stack_limit.h"

#include <cstdint>
#include <stdexcept>

#include "platform/windows.h"

#include <malloc.h>

namespace dialwright::testing {
namespace {

struct Job {
    std::size_t bytesLeft;
    const std::function<void()>* body;
};

/// The platform may round a small stack up (Wine: to 1 MiB), so what is too much is used up before the body runs.
DWORD WINAPI RunJob(LPVOID parameter) {
    const auto& job = *static_cast<const Job*>(parameter);
    ULONG_PTR low = 0;
    ULONG_PTR high = 0;
    ::GetCurrentThreadStackLimits(&low, &high);
    const std::size_t left = reinterpret_cast<std::uintptr_t>(&high) - low;
    if (left > job.bytesLeft) {
        // Touched from the top, page by page, as the stack grows by its guard page.
        auto* ballast = static_cast<volatile char*>(_alloca(left - job.bytesLeft));
        for (std::size_t i = left - job.bytesLeft; i >= 1024; i -= 1024) ballast[i - 1] = 1;
    }
    (*job.body)();
    return 0;
}

}  // namespace

void RunWithStackLeft(std::size_t bytes, const std::function<void()>& body) {
    const Job job{.bytesLeft = bytes, .body = &body};
    const HANDLE thread =
        ::CreateThread(nullptr, bytes, &RunJob, const_cast<Job*>(&job), STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr) throw std::runtime_error("no thread");
    ::WaitForSingleObject(thread, INFINITE);
    ::CloseHandle(thread);
}

}  // namespace dialwright::testing
