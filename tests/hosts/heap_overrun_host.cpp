// Writes one byte behind a block of its heap. With the platform's heap checks on, the platform says so.

#include <cstddef>
#include <cstdlib>

int main() {
    constexpr std::size_t kBytes = 40;
    auto* const block = static_cast<volatile char*>(std::malloc(kBytes));
    if (block == nullptr) return 3;
    const volatile std::size_t behind = kBytes;
    block[behind] = 'x';
    std::free(const_cast<char*>(block));
    return 0;
}
