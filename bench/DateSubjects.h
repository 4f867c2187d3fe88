#pragma once

/// @file
/// Dates with a time of day that are compared: our class and its bare record, a limit that does the least
/// possible work on six numbers, and peers. Each subject keeps its date in the form that is its own.

#include <array>
#include <cstdlib>
#include <string>
#include <tuple>

#include "CalendarSteps.h"
#include "Imp/dtdatimi.h"
#include "nkdt/NkDtDateTime.h"
#include "nkfw/Calendar.h"

#ifdef NK_PEER_DATE_DATE
#include <date/date.h>

#include <sstream>
#endif
#ifdef NK_PEER_ABSL_TIME
#include <absl/time/civil_time.h>
#include <absl/time/time.h>
#endif
#ifdef NK_PEER_QT6_CORE
#include <QDateTime>
#endif
#ifdef NK_PEER_BOOST_HEADERS
#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time.hpp>
#endif

namespace bench {

/// Year, month, day, hour, minute, second.
using Parts = std::array<int, 6>;

struct Value {
    static constexpr const char* name = "NkDtDateTime";
    using Date = NkDtDateTime;
    static Date make(const Parts& p) { return Date(p[2], p[1], p[0], p[3], p[4], p[5]); }
    static void parse(Date& date, const std::string& text) { date.SetDateTime(text.c_str()); }
    static NkDtString write(const Date& date) { return NkDtString(date); }
    static void addDays(Date& date, int days) { date.AddDay365(static_cast<SHORT>(days)); }
    static void addMonths(Date& date, int months) { date.AddMonth(static_cast<SHORT>(months)); }
    static bool less(const Date& a, const Date& b) { return a < b; }
};

/// A count of months from a January on, less than twelve in front of it, as years and a month from 0 on.
struct Months {
    explicit Months(int count) : years((count + 12) / 12 - 1), month((count + 12) % 12) {}
    int years;
    int month;
};

/// What the value keeps, without its state and its flags.
struct Record {
    static constexpr const char* name = "record";
    using Imp = NkDtDateTime_Imp;
    using Date = nkdt::DateTimeFields;
    struct Text {
        Imp::Text buffer;
    };
    static Date make(const Parts& p) {
        Date date;
        date.setDate(p[2], p[1], p[0]);
        date.setTime(p[3], p[4], p[5]);
        return date;
    }
    static void parse(Date& date, const std::string& text) { Imp::parseDateAndTime(date, text); }
    static Text write(const Date& date) {
        Text text;
        static_cast<void>(Imp::text(date, Imp::dateAndTime, text.buffer));
        return text;
    }
    static void addDays(Date& date, int days) {
        if (days >= 0) {
            nkdt::calendar::addDays(date, days);
        } else {
            nkdt::calendar::subtractDays(date, -days);
        }
    }
    static void addMonths(Date& date, int months) {
        const Months sum(date.tm_mon + months);
        if (sum.years != 0) date.setYear(date.year() + sum.years);
        date.setMonth(sum.month + 1);
    }
    static bool less(const Date& a, const Date& b) { return a < b; }
};

/// Six numbers. Reading checks each of them, one character after the other.
struct Limit {
    static constexpr const char* name = "limit";
    struct Date {
        int year, month, day, hour, minute, second;
    };
    using Text = std::array<char, 20>;

