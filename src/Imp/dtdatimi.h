#pragma once

/// @file
/// The value record of NkDtDateTime: nine numbers, the checked setters of six of them, and the texts that
/// they are read from.

#include <compare>
#include <ctime>
#include <string_view>

#include "nkfw/Types.h"

namespace nkdt {

/// A broken-down time in the order of `struct tm`. Equal are those whose six fields from the second to the
/// year are.
///
/// A setter checks its number and raises its error, final; all but the year's leave their field alone then.
struct DateTimeFields {
    INT tm_sec = 0;
    INT tm_min = 0;
    INT tm_hour = 0;
    INT tm_mday = 1;
    INT tm_mon = 0;   // January is 0
    INT tm_year = 0;  // less 1900
    INT tm_wday = 0;
    INT tm_yday = 0;
    INT tm_isdst = -1;

    static constexpr INT firstYear = 1753;
    static constexpr INT lastYear = 32767;
    static constexpr INT yearBase = 1900;

    constexpr LONGLONG year() const noexcept { return LONGLONG{tm_year} + yearBase; }
    /// 1 to 12, if the month is one.
    constexpr LONGLONG month() const noexcept { return LONGLONG{tm_mon} + 1; }
    bool isLeapYear() const noexcept;

    /// Error 25 unless the current month has that day; error 26 when the current month is none.
    void setDay(LONGLONG day);
    /// Error 26. Lowers the day to the month's last one.
    void setMonth(LONGLONG month);
    /// A year up to 99 is one of the current century. Error 8 above 32767; error 27 below 1753, which is
    /// stored nevertheless. 29 February becomes the 28th in a common year.
    void setYear(LONGLONG year);
    void setHour(LONGLONG hour);      ///< error 28
    void setMinute(LONGLONG minute);  ///< error 29
    void setSecond(LONGLONG second);  ///< error 30
    /// Sets the year, then the month, then the day.
    void setDate(LONGLONG day, LONGLONG month, LONGLONG year);
    /// Sets the hour, then the minute, then the second.
    void setTime(LONGLONG hour, LONGLONG minute, LONGLONG second);
    void wipeTime() noexcept { tm_hour = tm_min = tm_sec = 0; }

    /// Error 27 for a year below 1753, with the signature of the operation that asks.
    void checkYear(const char* operation) const;
    /// Whether the month is one: an archive can hold another.
    constexpr bool hasMonth() const noexcept { return tm_mon >= 0 && tm_mon <= 11; }
    /// Error 26 unless it is.
    void requireMonth() const;

    friend bool operator==(const DateTimeFields& a, const DateTimeFields& b) noexcept {
        return ((a.tm_sec ^ b.tm_sec) | (a.tm_min ^ b.tm_min) | (a.tm_hour ^ b.tm_hour) |
                (a.tm_mday ^ b.tm_mday) | (a.tm_mon ^ b.tm_mon) | (a.tm_year ^ b.tm_year)) == 0;
    }
    friend bool operator!=(const DateTimeFields& a, const DateTimeFields& b) noexcept { return !(a == b); }
    /// By the six fields, the year first.
    friend std::strong_ordering operator<=>(const DateTimeFields& a, const DateTimeFields& b) noexcept {
        const auto order = [](INT high, INT low, INT otherHigh, INT otherLow) {
            return pair(high, low) <=> pair(otherHigh, otherLow);
        };
        if (const auto date = order(a.tm_year, a.tm_mon, b.tm_year, b.tm_mon); date != 0) return date;
        if (const auto day = order(a.tm_mday, a.tm_hour, b.tm_mday, b.tm_hour); day != 0) return day;
        return order(a.tm_min, a.tm_sec, b.tm_min, b.tm_sec);
    }

  private:
    /// Two fields as one number, which is in order like them.
    static constexpr LONGLONG pair(INT high, INT low) noexcept {
        constexpr LONGLONG range = LONGLONG{1} << 32;
        constexpr LONGLONG lowest = -(LONGLONG{1} << 31);
        return high * range + (low - lowest);  // within 64 bits for every two fields
    }
};

}  // namespace nkdt

class NkDtDateTime_Imp {
  public:
    using Fields = nkdt::DateTimeFields;

    NkDtDateTime_Imp() noexcept = default;
    explicit NkDtDateTime_Imp(const Fields& fields) noexcept : value(fields) {}

    /// The nine fields as they are.
    static Fields unchecked(const struct tm& time) noexcept;
    static struct tm toTm(const Fields& fields) noexcept;
    /// The current local date and time. Error 5 when the clock cannot be read.
    static Fields now();
    /// The local time of @p t with all nine fields. Error 5 when there is none, errors 8 and 27 for its year.
    static Fields of(std::time_t t);
    /// The six fields of a broken-down time, checked; a year from 1000 on is the year itself. Error 5 for
    /// null.
    static Fields of(const struct tm* time);

    /// @name From text
    /// Error 5 "Ungültiger Initialwert" for a text in another form; the errors of the fields. Each field is
    /// set before the next one is looked at. All errors are seen as error 1.
    /// @{

    /// Reads "TT.MM.JJJJ", days and months of one digit too, years of two.
    static void parseDate(Fields& fields, std::string_view text);
    /// Reads "HH:MM", with ":SS" in a text of 8 characters; the hour may begin with a blank.
    static void parseTime(Fields& fields, std::string_view text);
    /// Reads a date and the time of day behind it: behind "TT.MM.JJJJ ", or behind the blanks of a shorter
    /// date. 00:00:00 when there is none: the text has no more than 11 characters, and the blank of a shorter
    /// date no ":" behind it.
    static void parseDateAndTime(Fields& fields, std::string_view text);
    /// @}

    /// Reads "Mär  5 2004 02:07PM" at fixed places. Error 5; the errors of the fields.
    static void setFromSql(Fields& fields, std::string_view text);
    /// Reads an external text. Error 18 "Ungültige Externe Darstellung" for one that does not fill its
    /// fields, before any is set; the errors of the fields.
    static void setFromExtern(Fields& fields, std::string_view text);

    /// @name To text
    /// In a buffer of the caller that holds any fields. There is no NUL at the end.
    /// @{

    using Text = char[96];
    /// The forms; every other number is date and time of day to the second.
    static constexpr USHORT sqlDayFirst = 0;
    static constexpr USHORT sqlMonthFirst = 1;
    static constexpr USHORT dateDigits = 1100;
    static constexpr USHORT dateAndTime = 1101;
    static constexpr USHORT date = 1102;

    static std::string_view text(const Fields& fields, USHORT form, Text& buffer) noexcept;
    static std::string_view externText(const Fields& fields, Text& buffer) noexcept;
    /// @}

    Fields value;
};
