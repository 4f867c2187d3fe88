#pragma once

/// @file
/// The local clock, behind one seam: everything that needs the current date or time reads it here, and a test
/// can set it.

#include <ctime>

#include "nkfw/Export.h"

namespace nkfw {

/// A local date and time of day.
struct LocalTime {
    int year;    ///< the year, as it is (2004)
    int month;   ///< 1 to 12
    int day;     ///< 1 to 31
    int hour;    ///< 0 to 23
    int minute;  ///< 0 to 59
    int second;  ///< 0 to 60
};

/// Tells the time in seconds of the system clock; -1 when it cannot be read.
using ClockSource = std::time_t (*)() noexcept;

/// Sets the source for all threads (null: the system clock, the start value) and returns the one before.
NKDT_API ClockSource setClockSource(ClockSource source) noexcept;

/// The local date and time of a time of the system clock, in the C library's fields, by the time zone of the
/// process; safe from several threads.
/// @return false when no calendar holds that time; @p fields stays as it was
[[nodiscard]] NKDT_API bool localFields(std::time_t seconds, std::tm& fields) noexcept;

/// Reads the clock and turns it into local time; false when either fails.
[[nodiscard]] NKDT_API bool readLocalTime(LocalTime& now) noexcept;

}  // namespace nkfw
