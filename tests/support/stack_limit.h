#pragma once

#include <cstddef>
#include <functional>

namespace dialwright::testing {

/// Runs the body on a new thread that has only so many bytes of stack left, and waits for it.
void RunWithStackLeft(std::size_t bytes, const std::function<void()>& body);

}  // namespace dialwright::testing
