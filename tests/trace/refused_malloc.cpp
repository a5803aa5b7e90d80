#include "refused_malloc.h"

#include <cerrno>
#include <cstddef>

#include "platform/windows.h"

namespace dialwright::testing {
namespace {

thread_local bool refuses = false;
thread_local int refusals = 0;

using Malloc = void* (*)(std::size_t);

Malloc MallocOfTheRuntime() noexcept {
    const FARPROC found = ::GetProcAddress(::GetModuleHandleW(L"ucrtbase.dll"), "malloc");
    return reinterpret_cast<Malloc>(reinterpret_cast<void*>(found));
}

}  // namespace

RefusedMalloc::RefusedMalloc() noexcept {
    refuses = true;
    refusals = 0;
}

RefusedMalloc::~RefusedMalloc() { refuses = false; }

int RefusedMalloc::Refusals() noexcept { return refusals; }

}  // namespace dialwright::testing

extern "C" void* malloc(std::size_t size) {
    using namespace dialwright::testing;
    static const Malloc kMalloc = MallocOfTheRuntime();
    if (!refuses) return kMalloc(size);
    ++refusals;
    errno = ENOMEM;
    return nullptr;
}
