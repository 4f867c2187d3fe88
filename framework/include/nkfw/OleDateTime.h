#pragma once

/// @file
/// A date and time of day as automation interfaces exchange it: a count of days as a double, and a status.
///
/// @code
/// COleDateTime noon(2004, 3, 5, 12, 0, 0);
/// noon.m_dt;                                         // 38051.5
/// noon.GetMonth();                                   // 3
/// COleDateTime(2003, 2, 29, 0, 0, 0).GetStatus();    // COleDateTime::invalid
/// COleDateTime(-1.25) == COleDateTime(1899, 12, 29, 6, 0, 0);
/// @endcode
///
/// Day 0 is 30 December 1899. The part behind the point is the time of day and counts forward on negative
/// days too: -1.25 is six o'clock of the day before day 0, and -0.25 is the same as 0.25.
///
/// The range is 1 January 100 to 31 December 9999, 23:59:59. What is made from anything else, or from a date
/// that no calendar has, has the status `invalid` and the count 0.
///
/// The fields are read with the count rounded to the second, half a second upward, so that each second of the
/// range survives the double: 23:59:59.9 reads as midnight of the next day.

#include <ctime>

#include "nkfw/Export.h"

/// Days since 30 December 1899, 00:00.
using DATE = double;

class NKDT_API COleDateTime {
  public:
    enum DateTimeStatus : int {
        valid = 0,
        invalid = 1,  ///< made from something that is no date or beyond the range
        null = 2,     ///< no date at all
    };

    DATE m_dt = 0;
    DateTimeStatus m_status = valid;

    /// A valid 30 December 1899, 00:00:00.
    constexpr COleDateTime() noexcept = default;
    /// The date of this count, kept as it is, valid. A count that rounds to a second beyond the range, and
    /// one that is not finite, is invalid.
    explicit COleDateTime(DATE dt) noexcept;
    /// The local date and time of a time of the system clock, by the time zone of the process. A leap second
    /// is the second before it.
    explicit COleDateTime(std::time_t timeSrc) noexcept;
    /// As SetDateTime.
    COleDateTime(int nYear, int nMonth, int nDay, int nHour, int nMin, int nSec) noexcept {
        SetDateTime(nYear, nMonth, nDay, nHour, nMin, nSec);
    }

    /// The local date and time of the clock (see Clock.h); invalid when it cannot be read.
    static COleDateTime GetCurrentTime() noexcept;

    /// Sets date and time of day. Every field must be in its range, for the day the length of the month.
    /// @param nYear 100 to 9999; two digits mean no century
    /// @param nMonth 1 to 12
    /// @param nDay 1 to 31
    /// @param nHour 0 to 23
    /// @param nMin 0 to 59
    /// @param nSec 0 to 59
    /// @return the status: `valid`, or `invalid` and the count is 0
    DateTimeStatus SetDateTime(int nYear, int nMonth, int nDay, int nHour, int nMin, int nSec) noexcept;
    /// As SetDateTime at 00:00:00.
    DateTimeStatus SetDate(int nYear, int nMonth, int nDay) noexcept;
    /// As SetDateTime on 30 December 1899.
    DateTimeStatus SetTime(int nHour, int nMin, int nSec) noexcept;

    constexpr DateTimeStatus GetStatus() const noexcept { return m_status; }
    /// The count stays.
    constexpr void SetStatus(DateTimeStatus status) noexcept { m_status = status; }

    /// @name The fields
    /// -1 unless the status is valid and the count within the range.
    /// @{
    int GetYear() const noexcept;       ///< 100 to 9999
    int GetMonth() const noexcept;      ///< 1 to 12
    int GetDay() const noexcept;        ///< 1 to 31
    int GetHour() const noexcept;       ///< 0 to 23
    int GetMinute() const noexcept;     ///< 0 to 59
    int GetSecond() const noexcept;     ///< 0 to 59
    int GetDayOfWeek() const noexcept;  ///< 1 (Sunday) to 7 (Saturday)
    int GetDayOfYear() const noexcept;  ///< 1 to 366
    /// @}

    /// Equal are dates of the same status and the same point in time, unrounded.
    friend bool operator==(const COleDateTime& a, const COleDateTime& b) noexcept {
        return a.m_status == b.m_status && a.IsAt(b);
    }
    friend bool operator!=(const COleDateTime& a, const COleDateTime& b) noexcept { return !(a == b); }
    /// The earlier date is the smaller one. Only valid dates have an order; beside any other, all four are
    /// false.
    friend bool operator<(const COleDateTime& a, const COleDateTime& b) noexcept {
        return areValid(a, b) && a.IsBefore(b);
    }
    friend bool operator>(const COleDateTime& a, const COleDateTime& b) noexcept { return b < a; }
    friend bool operator<=(const COleDateTime& a, const COleDateTime& b) noexcept {
        return areValid(a, b) && (a.IsBefore(b) || a.IsAt(b));
    }
    friend bool operator>=(const COleDateTime& a, const COleDateTime& b) noexcept { return b <= a; }

  private:
    static constexpr bool areValid(const COleDateTime& a, const COleDateTime& b) noexcept {
        return a.m_status == valid && b.m_status == valid;
    }
    bool IsAt(const COleDateTime& other) const noexcept;
    bool IsBefore(const COleDateTime& other) const noexcept;
    DateTimeStatus Set(DATE dt, DateTimeStatus status) noexcept;
};
