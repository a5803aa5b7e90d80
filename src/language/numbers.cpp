#include "language/numbers.h"

#include <cerrno>
#include <cwchar>
#include <limits>
#include <stdexcept>

namespace dialwright {
namespace {

enum class Reading : std::uint8_t { Number, NoDigits, OutOfRange };

/// The C runtime reports overflow through errno, which belongs to the host.
class ErrnoKeeper {
public:
    ErrnoKeeper() noexcept : saved(errno) { errno = 0; }
    ~ErrnoKeeper() { errno = saved; }
    ErrnoKeeper(const ErrnoKeeper&) = delete;
    ErrnoKeeper& operator=(const ErrnoKeeper&) = delete;

private:
    int saved;
};

Reading ReadInteger(const std::wstring& text, std::int64_t& value) {
    const ErrnoKeeper keeper;
    wchar_t* end = nullptr;
    value = std::wcstoll(text.c_str(), &end, 10);
    if (end == text.c_str()) return Reading::NoDigits;
    return errno == ERANGE ? Reading::OutOfRange : Reading::Number;
}

Reading ReadIntegerWithin(const std::wstring& text, std::int64_t least, std::int64_t most, std::int64_t& value) {
    const Reading reading = ReadInteger(text, value);
    if (reading == Reading::Number && (value < least || value > most)) return Reading::OutOfRange;
    return reading;
}

Reading ReadInt(const std::wstring& text, std::int64_t& value) {
    return ReadIntegerWithin(text, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), value);
}

}  // namespace

int ConvertToInt(const std::wstring& text) {
    std::int64_t value = 0;
    switch (ReadInt(text, value)) {
        case Reading::NoDigits: throw std::invalid_argument("invalid stoi argument");
        case Reading::OutOfRange: throw std::out_of_range("stoi argument out of range");
        case Reading::Number: break;
    }
    return static_cast<int>(value);
}

std::uint32_t ConvertToUnsigned(const std::wstring& text) {
    // The magnitude must fit 32 bits; a minus sign then negates it modulo 2^32, as the C runtime does.
    constexpr std::int64_t kMost = std::numeric_limits<std::uint32_t>::max();
    std::int64_t value = 0;
    switch (ReadIntegerWithin(text, -kMost, kMost, value)) {
        case Reading::NoDigits: throw std::invalid_argument("invalid stoul argument");
        case Reading::OutOfRange: throw std::out_of_range("stoul argument out of range");
        case Reading::Number: break;
    }
    return static_cast<std::uint32_t>(value);
}

bool TryParseInt(const std::wstring& text, int* value) {
    std::int64_t parsed = 0;
    if (ReadInt(text, parsed) != Reading::Number) return false;
    *value = static_cast<int>(parsed);
    return true;
}

bool ReadsAsInteger(const std::wstring& text) {
    std::int64_t value = 0;
    return ReadInteger(text, value) == Reading::Number;
}

}  // namespace dialwright
