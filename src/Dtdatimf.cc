// NkDtDateTime: its fields, and moving by days, months, years, hours and minutes.

#include <algorithm>
#include <limits>

#include "CalendarSteps.h"
#include "DateTimePart.h"
#include "nkdt/NkDtDateTime.h"

using namespace nkdt;

namespace {

using Fields = DateTimeFields;

constexpr Origin originOf(const char* operation) {
    return {".\\Dtdatimf.cc", "NkDtDateTime", operation};
}

void requireValue(const NkDtDateTime& value, const Origin& origin) {
    if (value.IsMissing()) raise(origin, NkDtErrUndefiniert);
}

/// What a getter tells of a stored number.
SHORT told(LONGLONG number) noexcept {
    return static_cast<SHORT>(number);
}

}  // namespace

// Reading

SHORT NkDtDateTime::GetDay365() const {
    static constexpr Origin origin = originOf("GetDay365()");
    requireValue(*this, origin);
    return IsNull() ? SHORT{0} : told(Stored().tm_mday);
}

SHORT NkDtDateTime::GetMonth() const {
    static constexpr Origin origin = originOf("GetMonth()");
    requireValue(*this, origin);
    return IsNull() ? SHORT{0} : told(Stored().month());
}

SHORT NkDtDateTime::GetYear() const {
    static constexpr Origin origin = originOf("GetYear()");
    requireValue(*this, origin);
    return IsNull() ? SHORT{0} : told(Stored().year());
}

SHORT NkDtDateTime::GetHour() const {
    static constexpr Origin origin = originOf("GetHour()");
    requireValue(*this, origin);
    return told(Stored().tm_hour);
}

SHORT NkDtDateTime::GetMin() const {
    static constexpr Origin origin = originOf("GetMin()");
    requireValue(*this, origin);
    return told(Stored().tm_min);
}

SHORT NkDtDateTime::GetSecond() const {
    static constexpr Origin origin = originOf("GetSecond()");
    requireValue(*this, origin);
    return told(Stored().tm_sec);
}

// Setting: the flag first, so that it stays after a refusal

void NkDtDateTime::SetDay365(SHORT nDay) {
    static constexpr Origin origin = originOf("SetDay365(SHORT)");
    requireValue(*this, origin);
    wrapped(origin, [&] {
        if (nDay != Stored().tm_mday) SetModified(TRUE);
        InPlace().setDay(nDay);
        SetDefined(TRUE);
    });
}

void NkDtDateTime::SetMonth(SHORT nMonth) {
    static constexpr Origin origin = originOf("SetMonth(SHORT)");
    requireValue(*this, origin);
    wrapped(origin, [&] {
        if (nMonth != Stored().month()) SetModified(TRUE);
        InPlace().setMonth(nMonth);
        SetDefined(TRUE);
    });
}

void NkDtDateTime::SetYear(SHORT nYear) {
    static constexpr Origin origin = originOf("SetYear(SHORT)");
    wrapped(origin, [&] { MoveToYear(nYear); });
}

void NkDtDateTime::MoveToYear(LONGLONG year) {
    if (year != Stored().year()) SetModified(TRUE);
    InPlace().setYear(year);
    SetDefined(TRUE);
}

void NkDtDateTime::SetHour(SHORT nHour) {
    static constexpr Origin origin = originOf("SetHour(SHORT)");
    constexpr SHORT midnight = 24;
    wrapped(origin, [&] {
        const SHORT hour = nHour == midnight ? SHORT{0} : nHour;
        SetDefined(TRUE);
        if (hour != Stored().tm_hour) SetModified(TRUE);
        InPlace().setHour(hour);
    });
}

void NkDtDateTime::SetMin(SHORT nMin) {
    static constexpr Origin origin = originOf("SetMin(SHORT)");
    wrapped(origin, [&] {
        SetDefined(TRUE);
        if (nMin != Stored().tm_min) SetModified(TRUE);
        InPlace().setMinute(nMin);
    });
}

void NkDtDateTime::SetSecond(SHORT nSecond) {
    static constexpr Origin origin = originOf("SetSecond(SHORT)");
    wrapped(origin, [&] {
        SetDefined(TRUE);
        if (nSecond != Stored().tm_sec) SetModified(TRUE);
        InPlace().setSecond(nSecond);
    });
}

void NkDtDateTime::WipeTime() {
    InPlace().wipeTime();
}

// Days

namespace {

/// The date of the fields, to be compared later.
class Day {
  public:
    explicit Day(const Fields& fields) noexcept
        : m_year(fields.tm_year), m_month(fields.tm_mon), m_day(fields.tm_mday) {}

    friend bool operator!=(const Day& a, const Day& b) noexcept {
        return ((a.m_year ^ b.m_year) | (a.m_month ^ b.m_month) | (a.m_day ^ b.m_day)) != 0;
    }

  private:
    INT m_year;
    INT m_month;
    INT m_day;
};

}  // namespace

