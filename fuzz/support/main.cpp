#include <cstdio>
#include <cstdlib>

#include "target.h"

namespace dialwright::fuzz {

void Require(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}

}  // namespace dialwright::fuzz

// NOLINTNEXTLINE(readability-identifier-naming): the fuzzer's name
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    dialwright::fuzz::Try({data, size});
    return 0;
}
