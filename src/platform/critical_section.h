#pragma once

#include "platform/windows.h"

namespace dialwright {

/// The platform's re-entrant lock, with the names that std::lock_guard and std::unique_lock want. Made and deleted by
/// hand, as it stands in static storage of a library that may be started more than once.
class CriticalSection {
public:
    void Initialize() noexcept { (void)::InitializeCriticalSectionAndSpinCount(&section, kSpins); }
    void Delete() noexcept { ::DeleteCriticalSection(&section); }

    // NOLINTBEGIN(readability-identifier-naming): the standard library's names
    void lock() noexcept { ::EnterCriticalSection(&section); }
    bool try_lock() noexcept { return ::TryEnterCriticalSection(&section) != FALSE; }
    void unlock() noexcept { ::LeaveCriticalSection(&section); }
    // NOLINTEND(readability-identifier-naming)

private:
    static constexpr DWORD kSpins = 1000;
    CRITICAL_SECTION section{};
};

}  // namespace dialwright
