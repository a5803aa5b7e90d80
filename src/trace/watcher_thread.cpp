#include "trace/watcher_thread.h"

#include <utility>

namespace dialwright {

void WatcherThread::Start(Body body) noexcept {
    toRun = body;
    stop = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (stop == nullptr) return;
    work = ::CreateThreadpoolWork(&Run, this, nullptr);
    if (work != nullptr) ::SubmitThreadpoolWork(work);
}

void CALLBACK WatcherThread::Run(PTP_CALLBACK_INSTANCE instance, void* self, PTP_WORK) noexcept {
    ::CallbackMayRunLong(instance);
    auto* const watcher = static_cast<WatcherThread*>(self);
    watcher->threadId = ::GetCurrentThreadId();
    watcher->toRun();
    watcher->threadId = 0;
}

bool WatcherThread::SleepUnlessStopped(DWORD milliseconds) const noexcept {
    return ::WaitForSingleObject(stop, milliseconds) == WAIT_TIMEOUT;
}

void WatcherThread::Stop() noexcept {
    if (::GetCurrentThreadId() == threadId) return;
    if (stop != nullptr) ::SetEvent(stop);
    if (const PTP_WORK ending = std::exchange(work, nullptr)) {
        ::WaitForThreadpoolWorkCallbacks(ending, TRUE);
        ::CloseThreadpoolWork(ending);
    }
    // Closed only now: a handle that is closed under a waiting thread may come to mean something else.
    if (const HANDLE closing = std::exchange(stop, nullptr)) ::CloseHandle(closing);
}

void WatcherThread::StopWithin(DWORD milliseconds) const noexcept {
    if (stop == nullptr || ::GetCurrentThreadId() == threadId) return;
    ::SetEvent(stop);
    for (const ULONGLONG end = ::GetTickCount64() + milliseconds; threadId != 0 && ::GetTickCount64() < end;)
        ::Sleep(1);
}

}  // namespace dialwright
