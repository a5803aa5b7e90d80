#include "platform/stack.h"

#include <cstdint>

#include "platform/windows.h"

namespace dialwright {

std::size_t StackBytesLeft() noexcept {
    ULONG_PTR low = 0;
    ULONG_PTR high = 0;
    ::GetCurrentThreadStackLimits(&low, &high);
    const auto here = reinterpret_cast<std::uintptr_t>(&high);
    return here >= low && here < high ? static_cast<std::size_t>(here - low) : 0;
}

}  // namespace dialwright
