// Dates and date-times written in each of their forms and read back: every day from 1753 to 2399, and random
// moments of all years that the form has room for. What is written is held against texts that the test puts
// together itself, so that no two errors make up for each other.

#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtString.h>
#include <nkfw/Calendar.h>
#include <nkfw/OleDateTime.h>
#include <nkfw/Recordset.h>

#include <algorithm>
#include <ctime>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "ValueTesting.h"
#include "framework/TimeZone.h"
#include "support/Instruments.h"

namespace {

using namespace valuetest;

// --- Moments --------------------------------------------------------------------------------------

struct Moment {
    int year, month, day, hour, minute, second;

    friend bool operator==(const Moment&, const Moment&) = default;
    bool isMidnight() const { return hour == 0 && minute == 0 && second == 0; }
    Moment midnight() const { return {year, month, day, 0, 0, 0}; }
    Moment withoutSeconds() const { return {year, month, day, hour, minute, 0}; }
};

/// The pattern with its runs of Y, M, D, h, m and s replaced by the numbers, filled with zeros to the length
/// of the run; a "_" in front of a run counts with it and fills with blanks.
std::string text(std::string_view pattern, const Moment& m) {
    std::string result;
    while (!pattern.empty()) {
        const char fill = pattern.front() == '_' ? ' ' : '0';
        const char letter = pattern[fill == ' ' ? 1 : 0];
        const std::size_t length = std::min(pattern.find_first_not_of(letter, 1), pattern.size());
        const std::size_t field = std::string_view("YMDhms").find(letter);
        if (field == std::string_view::npos) {
            result += pattern.substr(0, length);
        } else {
            const int numbers[] = {m.year, m.month, m.day, m.hour, m.minute, m.second};
            const std::string number = std::to_string(numbers[field]);
            result.append(length - std::min(length, number.size()), fill) += number;
        }
        pattern.remove_prefix(length);
    }
    return result;
}

void PrintTo(const Moment& m, std::ostream* out) {
    *out << text("DD.MM.YYYY hh:mm:ss", m);
}

Moment momentOf(const NkDtDateTime& value) {
    const struct tm time = value.GetValue();
    return {time.tm_year + 1900, time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec};
}

NkDtDateTime valueOf(const Moment& m) {
    return NkDtDateTime(m.day, m.month, m.year, m.hour, m.minute, m.second);
}

NkDtDateZp dateOf(const Moment& m) {
    return NkDtDateZp(m.day, m.month, m.year);
}

/// Every day at midnight and at a time of day that changes with it; then random moments.
template <class Visit>
void forMoments(int lastYear, Visit&& visit) {
    const int step = nktest::isUnderValgrind() ? 997 : nktest::kSanitized ? 7 : 1;
    const auto last = nkfw::dayNumber(2399, 12, 31);
    for (auto day = nkfw::dayNumber(1753, 1, 1); day <= last; day += step) {
        const auto [year, month, dayOfMonth] = nkfw::dateOf(day);
        visit(Moment{year, month, dayOfMonth, 0, 0, 0});
        const int second = static_cast<int>((day + 100'000) * 7919 % 86'400);
        visit(Moment{year, month, dayOfMonth, second / 3600, second / 60 % 60, second % 60});
        if (::testing::Test::HasFailure()) return;
    }
    std::mt19937 random(17530101);
    const auto any = [&](int first, int most) {
        return std::uniform_int_distribution<int>(first, most)(random);
    };
    for (int i = 0; i < 50'000 / step && !::testing::Test::HasFailure(); ++i) {
        const int year = any(1753, lastYear);
        const int month = any(1, 12);
        visit(
            Moment{year, month, any(1, nkfw::daysInMonth(year, month)), any(0, 23), any(0, 59), any(0, 59)});
    }
}

constexpr int kLastYear = 32767;
constexpr int kLastYearOfFourDigits = 9999;

/// The value is defined and at that moment. Comparisons are many: the test library sees only failing ones.
void expectAt(const NkDtDateTime& value, const Moment& wanted, const char* operation) {
    if (value.IsDefined() && momentOf(value) == wanted) return;
    ADD_FAILURE() << operation << ": " << stateOf(value) << " at "
                  << ::testing::PrintToString(momentOf(value)) << " instead of "
                  << ::testing::PrintToString(wanted);
}

void expectText(const NkDtString& found, const std::string& wanted) {
    if (found.IsDefined() && static_cast<LPCTSTR>(found) == wanted) return;
    ADD_FAILURE() << describe(found) << " instead of " << wanted;
}

/// What the value is read into: another moment.
const Moment kOther = {1999, 1, 31, 7, 8, 9};

// --- The forms ------------------------------------------------------------------------------------

TEST(DateRoundTrip, FieldsAndBrokenDownTimes) {
    forMoments(kLastYear, [](const Moment& m) {
        const NkDtDateTime value = valueOf(m);
        expectAt(value, m, "fields");
        struct tm time = value;
        time.tm_year += 1900;  // from 1000 on it is the year itself
        expectAt(NkDtDateTime(&time), m, "broken-down time");
        expectAt(NkDtDateZp(&time), m.midnight(), "broken-down time of a date");
        expectAt(NkDtDateZp(value), m.midnight(), "date of a date-time");
        expectAt(dateOf(m), m.midnight(), "date");

        NkDtDateTime changed = valueOf(kOther);
        changed.SetYear(m.year);
        changed.SetDay365(1);
        changed.SetMonth(m.month);
        changed.SetDay365(m.day);
        changed.SetHour(m.hour);
        changed.SetMin(m.minute);
        changed.SetSecond(m.second);
        expectAt(changed, m, "setters");
    });
}

TEST(DateRoundTrip, LocalTimes) {
    const frameworktest::TimeZone summerTime("EAST-1SUMMER,M3.5.0,M10.5.0/3");
    forMoments(kLastYearOfFourDigits, [](const Moment& m) {
        struct tm time {};
        time.tm_year = m.year - 1900;
        time.tm_mon = m.month - 1;
        time.tm_mday = m.day;
        time.tm_hour = 12;  // the clock is changed at night
        time.tm_isdst = -1;
        const Moment noon = {m.year, m.month, m.day, 12, 0, 0};
        const time_t seconds = std::mktime(&time);
        expectAt(NkDtDateTime(seconds), noon, "time_t");
        expectAt(NkDtDateZp(seconds), m.midnight(), "time_t of a date");
    });
}

TEST(DateRoundTrip, Texts) {
    forMoments(kLastYearOfFourDigits, [](const Moment& m) {
        const std::string full = text("DD.MM.YYYY hh:mm:ss", m);
        const NkDtDateTime value = valueOf(m);
        expectText(NkDtString(value), full);
        expectAt(NkDtDateTime(full.c_str()), m, "text");
        expectAt(NkDtDateTime(NkDtString(value)), m, "text value");
        NkDtDateTime set = valueOf(kOther);
        set.SetDateTime(full.c_str());
        expectAt(set, m, "SetDateTime");

        const std::string date = full.substr(0, 10);
        expectText(NkDtString(dateOf(m)), date);
        expectText(value.MakeFormatString(1102), date);
        expectText(value.MakeFormatString(1100), text("DDMMYYYY", m));
        expectAt(NkDtDateTime(date.c_str(), NkDtDateTime::DateOnly), m.midnight(), "text of a date");
        expectAt(NkDtDateZp(NkDtString(dateOf(m))), m.midnight(), "text value of a date");
        set = valueOf(kOther);
        set.SetDate(date.c_str());
        expectAt(set, {m.year, m.month, m.day, kOther.hour, kOther.minute, kOther.second}, "SetDate");
        set.SetTime(full.c_str() + 11);
        expectAt(set, m, "SetTime");
    });
}

TEST(DateRoundTrip, ShortTexts) {
    forMoments(kLastYearOfFourDigits, [](const Moment& m) {
        const std::string date = text("D.M.YYYY", m);
        NkDtDateTime value = valueOf(kOther);
        value.SetDateTime((date + " " + text("_h:mm:ss", m)).c_str());
        expectAt(value, m, "SetDateTime of a short date");
        expectAt(NkDtDateZp(date.c_str()), m.midnight(), "short date");
    });
}

TEST(DateRoundTrip, UserInterfaceTexts) {
    forMoments(kLastYearOfFourDigits, [](const Moment& m) {
        const CString shown = valueOf(m).ConvToOFL();
        NkDtDateTime value = valueOf(kOther);
        value.SetFromOFL(shown);
        expectAt(value, m, shown);
        const CString shownDate = dateOf(m).ConvToOFL();
        if (shownDate != text("DD.MM.YYYY", m).c_str()) ADD_FAILURE() << shownDate;
        NkDtDateZp date = dateOf(kOther);
        date.SetFromOFL(shown);
        expectAt(date, m.midnight(), "shown text as a date");
    });
}

TEST(DateRoundTrip, SqlLiterals) {
    forMoments(kLastYearOfFourDigits, [](const Moment& m) {
        const NkDtDateTime value = valueOf(m);
        const std::string literal = text("'DD.MM.YYYY hh:mm'", m);
        expectText(value.ConvToSQL(), literal);
        expectText(value.ConvToSQL(NkDtDateTime::SqlMonthFirst), text("'MM.DD.YYYY hh:mm'", m));
        NkDtDateTime read = valueOf(kOther);
        read.SetDateTime(literal.substr(1, literal.size() - 2).c_str());
        expectAt(read, m.withoutSeconds(), "SQL literal");
    });
}

// A database tells the hour by a clock of twelve, and the month by its name.
TEST(DateRoundTrip, SqlTexts) {
    const std::string names[][12] = {
        {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"},
        {"Jan", "Feb", cp1252("Mär"), "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"}};
    forMoments(kLastYearOfFourDigits, [&](const Moment& m) {
        Moment shown = m;
        shown.hour = m.hour % 12 == 0 ? 12 : m.hour % 12;
        for (const auto& name : names) {
            const std::string told =
                name[m.month - 1] + text(" _D YYYY hh:mm", shown) + (m.hour < 12 ? "AM" : "PM");
            NkDtDateTime value = valueOf(kOther);
            value.SetFromSQL(told.c_str());
            expectAt(value, m.withoutSeconds(), told.c_str());
        }
    });
}

TEST(DateRoundTrip, ExternalTexts) {
    forMoments(kLastYearOfFourDigits, [](const Moment& m) {
        BOOL defined = FALSE;
        USHORT version = 0;
        const NkDtString external = valueOf(m).ConvToExtern(defined, version);
        expectText(external, m.isMidnight() ? "D" + text("DDMMYYYY", m) : "C" + text("DDMMYYYYhhmmss", m));
        NkDtDateTime value = valueOf(kOther);
        value.SetFromExtern(&external, defined, version);
        expectAt(value, m, "external text");

        const NkDtString ofDate = dateOf(m).ConvToExtern(defined, version);
        expectText(ofDate, "D" + text("DDMMYYYY", m));
        NkDtDateZp date(NkDtWmNull);
        date.SetFromExtern(&ofDate, defined, version);
        expectAt(date, m.midnight(), "external text of a date");
    });
}

TEST(DateRoundTrip, Fields) {
    forMoments(kLastYear, [](const Moment& m) {
        CRecordset rs;
        TIMESTAMP_STRUCT field{};
        valueOf(m).ConvToRecordSet(rs, field);
        const Moment written = {field.year, field.month, field.day, field.hour, field.minute, field.second};
        if (written != m || rs.IsFieldNull(&field)) ADD_FAILURE() << ::testing::PrintToString(written);
        NkDtDateTime value = valueOf(kOther);
        value.SetFromRecordSet(rs, field);
        expectAt(value, m, "field");
        NkDtDateZp date(NkDtWmNull);
        date.SetFromRecordSet(rs, field);
        expectAt(date, m, "field of a date");
    });
}

TEST(DateRoundTrip, Archives) {
    forMoments(kLastYear, [](const Moment& m) {
        NkDtDateTime value = valueOf(m);
        NkDtDateTime loaded(NkDtWmNull);
        load(loaded, stored(value));
        expectAt(loaded, m, "archive");
        NkDtDateZp date(value);
        NkDtDateZp loadedDate(NkDtWmNull);
        load(loadedDate, stored(date));
        expectAt(loadedDate, m.midnight(), "archive of a date");
    });
}

TEST(DateRoundTrip, AutomationDates) {
    forMoments(kLastYearOfFourDigits, [](const Moment& m) {
        const COleDateTime ole = valueOf(m);
        const Moment told = {ole.GetYear(), ole.GetMonth(),  ole.GetDay(),
                             ole.GetHour(), ole.GetMinute(), ole.GetSecond()};
        if (told != m) ADD_FAILURE() << ::testing::PrintToString(told);
        expectAt(NkDtDateTime(ole), m, "automation date");
        NkDtDateTime value = valueOf(kOther);
        value = ole;
        expectAt(value, m, "assigned automation date");
        NkDtDateZp date = dateOf(kOther);
        date = ole;
        expectAt(date, m.midnight(), "automation date as a date");
    });
}

}  // namespace
