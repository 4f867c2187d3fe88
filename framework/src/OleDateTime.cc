#include "nkfw/OleDateTime.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "nkfw/Calendar.h"
#include "nkfw/Clock.h"

namespace {

constexpr int firstYear = 100;
constexpr int lastYear = 9999;
constexpr std::int64_t dayZero = nkfw::dayNumber(1899, 12, 30);
constexpr int firstDay = static_cast<int>(nkfw::dayNumber(firstYear, 1, 1) - dayZero);
constexpr int lastDay = static_cast<int>(nkfw::dayNumber(lastYear, 12, 31) - dayZero);
constexpr int secondsOfDay = 24 * 60 * 60;

/// A count taken apart without a loss: whole days, and the fraction of a day that counts forward from there.
struct Count {
    double days;
    double fraction;
};

Count countOf(DATE dt) noexcept {
    Count count;
    count.fraction = std::fabs(std::modf(dt, &count.days));
    return count;
}

/// A count rounded to the second.
struct Moment {
    int day;     ///< since 30 December 1899
    int second;  ///< of the day
};

/// @return false beyond the range
bool roundToMoment(DATE dt, Moment& moment) noexcept {
    // What is no number fails too, so the days fit an int.
    if (!(dt > firstDay - 1 && dt < lastDay + 1)) return false;
    const Count count = countOf(dt);
    moment = {static_cast<int>(count.days), static_cast<int>(std::lround(count.fraction * secondsOfDay))};
    if (moment.second == secondsOfDay) moment = {moment.day + 1, 0};
    return moment.day <= lastDay;
}

DATE countOf(const Moment& moment) noexcept {
    const double fraction = static_cast<double>(moment.second) / secondsOfDay;
    return moment.day < 0 ? moment.day - fraction : moment.day + fraction;
}

constexpr bool isTimeOfDay(int hour, int minute, int second) noexcept {
    return hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
}

/// The point in time of a date whose fields can be read.
bool readMoment(const COleDateTime& dateTime, Moment& moment) noexcept {
    return dateTime.GetStatus() == COleDateTime::valid && roundToMoment(dateTime.m_dt, moment);
}

constexpr int noField = -1;

nkfw::CalendarDate dateFields(const COleDateTime& dateTime) noexcept {
    Moment moment;
    if (!readMoment(dateTime, moment)) return {noField, noField, noField};
    return nkfw::dateOf(dayZero + moment.day);
}

/// The part of the time of day that is left when it is counted in units and full rounds are taken off.
int timeField(const COleDateTime& dateTime, int secondsOfUnit, int unitsOfRound) noexcept {
    Moment moment;
    if (!readMoment(dateTime, moment)) return noField;
    return moment.second / secondsOfUnit % unitsOfRound;
}

/// The seconds of the value classes end at 59.
constexpr int withoutLeapSecond(int second) noexcept {
    return std::min(second, 59);
}

}  // namespace

// ---- Making ----

COleDateTime::COleDateTime(DATE dt) noexcept {
    Moment moment;
    if (roundToMoment(dt, moment)) {
        Set(dt, valid);
    } else {
        Set(0, invalid);
    }
}

COleDateTime::COleDateTime(std::time_t timeSrc) noexcept {
    constexpr int yearZero = 1900;  // of tm_year
    std::tm local;
    if (!nkfw::localFields(timeSrc, local) || local.tm_year > lastYear - yearZero) {
        Set(0, invalid);
        return;
    }
    SetDateTime(local.tm_year + yearZero, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                withoutLeapSecond(local.tm_sec));
}

COleDateTime COleDateTime::GetCurrentTime() noexcept {
    COleDateTime result;
    nkfw::LocalTime now;
    if (nkfw::readLocalTime(now)) {
        result.SetDateTime(now.year, now.month, now.day, now.hour, now.minute, withoutLeapSecond(now.second));
    } else {
        result.Set(0, invalid);
    }
    return result;
}

COleDateTime::DateTimeStatus COleDateTime::SetDateTime(int nYear, int nMonth, int nDay, int nHour, int nMin,
                                                       int nSec) noexcept {
    const bool inRange = nYear >= firstYear && nYear <= lastYear;
    if (!inRange || !nkfw::isDate(nYear, nMonth, nDay) || !isTimeOfDay(nHour, nMin, nSec)) {
        return Set(0, invalid);
    }
    const auto day = static_cast<int>(nkfw::dayNumber(nYear, nMonth, nDay) - dayZero);
    return Set(countOf(Moment{day, (nHour * 60 + nMin) * 60 + nSec}), valid);
}

COleDateTime::DateTimeStatus COleDateTime::SetDate(int nYear, int nMonth, int nDay) noexcept {
    return SetDateTime(nYear, nMonth, nDay, 0, 0, 0);
}

COleDateTime::DateTimeStatus COleDateTime::SetTime(int nHour, int nMin, int nSec) noexcept {
    return SetDateTime(1899, 12, 30, nHour, nMin, nSec);
}

COleDateTime::DateTimeStatus COleDateTime::Set(DATE dt, DateTimeStatus status) noexcept {
    m_dt = dt;
    m_status = status;
    return status;
}

// ---- Fields ----

int COleDateTime::GetYear() const noexcept {
    return dateFields(*this).year;
}

int COleDateTime::GetMonth() const noexcept {
    return dateFields(*this).month;
}

int COleDateTime::GetDay() const noexcept {
    return dateFields(*this).day;
}

int COleDateTime::GetHour() const noexcept {
    return timeField(*this, 60 * 60, 24);
}

int COleDateTime::GetMinute() const noexcept {
    return timeField(*this, 60, 60);
}

int COleDateTime::GetSecond() const noexcept {
    return timeField(*this, 1, 60);
}

int COleDateTime::GetDayOfWeek() const noexcept {
    Moment moment;
    if (!readMoment(*this, moment)) return noField;
    constexpr int daysOfWeek = 7;
    // Counted from the first day of the range, so that nothing is negative; day 0 is a Saturday.
    constexpr int firstWeekday = (daysOfWeek - 1 + firstDay % daysOfWeek + daysOfWeek) % daysOfWeek;
    return (moment.day - firstDay + firstWeekday) % daysOfWeek + 1;
}

int COleDateTime::GetDayOfYear() const noexcept {
    Moment moment;
    if (!readMoment(*this, moment)) return noField;
    const std::int64_t day = dayZero + moment.day;
    return static_cast<int>(day - nkfw::dayNumber(nkfw::dateOf(day).year, 1, 1)) + 1;
}

// ---- Comparison ----

bool COleDateTime::IsAt(const COleDateTime& other) const noexcept {
    const Count here = countOf(m_dt);
    const Count there = countOf(other.m_dt);
    return here.days == there.days && here.fraction == there.fraction;
}

bool COleDateTime::IsBefore(const COleDateTime& other) const noexcept {
    const Count here = countOf(m_dt);
    const Count there = countOf(other.m_dt);
    return here.days < there.days || (here.days == there.days && here.fraction < there.fraction);
}
