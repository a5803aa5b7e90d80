#pragma once

#include <atomic>

#include "platform/windows.h"

namespace dialwright {

/// The logger's one background thread, made so that a library can be unloaded at any moment.
///
/// Whoever frees the library holds the loader's lock, which every thread needs to begin and to end. A thread made by
/// hand could then neither be waited for, nor left to itself, as its first instruction lies in the image that is about
/// to go; and one that is ended by force while it waits for that lock leaves the lock damaged. So the body runs as one
/// long work item of the system's thread pool: the pool's threads begin and end in the system's own code, an item that
/// has not begun can be taken back, and the wait for one that runs ends as soon as the body has returned. The body must
/// not load a library nor look up an entry point, as it would wait for the same lock.
class WatcherThread {
public:
    using Body = void (*)();

    /// Runs the body on a thread of the pool. Without one, where the system has none to give, nothing runs.
    void Start(Body body) noexcept;

    /// Waits on the event that Stop sets. True when the time has passed without it.
    [[nodiscard]] bool SleepUnlessStopped(DWORD milliseconds) const noexcept;

    /// Sets the stop event and waits without limit until the body has returned; one that has not begun never will. Does
    /// nothing on the thread itself, and nothing when nothing was started.
    void Stop() noexcept;

    /// Sets the stop event and waits so long at most. For a process that is about to end: nothing is given back.
    void StopWithin(DWORD milliseconds) const noexcept;

private:
    static void CALLBACK Run(PTP_CALLBACK_INSTANCE instance, void* self, PTP_WORK item) noexcept;

    Body toRun = nullptr;
    PTP_WORK work = nullptr;
    HANDLE stop = nullptr;
    std::atomic<DWORD> threadId = 0;
};

}  // namespace dialwright
