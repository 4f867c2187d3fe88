#pragma once

/// @file
/// The moves and differences of dates, as functions of their fields.
///
/// The steps depart from the calendar in places, and what they lead to is the result, be it 32 December. The
/// loops over years of the steps are replaced by counting leap years, which leads to the same.

#include "Imp/dtdatimi.h"

namespace nkdt::calendar {

/// Moves by @p days, from 0 on, as the calendar goes. Error 26 when the month is none; error 8, nothing
/// changed, for a year beyond 32767.
void addDays(DateTimeFields& fields, LONGLONG days);

/// Moves back by @p days, from 0 on. For every year that is crossed, the leap day counts that the month of
/// the start sees: from March on the one of the year that is left, before the one of the year that is
/// reached. Error 26 when the month is none. Years before 1753 are not refused here.
void subtractDays(DateTimeFields& fields, LONGLONG days);

/// A difference in hours and, 0 to 59, minutes.
struct Difference {
    LONGLONG hours;
    LONGLONG minutes;
};
/// From @p b to @p a. The days of the year are taken from a common year; leap days are put right only when
/// both the year and the day of the year differ in one direction, and so are whole years. The months must be
/// months.
Difference difference(const DateTimeFields& a, const DateTimeFields& b) noexcept;

}  // namespace nkdt::calendar
