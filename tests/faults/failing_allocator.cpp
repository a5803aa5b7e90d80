#include "failing_allocator.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include "platform/windows.h"

#include <malloc.h>

namespace dialwright::testing {
namespace {

struct Watch {
    bool on = false;
    int failingNumber = 0;
    Failing failing = Failing::OnlyThatOne;
    int allocations = 0;
    int frees = 0;
    int refused = 0;
    std::size_t givenBack = 0;
};

thread_local Watch watch;

/// What a block takes of a heap, with its header and up to the next boundary.
std::size_t Charge(std::size_t size) noexcept { return (size + 31) & ~std::size_t{15}; }

bool HasRoom(std::size_t size) noexcept {
    if (watch.failingNumber == 0 || watch.allocations < watch.failingNumber) return true;
    if (watch.failing == Failing::OnlyThatOne) return watch.allocations != watch.failingNumber;
    if (watch.givenBack < Charge(size)) return false;
    watch.givenBack -= Charge(size);
    return true;
}

void* Allocate(std::size_t size) noexcept {
    if (watch.on) {
        ++watch.allocations;
        if (!HasRoom(size)) {
            ++watch.refused;
            // As the system's own does.
            errno = ENOMEM;
            ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return nullptr;
        }
    }
    return std::malloc(size == 0 ? 1 : size);
}

void Free(void* block) noexcept {
    if (watch.on && block != nullptr) {
        ++watch.frees;
        if (watch.allocations >= watch.failingNumber) watch.givenBack += Charge(::_msize(block));
    }
    std::free(block);
}

/// As the language has it: the handler may find memory, or throws.
void* AllocateOrThrow(std::size_t size) {
    for (;;) {
        if (void* const block = Allocate(size)) return block;
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) throw std::bad_alloc();
        handler();
    }
}

}  // namespace

void BeginWatching(int failingNumber, Failing failing) noexcept {
    watch = {.on = true, .failingNumber = failingNumber, .failing = failing};
}

void EndWatching(WatchedCall& call) noexcept {
    watch.on = false;
    call.allocations = watch.allocations;
    call.blocksLeft = watch.allocations - watch.refused - watch.frees;
}

}  // namespace dialwright::testing

// The whole program's; the forms of the language that are not here end in these. The standard library's names for the
// parameters are reserved for it.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
void* operator new(std::size_t size) { return dialwright::testing::AllocateOrThrow(size); }
void operator delete(void* block) noexcept { dialwright::testing::Free(block); }
void operator delete(void* block, std::size_t) noexcept { dialwright::testing::Free(block); }
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