void NkDtDateTime::AddDay365(SHORT nDays) {
    static constexpr Origin origin = originOf("AddDay365(SHORT)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveDays(nDays, true); });
}

void NkDtDateTime::SubDay365(SHORT nDays) {
    static constexpr Origin origin = originOf("SubDay365(SHORT)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveDays(nDays, false); });
}

// By none a date moves too: an impossible day, 32 December say, becomes the next one forward, and stays back.

void NkDtDateTime::MoveDays(LONGLONG days, bool forward) {
    if (days < 0) return MoveDays(-days, !forward);
    Fields& fields = InPlace();
    const Day before(fields);
    if (forward) {
        calendar::addDays(fields, days);
    } else {
        calendar::subtractDays(fields, days);
    }
    SetDefined(TRUE);
    if (!forward) fields.checkYear("SubDay365(SHORT)");
    if (before != Day(fields)) SetModified(TRUE);
}

// Months and years

void NkDtDateTime::AddMonth(SHORT nMonths) {
    static constexpr Origin origin = originOf("AddMonth(SHORT)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveMonths(nMonths, true); });
}

void NkDtDateTime::SubMonth(SHORT nMonths) {
    static constexpr Origin origin = originOf("SubMonth(SHORT)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveMonths(nMonths, false); });
}

void NkDtDateTime::MoveMonths(LONGLONG months, bool forward) {
    if (months < 0) return MoveMonths(-months, !forward);
    if (!forward) return MoveBackByMonths(months);
    Fields& fields = InPlace();
    const Day before(fields);
    LONGLONG month = fields.month() + months;
    if (month > 12) {
        fields.setYear(fields.year() + month / 12);
        month %= 12;
    }
    SetDefined(TRUE);
    // December counts as month 0 of the year behind it, which is refused when the year has moved.
    if (month < 1 && before != Day(fields)) SetModified(TRUE);
    fields.setMonth(month);
    if (before != Day(fields)) SetModified(TRUE);
}

void NkDtDateTime::MoveBackByMonths(LONGLONG months) {
    Fields& fields = InPlace();
    LONGLONG month = fields.month() - months;
    if (month < 1) {
        const LONGLONG years = (12 - month) / 12;
        constexpr LONGLONG lowest = std::numeric_limits<INT>::min();
        fields.tm_year = static_cast<INT>(std::max(fields.tm_year - years, lowest));
        month += years * 12;
        SetModified(TRUE);
    }
    fields.checkYear("SubMonth(SHORT)");
    if (month != fields.month()) SetModified(TRUE);
    fields.setMonth(month);
    SetDefined(TRUE);
}

void NkDtDateTime::AddYear(SHORT nYears) {
    static constexpr Origin origin = originOf("AddYear(SHORT)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveByYears(nYears); });
}

void NkDtDateTime::SubYear(SHORT nYears) {
    static constexpr Origin origin = originOf("SubYear(SHORT)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveByYears(-LONGLONG{nYears}); });
}

void NkDtDateTime::MoveByYears(LONGLONG years) {
    static constexpr Origin origin = originOf("AddYear(SHORT)");
    const LONGLONG year = Stored().year() + years;
    if (year > Fields::lastYear) raise(origin, NkDtErrWertebereich);  // before the flag is raised
    MoveToYear(year);
}

// Hours and minutes

void NkDtDateTime::AddHour(LONG nHours) {
    static constexpr Origin origin = originOf("AddHour(LONG)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveHours(nHours, true); });
}

void NkDtDateTime::SubHour(LONG nHours) {
    static constexpr Origin origin = originOf("SubHour(LONG)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveHours(nHours, false); });
}

void NkDtDateTime::AddMin(LONG nMinutes) {
    static constexpr Origin origin = originOf("AddMin(LONG)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveMinutes(nMinutes, true); });
}

void NkDtDateTime::SubMin(LONG nMinutes) {
    static constexpr Origin origin = originOf("SubMin(LONG)");
    requireValue(*this, origin);
    wrapped(origin, [&] { MoveMinutes(nMinutes, false); });
}

namespace {

/// What a move of a field carries into the next larger one, and what stays.
struct Carried {
    LONGLONG carry;
    LONGLONG rest;
};

/// @param range of the field: 24 or 60
Carried added(LONGLONG field, LONGLONG count, LONGLONG range) noexcept {
    const LONGLONG sum = field + count;
    return sum >= range ? Carried{sum / range, sum % range} : Carried{0, sum};
}

Carried subtracted(LONGLONG field, LONGLONG count, LONGLONG range) noexcept {
    const LONGLONG rest = field - count;
    const LONGLONG borrow = rest < 0 ? (range - 1 - rest) / range : 0;
    return {borrow, rest + borrow * range};
}

}  // namespace

void NkDtDateTime::MoveHours(LONGLONG hours, bool forward) {
    if (hours < 0) return MoveHours(-hours, !forward);
    const INT stored = Stored().tm_hour;
    const auto [days, hour] = forward ? added(stored, hours, 24) : subtracted(stored, hours, 24);
    // The days are cut before the way is chosen: 40,000 of them are 25,536 the other way.
    if (days != 0) MoveDays(static_cast<SHORT>(days), forward);
    StoreField(InPlace().tm_hour, hour);
}

void NkDtDateTime::MoveMinutes(LONGLONG minutes, bool forward) {
    if (minutes < 0) return MoveMinutes(-minutes, !forward);
    const INT stored = Stored().tm_min;
    const auto [hours, minute] = forward ? added(stored, minutes, 60) : subtracted(stored, minutes, 60);
    if (hours != 0) MoveHours(hours, forward);
    StoreField(InPlace().tm_min, minute);
}

void NkDtDateTime::StoreField(INT& rField, LONGLONG number) {
    if (number != rField) {
        rField = static_cast<INT>(number);
        SetModified(TRUE);
    }
    SetDefined(TRUE);
}
