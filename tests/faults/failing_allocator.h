#pragma once

#include <concepts>
#include <cstdint>
#include <new>

namespace dialwright::testing {

/// Which of this thread's allocations fail while a call is watched, counted from 1.
enum class Failing : std::uint8_t {
    OnlyThatOne,
    /// From then on there is as much memory as is given back.
    HeapIsFull,
};

struct WatchedCall {
    int allocations = 0;
    /// What the call has taken and not given back.
    int blocksLeft = 0;
    bool threwBadAlloc = false;
    int result = -1;
};

/// Counts this thread's operator new and delete from now on; the one of this number, if not 0, fails.
void BeginWatching(int failingNumber, Failing failing) noexcept;
/// Ends it; fills in the two counts.
void EndWatching(WatchedCall& call) noexcept;

/// Calls with the allocation of this number failing; 0 fails none.
template <std::invocable Call>
WatchedCall CallWithFailure(int failingNumber, Failing failing, const Call& call) {
    WatchedCall watched;
    BeginWatching(failingNumber, failing);
    try {
        watched.result = call();
    } catch (const std::bad_alloc&) {
        watched.threwBadAlloc = true;
    }
    EndWatching(watched);
    return watched;
}

}  // namespace dialwright::testing
