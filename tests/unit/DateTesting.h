#pragma once

/// @file
/// What the tests of dates share: the clock, dates in every state, shown with all that they store.

#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkfw/Clock.h>

#include <ctime>
#include <initializer_list>
#include <string>

#include "../framework/TimeZone.h"
#include "ValueTesting.h"

namespace datetest {

/// While it lives, it is 15 June 2023, 12:34:56, in a zone two hours east of Greenwich.
class NoonIn2023 {
  public:
    NoonIn2023() : m_before(nkfw::setClockSource([]() noexcept { return std::time_t{1686825296}; })) {}
    ~NoonIn2023() { nkfw::setClockSource(m_before); }
    NoonIn2023(const NoonIn2023&) = delete;
    NoonIn2023& operator=(const NoonIn2023&) = delete;

  private:
    frameworktest::TimeZone m_zone{"EAST-2"};
    nkfw::ClockSource m_before;
};
inline constexpr const char* kNow = "15.06.2023 12:34:56";

/// While it lives, the clock cannot be read.
class NoClock {
  public:
    NoClock() : m_before(nkfw::setClockSource([]() noexcept { return std::time_t{-1}; })) {}
    ~NoClock() { nkfw::setClockSource(m_before); }
    NoClock(const NoClock&) = delete;
    NoClock& operator=(const NoClock&) = delete;

  private:
    nkfw::ClockSource m_before;
};

/// The stored fields as an archive has them.
struct Stored {
    INT second = 0;
    INT minute = 0;
    INT hour = 0;
    INT year = 2004;
    INT month = 3;
    INT day = 5;
};

inline valuetest::Bytes archived(BOOL defined, const Stored& fields) {
    return valuetest::written([&](CArchive& archive) {
        archive << static_cast<DWORD>(defined) << fields.second << fields.minute << fields.hour
                << fields.year - 1900 << fields.month - 1 << fields.day;
    });
}

/// A date-time with any fields in any state, not modified.
inline NkDtDateTime loaded(NkDtWorkingMode mode, BOOL defined, const Stored& fields) {
    NkDtDateTime value(NkDtWmNull);
    value.SetWorkingMode(mode);
    valuetest::load(value, archived(defined, fields));
    value.SetModified(FALSE);
    return value;
}

/// A defined date-time, not modified.
inline NkDtDateTime defined(const char* text, NkDtWorkingMode mode = NkDtWmMissing) {
    NkDtDateTime value(NkDtWmNull);
    value.SetWorkingMode(mode);
    value.SetDateTime(text);
    value.SetModified(FALSE);
    return value;
}

/// An undefined date-time that stores a value, not modified.
inline NkDtDateTime undefined(NkDtWorkingMode mode, const Stored& fields = {9, 7, 14, 2004, 3, 5}) {
    return loaded(mode, FALSE, fields);
}

/// The nine fields as they are stored: six, then the days and the daylight flag.
inline std::string allFieldsOf(const NkDtDateTime& value) {
    NkDtDateTime readable(value);
    readable.SetWorkingMode(NkDtWmNull);
    const std::tm fields = readable.GetValue();
    std::string text;
    for (const int field : {fields.tm_year, fields.tm_mon, fields.tm_mday, fields.tm_hour, fields.tm_min,
                            fields.tm_sec, fields.tm_wday, fields.tm_yday, fields.tm_isdst})
        text += (text.empty() ? "" : " ") + std::to_string(field);
    return text;
}

inline std::tm brokenDown(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    std::tm time{};
    time.tm_year = year;
    time.tm_mon = month;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    return time;
}

}  // namespace datetest
