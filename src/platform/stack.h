#pragma once

#include <cstddef>

namespace dialwright {

/// How much of the calling thread's (or fiber's) stack is left, guard pages included;
/// 0 on a stack that the platform does not know.
[[nodiscard]] std::size_t StackBytesLeft() noexcept;

}  // namespace dialwright
