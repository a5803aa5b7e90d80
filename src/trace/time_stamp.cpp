#include "trace/time_stamp.h"

#include <array>
#include <chrono>

namespace dialwright {
namespace {

void PutDate(BoundedText& target, const std::tm& local) {
    target.Put('[');
    target.PutNumber(local.tm_year + 1900, 4);
    target.Put('-');
    target.PutNumber(local.tm_mon + 1, 2);
    target.Put('-');
    target.PutNumber(local.tm_mday, 2);
    target.Put(' ');
    target.PutNumber(local.tm_hour, 2);
    target.Put(':');
    target.PutNumber(local.tm_min, 2);
    target.Put(':');
    target.PutNumber(local.tm_sec, 2);
    target.Put('.');
}

void PutZone(BoundedText& target, long offsetSeconds) {
    const long distance = offsetSeconds < 0 ? -offsetSeconds : offsetSeconds;
    target.Put(" UTC");
    target.Put(offsetSeconds <= 0 ? '+' : '-');
    target.PutNumber(distance / 3600, 2);
    target.Put(':');
    target.PutNumber(distance / 60 % 60, 2);
    target.Put("] ");
}

}  // namespace

std::tm BreakDown(std::int64_t seconds) noexcept {
    const std::chrono::sys_seconds instant{std::chrono::seconds(seconds)};
    const auto day = std::chrono::floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(instant - day);
    std::tm broken{};
    broken.tm_year = static_cast<int>(date.year()) - 1900;
    broken.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
    broken.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
    broken.tm_hour = static_cast<int>(time.hours().count());
    broken.tm_min = static_cast<int>(time.minutes().count());
    broken.tm_sec = static_cast<int>(time.seconds().count());
    return broken;
}

SecondText TextOfSecond(const std::tm& local, long zoneOffsetSeconds) noexcept {
    SecondText text;
    std::array<char, 32> area;
    BoundedText date(area);
    PutDate(date, local);
    text.date.Assign(date.View());
    BoundedText zone(area);
    PutZone(zone, zoneOffsetSeconds);
    text.zone.Assign(zone.View());
    return text;
}

}  // namespace dialwright
