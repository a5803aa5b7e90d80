#include "trace/clock.h"

#include <atomic>
#include <ctime>

namespace dialwright {
namespace {

using ReadClock = void(WINAPI*)(FILETIME*);

constexpr std::int64_t kUnixEpoch = 116'444'736'000'000'000;
constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr DWORD kZoneRefreshMs = 10'000;

std::atomic<ReadClock> readClock = &::GetSystemTimeAsFileTime;
// When the zone was last read anew, in units of ten seconds since the system started.
std::atomic<DWORD> zoneMark = 0;
// What the last look at the C runtime's zone gave, for the exit path.
std::atomic<long> lastZoneOffset = 0;
std::atomic<std::int64_t> lastSecondsAheadOfUtc = 0;

/// What this thread last made of a second; most lines fall into the second of the one before.
struct SecondCache {
    std::int64_t second = -1;
    DWORD zone = 0;
    SecondText text;
};
thread_local constinit SecondCache cache;

void RefreshZoneIfDue() {
    const DWORD mark = ::GetTickCount() / kZoneRefreshMs;
    DWORD seen = zoneMark.load(std::memory_order_relaxed);
    if (seen != mark && zoneMark.compare_exchange_strong(seen, mark)) ::_tzset();
}

SecondText TextOf(std::int64_t second) {
    const std::time_t time = second;
    std::tm local{};
    ::_localtime64_s(&local, &time);
    long timezone = 0;
    int daylight = 0;
    ::_get_timezone(&timezone);
    ::_get_daylight(&daylight);
    const long offset = ZoneOffsetSeconds(timezone, daylight);
    lastZoneOffset = offset;
    lastSecondsAheadOfUtc = ::_mkgmtime64(&local) - time;
    return TextOfSecond(local, offset);
}

struct Instant {
    std::int64_t second;
    std::uint32_t fraction;
};

Instant ReadInstant() {
    FILETIME fileTime{};
    readClock.load(std::memory_order_relaxed)(&fileTime);
    const auto ticks =
        static_cast<std::int64_t>(static_cast<std::uint64_t>(fileTime.dwHighDateTime) << 32U | fileTime.dwLowDateTime) -
        kUnixEpoch;
    return {.second = ticks / kTicksPerSecond, .fraction = static_cast<std::uint32_t>(ticks % kTicksPerSecond)};
}

}  // namespace

void FindPreciseClock() noexcept {
    const auto found = reinterpret_cast<ReadClock>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32"), "GetSystemTimePreciseAsFileTime")));
    readClock = found != nullptr ? found : &::GetSystemTimeAsFileTime;
}

TimeStamp Now() noexcept {
    RefreshZoneIfDue();
    const Instant now = ReadInstant();
    const DWORD zone = zoneMark.load(std::memory_order_relaxed);
    if (cache.second != now.second || cache.zone != zone) {
        cache = {.second = now.second, .zone = zone, .text = TextOf(now.second)};
    }
    return {.second = &cache.text, .fraction = now.fraction};
}

TimeStamp NowAtExit(SecondText& text) noexcept {
    const Instant now = ReadInstant();
    text = TextOfSecond(BreakDown(now.second + lastSecondsAheadOfUtc), lastZoneOffset);
    return {.second = &text, .fraction = now.fraction};
}

FixedText<256> RefreshedZoneName() noexcept {
    ::_tzset();
    char name[256] = {};
    std::size_t length = 0;
    ::_get_tzname(&length, name, sizeof name, 0);
    FixedText<256> text;
    text.Assign(name);
    return text;
}

std::int64_t PerformanceCounter() noexcept {
    LARGE_INTEGER counter{};
    ::QueryPerformanceCounter(&counter);
    return counter.QuadPart;
}

unsigned long SecondsSinceSystemStart() noexcept { return ::GetTickCount() / 1000; }

}  // namespace dialwright
