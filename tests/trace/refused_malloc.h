#pragma once

namespace dialwright::testing {

/// While it lives, malloc has no memory for this thread, and operator new has none with it. The program's own malloc:
/// the library is linked into it.
class RefusedMalloc {
public:
    RefusedMalloc() noexcept;
    ~RefusedMalloc();
    RefusedMalloc(const RefusedMalloc&) = delete;
    RefusedMalloc& operator=(const RefusedMalloc&) = delete;

    [[nodiscard]] static int Refusals() noexcept;
};

}  // namespace dialwright::testing
