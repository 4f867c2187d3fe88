#pragma once

/// @file
/// The Gregorian calendar as plain integer functions: leap years, lengths of months, and the count of days
/// that dates are converted to and from.
///
/// @code
/// nkfw::isLeapYear(1900);            // false
/// nkfw::daysInMonth(2004, 2);        // 29
/// nkfw::dayNumber(2004, 3, 1);       // 12478
/// nkfw::dateOf(12478 - 1);           // { 2004, 2, 29 }
/// @endcode
///
/// Its rule holds for all years alike, those before its introduction and below 1 (the year before 1 is 0)
/// included.

#include <cstdint>

namespace nkfw {

/// A day of the calendar.
struct CalendarDate {
    int year;   ///< the year, as it is (2004)
    int month;  ///< 1 to 12
    int day;    ///< 1 to the length of the month

    friend constexpr bool operator==(const CalendarDate& a, const CalendarDate& b) noexcept {
        return a.year == b.year && a.month == b.month && a.day == b.day;
    }
    friend constexpr bool operator!=(const CalendarDate& a, const CalendarDate& b) noexcept {
        return !(a == b);
    }
};

/// The days of a common year in front of each month, and behind the last one: entry m - 1 belongs to month m.
inline constexpr int daysBeforeMonth[13] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

/// Divisible by 4 and not by 100, or divisible by 400.
constexpr bool isLeapYear(std::int64_t year) noexcept {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

/// The length of a month, 28 to 31.
/// @param month 1 to 12
constexpr int daysInMonth(std::int64_t year, int month) noexcept {
    return daysBeforeMonth[month] - daysBeforeMonth[month - 1] + (month == 2 && isLeapYear(year) ? 1 : 0);
}

/// True for a month from 1 to 12 and a day within it.
constexpr bool isDate(std::int64_t year, int month, int day) noexcept {
    return month >= 1 && month <= 12 && day >= 1 && day <= daysInMonth(year, month);
}

/// @cond
// The calendar repeats every 400 years, so a year counts as an era (a multiple of 400 years) and a year of
// the era, 0 to 399. Year 0 of an era is a leap year.
namespace calendar {

inline constexpr int yearsOfEra = 400;
inline constexpr int daysOfEra = 400 * 365 + 97;
inline constexpr int daysFromYear0 = 719528;  // to 1970-01-01

/// The quotient rounded down, for a positive divisor.
constexpr std::int64_t floorDiv(std::int64_t n, int divisor) noexcept {
    return (n >= 0 ? n : n - (divisor - 1)) / divisor;
}

/// The days of an era in front of its year, each leap year before it counted.
constexpr int daysBeforeYear(int yearOfEra) noexcept {
    return yearOfEra * 365 + (yearOfEra + 3) / 4 - (yearOfEra + 99) / 100 + (yearOfEra + 399) / 400;
}

/// The days of a year in front of its month, 1 to 12 (13: all of them).
constexpr int daysBefore(bool leapYear, int month) noexcept {
    return daysBeforeMonth[month - 1] + (leapYear && month > 2 ? 1 : 0);
}

}  // namespace calendar
/// @endcond

/// The days from 1970-01-01 to a date, negative before it.
/// @param month 1 to 12
/// @param day counted on from the start of the month: 0 is the day before, 32 December is 1 January
constexpr std::int64_t dayNumber(int year, int month, int day) noexcept {
    const std::int64_t era = calendar::floorDiv(year, calendar::yearsOfEra);
    const int yearOfEra = static_cast<int>(year - era * calendar::yearsOfEra);
    const int dayOfYear = calendar::daysBefore(isLeapYear(year), month);
    return era * calendar::daysOfEra + calendar::daysBeforeYear(yearOfEra) + dayOfYear - 1 -
           calendar::daysFromYear0 + day;
}

/// The date of a day counted from 1970-01-01: the inverse of dayNumber.
/// @param number of a date whose year is an int
constexpr CalendarDate dateOf(std::int64_t number) noexcept {
    const std::int64_t days = number + calendar::daysFromYear0;
    const std::int64_t era = calendar::floorDiv(days, calendar::daysOfEra);
    int day = static_cast<int>(days - era * calendar::daysOfEra);

    // An era's 97 leap days are less than a year, so this is the year or the one behind it.
    int yearOfEra = day / 365;
    if (day < calendar::daysBeforeYear(yearOfEra)) --yearOfEra;
    day -= calendar::daysBeforeYear(yearOfEra);

    // Months have 31 days at most, and all in front of one lack no more than 7: this is the month or the
    // one before it.
    const bool leapYear = isLeapYear(yearOfEra);
    int month = day / 31 + 1;
    if (day >= calendar::daysBefore(leapYear, month + 1)) ++month;
    day -= calendar::daysBefore(leapYear, month);

    return {static_cast<int>(era * calendar::yearsOfEra + yearOfEra), month, day + 1};
}

}  // namespace nkfw
