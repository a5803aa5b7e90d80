#pragma once

#include <concepts>

#include "platform/windows.h"
#include "support/patience.h"

namespace dialwright::testing {

inline const DWORD kPatienceMs = Patient(20000);

/// Whether the condition came true within the deadline.
template <std::predicate Condition>
[[nodiscard]] bool WaitUntil(Condition condition, DWORD deadlineMs = kPatienceMs) {
    const ULONGLONG end = ::GetTickCount64() + deadlineMs;
    while (!condition()) {
        if (::GetTickCount64() >= end) return false;
        ::Sleep(5);  // between two looks at the condition
    }
    return true;
}

}  // namespace dialwright::testing
