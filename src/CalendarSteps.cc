#include "CalendarSteps.h"

#include <algorithm>
#include <limits>

#include "Raise.h"
#include "nkfw/Calendar.h"

namespace nkdt::calendar {

namespace {

using nkfw::isLeapYear;
using nkfw::calendar::floorDiv;

constexpr Origin origin = {".\\CalendarSteps.cc", "Kalender", "Jahr"};

/// Leap years up to a year.
constexpr LONGLONG leapYearsUpTo(LONGLONG year) noexcept {
    return floorDiv(year, 4) - floorDiv(year, 100) + floorDiv(year, 400);
}

/// Days up to the end of a year.
constexpr LONGLONG daysUpTo(LONGLONG year) noexcept {
    return 365 * year + leapYearsUpTo(year);
}

/// The last year whose end lies before a count of such days.
constexpr LONGLONG lastYearBefore(LONGLONG days) noexcept {
    LONGLONG year =
        floorDiv(days * nkfw::calendar::yearsOfEra, nkfw::calendar::daysOfEra);  // off by one at most
    while (daysUpTo(year) < days)
        ++year;
    while (daysUpTo(year) >= days)
        --year;
    return year;
}

constexpr LONGLONG daysBefore(INT month, bool isLeap) noexcept {
    return nkfw::daysBeforeMonth[month] + (isLeap && month >= 2 ? 1 : 0);
}

/// Sets the day and the month of a day of the year. One before 1 January stays a day of January, one behind
/// 31 December a day of December.
void setDayOfYear(DateTimeFields& fields, LONGLONG day, bool isLeap) noexcept {
    // Months have 31 days at most, and all in front of one lack no more than 7: this is the month or the
    // one before it.
    auto month = static_cast<INT>(std::clamp<LONGLONG>((day - 1) / 31, 0, 11));
    if (month < 11 && daysBefore(month + 1, isLeap) < day) ++month;
    fields.tm_mon = month;
    fields.tm_mday = static_cast<INT>(day - daysBefore(month, isLeap));
}

/// The day of the year in a common year.
LONGLONG commonDayOfYear(const DateTimeFields& fields) noexcept {
    return LONGLONG{nkfw::daysBeforeMonth[fields.tm_mon]} + fields.tm_mday;
}

constexpr bool isFromMarch(const DateTimeFields& fields) noexcept {
    return fields.tm_mon >= 2;
}

}  // namespace

void addDays(DateTimeFields& fields, LONGLONG days) {
    fields.requireMonth();
    LONGLONG year = fields.year();
    bool isLeap = isLeapYear(year);
    LONGLONG day = commonDayOfYear(fields) + days + (isLeap && isFromMarch(fields) ? 1 : 0);
    if (day > 365 + (isLeap ? 1 : 0)) {
        day += daysUpTo(year - 1);
        year = lastYearBefore(day) + 1;
        day -= daysUpTo(year - 1);
        isLeap = isLeapYear(year);
    }
    if (year > DateTimeFields::lastYear) raise(origin, NkDtErrWertebereich);
    fields.tm_year = static_cast<INT>(year - DateTimeFields::yearBase);
    setDayOfYear(fields, day, isLeap);
}

void subtractDays(DateTimeFields& fields, LONGLONG days) {
    fields.requireMonth();
    LONGLONG year = fields.year();
    bool isLeap = isLeapYear(year);
    LONGLONG day = commonDayOfYear(fields) - days;
    if (day > 0) {
        if (isLeap && isFromMarch(fields)) ++day;
    } else {
        // Each year that is crossed adds 365 days, and one if it is a leap year: from March on the year that
        // is left counts, before it the one that is reached.
        const LONGLONG counted = isFromMarch(fields) ? year : year - 1;
        const LONGLONG end = day + daysUpTo(counted);
        const LONGLONG reached = lastYearBefore(end);
        day = end - daysUpTo(reached);
        year -= counted - reached;
        isLeap = isLeapYear(year);
    }
    if (year < DateTimeFields::yearBase + LONGLONG{std::numeric_limits<INT>::min()})
        raise(origin, NkDtErrWertebereich);
    fields.tm_year = static_cast<INT>(year - DateTimeFields::yearBase);
    setDayOfYear(fields, day, isLeap);
}

Difference difference(const DateTimeFields& a, const DateTimeFields& b) noexcept {
    const LONGLONG secondBorrow = a.tm_sec < b.tm_sec ? -1 : 0;
    LONGLONG minutes = secondBorrow + a.tm_min - b.tm_min;
    const LONGLONG hourBorrow = minutes < 0 ? -1 : 0;
    if (minutes < 0) minutes += 60;

    LONGLONG days = commonDayOfYear(a) - commonDayOfYear(b);
    const LONGLONG years = a.year() - b.year();
    LONGLONG wholeYears = 0;
    LONGLONG leapDays = 0;
    // March counts as one of the first months here, unlike in the moves.
    const bool aIsLate = a.tm_mon > 2;
    const bool bIsLate = b.tm_mon > 2;
    if (days >= 0 && years > 0) {
        if (a.isLeapYear() && aIsLate) ++days;
        if (b.isLeapYear() && !bIsLate) ++days;
        wholeYears = years;
        // The year in front of the later one is never looked at.
        leapDays = std::max<LONGLONG>(leapYearsUpTo(a.year() - 2) - leapYearsUpTo(b.year()), 0);
    } else if (days <= 0 && years < 0) {
        if (a.isLeapYear() && !aIsLate) --days;
        if (b.isLeapYear() && bIsLate) --days;
        wholeYears = years;
        leapDays = -std::max<LONGLONG>(leapYearsUpTo(b.year() - 1) - leapYearsUpTo(a.year() + 1), 0);
    }
    return {(wholeYears * 365 + leapDays + days) * 24 + hourBorrow + a.tm_hour - b.tm_hour, minutes};
}

}  // namespace nkdt::calendar
