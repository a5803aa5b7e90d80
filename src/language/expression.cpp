#include "language/expression.h"

#include <atomic>
#include <cstddef>
#include <new>
#include <utility>

namespace dialwright {

// Other standard libraries do not free twice. And where they are a DLL of their own, a handler that is set in them
// would outlive this one.
#if defined(_LIBCPP_VERSION)
namespace {

// With what a heap adds to each block, libc++ on x64 takes nearly 144 bytes for each bar without anything beside it,
// and less for all else; and 512 for what comes with it.
constexpr std::size_t kReservedAnyway = 1024;
constexpr std::size_t kReservedPerUnit = 160;

/// Memory that is set aside: while this lives, the first allocation of its thread that finds none left frees it and is
/// tried again.
class MemoryReserve {
public:
    explicit MemoryReserve(std::size_t bytes);
    ~MemoryReserve();
    MemoryReserve(const MemoryReserve&) = delete;
    MemoryReserve& operator=(const MemoryReserve&) = delete;

private:
    static void GiveBack();

    void* block;
};

thread_local constinit void** reserved = nullptr;
std::atomic<std::new_handler> handlerBefore = nullptr;

MemoryReserve::MemoryReserve(std::size_t bytes) : block(::operator new(bytes)) {
    const std::new_handler before = std::set_new_handler(&GiveBack);
    if (before != &GiveBack) handlerBefore = before;
    reserved = &block;
}

MemoryReserve::~MemoryReserve() {
    reserved = nullptr;
    ::operator delete(block);
}

/// Stays installed, as another thread may need it: without a reserve it does what was done before.
void MemoryReserve::GiveBack() {
    if (reserved != nullptr && *reserved != nullptr) {
        ::operator delete(std::exchange(*reserved, nullptr));
    } else if (const std::new_handler before = handlerBefore) {
        before();
    } else {
        throw std::bad_alloc();
    }
}

}  // namespace
#endif

std::wregex CompileExpression(const std::wstring& pattern, std::regex_constants::syntax_option_type options) {
#if defined(_LIBCPP_VERSION)
    const MemoryReserve reserve(kReservedAnyway + kReservedPerUnit * pattern.size());
#endif
    return std::wregex(pattern, options);
}

}  // namespace dialwright