    static Date make(const Parts& p) { return {p[0], p[1], p[2], p[3], p[4], p[5]}; }
    static void parse(Date& date, const std::string& text) {
        static constexpr char pattern[] = "dd.dd.dddd dd:dd:dd";
        const char* p = text.c_str();
        std::array<int, 6> number{};
        std::size_t at = 0;
        for (const char* place = pattern; *place != '\0'; ++place, ++p) {
            if (*place != 'd') {
                if (*p != *place) std::abort();
                ++at;
            } else {
                if (*p < '0' || *p > '9') std::abort();
                number[at] = number[at] * 10 + (*p - '0');
            }
        }
        if (*p != '\0' || number[2] < 1753 || number[1] < 1 || number[1] > 12 || number[0] < 1 ||
            number[0] > nkfw::daysInMonth(number[2], number[1]) || number[3] > 23 || number[4] > 59 ||
            number[5] > 59) {
            std::abort();
        }
        date = {number[2], number[1], number[0], number[3], number[4], number[5]};
    }
    static Text write(const Date& date) {
        Text text;
        char* out = text.data();
        const auto put = [&out](int number, char behind) {
            *out++ = static_cast<char>('0' + number / 10);
            *out++ = static_cast<char>('0' + number % 10);
            if (behind != '\0') *out++ = behind;
        };
        put(date.day, '.');
        put(date.month, '.');
        put(date.year / 100, '\0');
        put(date.year % 100, ' ');
        put(date.hour, ':');
        put(date.minute, ':');
        put(date.second, '\0');
        *out = '\0';
        return text;
    }
    static void addDays(Date& date, int days) {
        const nkfw::CalendarDate result =
            nkfw::dateOf(nkfw::dayNumber(date.year, date.month, date.day) + days);
        date.year = result.year;
        date.month = result.month;
        date.day = result.day;
    }
    static void addMonths(Date& date, int months) {
        const Months sum(date.month - 1 + months);
        date.year += sum.years;
        date.month = sum.month + 1;
        const int last = nkfw::daysInMonth(date.year, date.month);
        if (date.day > last) date.day = last;
    }
    static bool less(const Date& a, const Date& b) {
        return std::tie(a.year, a.month, a.day, a.hour, a.minute, a.second) <
               std::tie(b.year, b.month, b.day, b.hour, b.minute, b.second);
    }
};

#ifdef NK_PEER_DATE_DATE
/// Howard Hinnant's calendar.
struct Hinnant {
    static constexpr const char* name = "Hinnant";
    struct Date {
        date::year_month_day day;
        std::chrono::seconds time;
    };
    static Date make(const Parts& p) {
        return {date::year(p[0]) / p[1] / p[2],
                std::chrono::hours(p[3]) + std::chrono::minutes(p[4]) + std::chrono::seconds(p[5])};
    }
    static void parse(Date& date, const std::string& text) {
        std::istringstream in(text);
        date::sys_seconds point;
        in >> date::parse("%d.%m.%Y %H:%M:%S", point);
        if (in.fail()) std::abort();
        const date::sys_days day = date::floor<date::days>(point);
        date = {day, point - day};
    }
    static std::string write(const Date& date) {
        return date::format("%d.%m.%Y %H:%M:%S", date::sys_days(date.day) + date.time);
    }
    static void addDays(Date& date, int days) { date.day = date::sys_days(date.day) + date::days(days); }
    static void addMonths(Date& date, int months) {
        date.day += date::months(months);
        if (!date.day.ok()) date.day = date.day.year() / date.day.month() / date::last;
    }
    static bool less(const Date& a, const Date& b) {
        return std::tie(a.day, a.time) < std::tie(b.day, b.time);
    }
};
#endif

#ifdef NK_PEER_ABSL_TIME
struct Abseil {
    static constexpr const char* name = "CivilSecond";
    using Date = absl::CivilSecond;
    static Date make(const Parts& p) { return Date(p[0], p[1], p[2], p[3], p[4], p[5]); }
    static void parse(Date& date, const std::string& text) {
        absl::Time time;
        if (!absl::ParseTime("%d.%m.%Y %H:%M:%S", text, &time, nullptr)) std::abort();
        date = absl::ToCivilSecond(time, absl::UTCTimeZone());
    }
    static std::string write(const Date& date) {
        return absl::FormatTime("%d.%m.%Y %H:%M:%S", absl::FromCivil(date, absl::UTCTimeZone()),
                                absl::UTCTimeZone());
    }
    static void addDays(Date& date, int days) {
        date = Date(date.year(), date.month(), date.day() + days, date.hour(), date.minute(), date.second());
    }
    static void addMonths(Date& date, int months) {
        const absl::CivilMonth month = absl::CivilMonth(date) + months;
        const int last = (absl::CivilDay(month + 1) - 1).day();
        date = Date(month.year(), month.month(), date.day() < last ? date.day() : last, date.hour(),
                    date.minute(), date.second());
    }
    static bool less(const Date& a, const Date& b) { return a < b; }
};
#endif

#ifdef NK_PEER_QT6_CORE
struct Qt {
    static constexpr const char* name = "QDateTime";
    using Date = QDateTime;
    static Date make(const Parts& p) {
        return QDateTime(QDate(p[0], p[1], p[2]), QTime(p[3], p[4], p[5]), ::Qt::UTC);
    }
    static void parse(Date& date, const std::string& text) {
        date = QDateTime::fromString(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())),
                                     QStringLiteral("dd.MM.yyyy HH:mm:ss"));
        if (!date.isValid()) std::abort();
    }
    static QString write(const Date& date) { return date.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")); }
    static void addDays(Date& date, int days) { date = date.addDays(days); }
    static void addMonths(Date& date, int months) { date = date.addMonths(months); }
    static bool less(const Date& a, const Date& b) { return a < b; }
};
#endif

#ifdef NK_PEER_BOOST_HEADERS
struct Boost {
    static constexpr const char* name = "boost_ptime";
    using Date = boost::posix_time::ptime;
    static Date make(const Parts& p) {
        return Date(
            boost::gregorian::date(static_cast<unsigned short>(p[0]), static_cast<unsigned short>(p[1]),
                                   static_cast<unsigned short>(p[2])),
            boost::posix_time::time_duration(p[3], p[4], p[5]));
    }
    static void parse(Date& date, const std::string& text) {
        static thread_local std::istringstream in = [] {
            std::istringstream stream;
            stream.imbue(std::locale(std::locale::classic(),
                                     new boost::posix_time::time_input_facet("%d.%m.%Y %H:%M:%S")));
            return stream;
        }();
        in.clear();
        in.str(text);
        in >> date;
        if (in.fail() || date.is_special()) std::abort();
    }
    static std::string write(const Date& date) {
        static thread_local std::ostringstream out = [] {
            std::ostringstream stream;
            stream.imbue(
                std::locale(std::locale::classic(), new boost::posix_time::time_facet("%d.%m.%Y %H:%M:%S")));
            return stream;
        }();
        out.str({});
        out << date;
        return out.str();
    }
    static void addDays(Date& date, int days) { date += boost::gregorian::days(days); }
    static void addMonths(Date& date, int months) { date += boost::gregorian::months(months); }
    static bool less(const Date& a, const Date& b) { return a < b; }
};
#endif

}  // namespace bench
