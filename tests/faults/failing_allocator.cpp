#include "failing_allocator.h"

#include <cstddef>
#include <cstdlib>

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
};

thread_local Watch watch;

bool MustFail() noexcept {
    if (!watch.on) return false;
    ++watch.allocations;
    if (watch.failingNumber == 0) return false;
    const bool fails = watch.failing == Failing::OnlyThatOne ? watch.allocations == watch.failingNumber
                                                             : watch.allocations >= watch.failingNumber;
    if (fails) ++watch.refused;
    return fails;
}

void* Allocate(std::size_t size) noexcept { return MustFail() ? nullptr : std::malloc(size == 0 ? 1 : size); }

void* AllocateAligned(std::size_t size, std::align_val_t alignment) noexcept {
    if (MustFail()) return nullptr;
    return ::_aligned_malloc(size == 0 ? 1 : size, static_cast<std::size_t>(alignment));
}

void CountFree(const void* block) noexcept {
    if (watch.on && block != nullptr) ++watch.frees;
}

void* OrThrow(void* block) {
    if (block == nullptr) throw std::bad_alloc();
    return block;
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

// The whole program's. Each form that the language has ends here, so that none is missed.
using dialwright::testing::Allocate;
using dialwright::testing::AllocateAligned;
using dialwright::testing::CountFree;
using dialwright::testing::OrThrow;

void* operator new(std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new[](std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new(std::size_t size, std::align_val_t alignment) { return OrThrow(AllocateAligned(size, alignment)); }
void* operator new[](std::size_t size, std::align_val_t alignment) { return OrThrow(AllocateAligned(size, alignment)); }

void operator delete(void* block) noexcept {
    CountFree(block);
    std::free(block);
}
void operator delete[](void* block) noexcept { ::operator delete(block); }
void operator delete(void* block, std::size_t) noexcept { ::operator delete(block); }
void operator delete[](void* block, std::size_t) noexcept { ::operator delete(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { ::operator delete(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { ::operator delete(block); }

void operator delete(void* block, std::align_val_t) noexcept {
    CountFree(block);
    ::_aligned_free(block);
}
void operator delete[](void* block, std::align_val_t alignment) noexcept { ::operator delete(block, alignment); }
void operator delete(void* block, std::size_t, std::align_val_t alignment) noexcept {
    ::operator delete(block, alignment);
}
void operator delete[](void* block, std::size_t, std::align_val_t alignment) noexcept {
    ::operator delete(block, alignment);
}
