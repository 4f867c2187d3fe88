#include "nkfw/Clock.h"

#include <atomic>
#include <limits>

namespace nkfw {

namespace {

constexpr int firstYear = 1900;  // of tm_year

std::time_t systemClock() noexcept {
    return std::time(nullptr);
}

constinit std::atomic<ClockSource> currentSource{&systemClock};

}  // namespace

ClockSource setClockSource(ClockSource source) noexcept {
    const ClockSource before =
        currentSource.exchange(source != nullptr ? source : &systemClock, std::memory_order_acq_rel);
    return before == &systemClock ? nullptr : before;
}

bool localFields(std::time_t seconds, std::tm& fields) noexcept {
    std::tm converted;
    if (localtime_r(&seconds, &converted) == nullptr) return false;
    fields = converted;
    return true;
}

bool readLocalTime(LocalTime& now) noexcept {
    const std::time_t seconds = currentSource.load(std::memory_order_acquire)();
    if (seconds == static_cast<std::time_t>(-1)) return false;
    std::tm fields;
    if (!localFields(seconds, fields)) return false;
    if (fields.tm_year > std::numeric_limits<int>::max() - firstYear) return false;
    now = {fields.tm_year + firstYear,
           fields.tm_mon + 1,
           fields.tm_mday,
           fields.tm_hour,
           fields.tm_min,
           fields.tm_sec};
    return true;
}

}  // namespace nkfw
