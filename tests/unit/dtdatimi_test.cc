// The value record of date-times: its checked setters, the texts that it reads, the texts that it writes.

#include <ctime>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "DateTesting.h"
#include "Imp/dtdatimi.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using datetest::NoClock;
using datetest::NoonIn2023;
using Imp = NkDtDateTime_Imp;
using Fields = nkdt::DateTimeFields;

Fields fieldsOf(INT day, INT month, INT year, INT hour = 0, INT minute = 0, INT second = 0) {
    Fields fields;
    fields.tm_mday = day;
    fields.tm_mon = month - 1;
    fields.tm_year = year - 1900;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    return fields;
}

std::string show(const Fields& fields) {
    Imp::Text buffer;
    return std::string(Imp::text(fields, Imp::dateAndTime, buffer));
}

/// The fields after a change, and the number of the error that it raised.
template <class Change>
std::string after(Fields fields, Change&& change) {
    const ErrorPtr error = errorOf([&] { change(fields); });
    return show(fields) + (error == nullptr ? "" : " error " + std::to_string(error->GetErrorNumber()));
}

/// The same for what is replaced: the number is the cause's.
template <class Change>
std::string afterReplaced(Fields fields, Change&& change) {
    const ErrorPtr error = errorOf([&] { change(fields); });
    if (error != nullptr) {
        EXPECT_EQ(error->GetErrorNumber(), NkDtErrFolgefehler);
    }
    return show(fields) + (error == nullptr ? "" : " for " + std::to_string(error->GetCauseNumber()));
}

// --- Fields -----------------------------------------------------------------------------------------------

TEST(DateTimeRecord, StartsOnTheFirstDay) {
    const Fields fields;
    EXPECT_EQ(show(fields), "01.01.1900 00:00:00");
    EXPECT_EQ(fields.tm_wday, 0);
    EXPECT_EQ(fields.tm_yday, 0);
    EXPECT_EQ(fields.tm_isdst, -1);
}

TEST(DateTimeRecord, ComparesSixOfItsNineFields) {
    const Fields one = fieldsOf(5, 3, 2004, 14, 7, 9);
    Fields same = one;
    same.tm_wday = 5;
    same.tm_yday = 64;
    same.tm_isdst = 1;
    EXPECT_TRUE(one == same);
    EXPECT_TRUE((one <=> same) == 0);
    INT Fields::*const members[] = {&Fields::tm_year, &Fields::tm_mon, &Fields::tm_mday,
                                    &Fields::tm_hour, &Fields::tm_min, &Fields::tm_sec};
    Fields later = one;
    for (auto member = std::rbegin(members); member != std::rend(members); ++member) {
        // one field later outweighs every later one earlier, down to the lowest numbers
        later.*(*member) += 1;
        EXPECT_TRUE(one != later);
        EXPECT_TRUE((one <=> later) < 0);
        EXPECT_TRUE((later <=> one) > 0);
        later.*(*member) = std::numeric_limits<INT>::min();
        EXPECT_TRUE((one <=> later) > 0);
    }
}

TEST(DateTimeRecord, KnowsLeapYearsOfEveryStoredYear) {
    struct Case {
        INT year;
        bool leap;
    };
    constexpr Case cases[] = {{2004, true},  {2003, false}, {1900, false}, {2000, true},
                              {2100, false}, {0, true},     {-4, true},    {-100, false},
                              {-400, true},  {-1, false},   {1753, false}};
    for (const Case& each : cases)
        EXPECT_EQ(fieldsOf(1, 1, each.year).isLeapYear(), each.leap) << each.year;
    Fields extreme;
    extreme.tm_year = std::numeric_limits<INT>::max();  // 2147485547
    EXPECT_FALSE(extreme.isLeapYear());
    extreme.tm_year = std::numeric_limits<INT>::min();  // -2147481748
    EXPECT_TRUE(extreme.isLeapYear());
}

TEST(DateTimeRecord, ChecksADayAgainstItsMonth) {
    const auto set = [](LONGLONG day) { return [day](Fields& fields) { fields.setDay(day); }; };
    EXPECT_EQ(after(fieldsOf(1, 2, 2004), set(29)), "29.02.2004 00:00:00");
    EXPECT_EQ(after(fieldsOf(1, 2, 2003), set(29)), "01.02.2003 00:00:00 error 25");
    EXPECT_EQ(after(fieldsOf(1, 1, 2003), set(31)), "31.01.2003 00:00:00");
    for (const LONGLONG day :
         {LONGLONG{0}, LONGLONG{-1}, LONGLONG{32}, LONGLONG{1} << 32, (LONGLONG{1} << 32) + 1})
        EXPECT_EQ(after(fieldsOf(5, 1, 2003), set(day)), "05.01.2003 00:00:00 error 25");
    EXPECT_EQ(after(fieldsOf(5, 13, 2003), set(1)), "05.13.2003 00:00:00 error 26");
    EXPECT_EQ(after(fieldsOf(5, 0, 2003), set(1)), "05.00.2003 00:00:00 error 26");
}

TEST(DateTimeRecord, LowersTheDayToTheMonth) {
    const auto set = [](LONGLONG month) { return [month](Fields& fields) { fields.setMonth(month); }; };
    EXPECT_EQ(after(fieldsOf(31, 1, 2004), set(2)), "29.02.2004 00:00:00");
    EXPECT_EQ(after(fieldsOf(31, 1, 2003), set(2)), "28.02.2003 00:00:00");
    EXPECT_EQ(after(fieldsOf(32, 12, 2003), set(12)), "31.12.2003 00:00:00");
    EXPECT_EQ(after(fieldsOf(-5, 12, 2003), set(4)), "-5.04.2003 00:00:00");  // no day is made larger
    EXPECT_EQ(after(fieldsOf(5, 200, 2003), set(4)), "05.04.2003 00:00:00");
    for (const LONGLONG month : {LONGLONG{0}, LONGLONG{13}, LONGLONG{-1}, (LONGLONG{1} << 32) + 1})
        EXPECT_EQ(after(fieldsOf(31, 1, 2003), set(month)), "31.01.2003 00:00:00 error 26");
}

TEST(DateTimeRecord, StoresAYearBeforeItRefusesIt) {
    const NoonIn2023 noon;
    const auto set = [](LONGLONG year) { return [year](Fields& fields) { fields.setYear(year); }; };
    const Fields leapDay = fieldsOf(29, 2, 2004);
    EXPECT_EQ(after(leapDay, set(2005)), "28.02.2005 00:00:00");
    EXPECT_EQ(after(leapDay, set(99)), "28.02.2099 00:00:00");
    EXPECT_EQ(after(leapDay, set(100)), "29.02.100 00:00:00 error 27");
    EXPECT_EQ(after(leapDay, set(1752)), "29.02.1752 00:00:00 error 27");
    EXPECT_EQ(after(leapDay, set(32767)), "28.02.32767 00:00:00");
    EXPECT_EQ(after(leapDay, set(32768)), "29.02.2004 00:00:00 error 8");
    EXPECT_EQ(after(leapDay, set(LONGLONG{1} << 40)), "29.02.2004 00:00:00 error 8");
    EXPECT_EQ(after(leapDay, set(-(LONGLONG{1} << 40))), "29.02.-2147481748 00:00:00 error 27");
    EXPECT_EQ(after(fieldsOf(31, 3, 2004), set(2005)), "31.03.2005 00:00:00");
    const NoClock none;
    EXPECT_EQ(after(leapDay, set(99)), "29.02.2004 00:00:00 error 5");
    EXPECT_EQ(after(leapDay, set(2008)), "29.02.2008 00:00:00");
}

TEST(DateTimeRecord, ChecksTheTimeOfDay) {
    const Fields one = fieldsOf(5, 3, 2004, 14, 7, 9);
    for (const LONGLONG bad : {LONGLONG{-1}, LONGLONG{60}, LONGLONG{1} << 32}) {
        EXPECT_EQ(after(one, [bad](Fields& f) { f.setHour(bad); }), "05.03.2004 14:07:09 error 28");
        EXPECT_EQ(after(one, [bad](Fields& f) { f.setMinute(bad); }), "05.03.2004 14:07:09 error 29");
        EXPECT_EQ(after(one, [bad](Fields& f) { f.setSecond(bad); }), "05.03.2004 14:07:09 error 30");
    }
    EXPECT_EQ(after(one, [](Fields& f) { f.setHour(24); }), "05.03.2004 14:07:09 error 28");
    EXPECT_EQ(after(one, [](Fields& f) { f.setTime(23, 59, 59); }), "05.03.2004 23:59:59");
    EXPECT_EQ(after(one, [](Fields& f) { f.setTime(0, 0, 60); }), "05.03.2004 00:00:09 error 30");
    EXPECT_EQ(after(one, [](Fields& f) { f.wipeTime(); }), "05.03.2004 00:00:00");
}

TEST(DateTimeRecord, NamesItsSettersInTheirErrors) {
    Fields fields = fieldsOf(5, 3, 2004);
    const auto at = [](const char* function, std::function<void()> operation, ULONG number) {
        return ErrorCase{function, std::move(operation), number, ".\\Imp\\dtdatimi.cc", "DtDateTime_Imp",
                         function};
    };
    expectOrigins({
        at(
            "SetDay365(SHORT)", [&] { fields.setDay(32); }, NkDtErrTag),
        at(
            "SetMonth(SHORT)", [&] { fields.setMonth(13); }, NkDtErrMonat),
        at(
            "SetYear(SHORT)", [&] { fields.setYear(1752); }, NkDtErrJahr),
        at(
            "SetHour(SHORT)", [&] { fields.setHour(24); }, NkDtErrStunde),
        at(
            "SetMin(SHORT)", [&] { fields.setMinute(60); }, NkDtErrMinute),
        at(
            "SetSecond(SHORT)", [&] { fields.setSecond(60); }, NkDtErrSekunde),
        at(
            "SubDay365(SHORT)", [] { fieldsOf(1, 1, 1752).checkYear("SubDay365(SHORT)"); }, NkDtErrJahr),
        at(
            "NkDtDateTime_Imp(time_t) ", [] { Imp::of(std::numeric_limits<std::time_t>::max()); },
            NkDtErrInitialwert),
    });
    const NoClock none;
    expectOrigins({at(
        "SetSysDateTime()", [] { Imp::now(); }, NkDtErrInitialwert)});
    EXPECT_NO_THROW(fieldsOf(1, 1, 1753).checkYear(""));
}

TEST(DateTimeRecord, ChecksTheYearOfTheClock) {
    const frameworktest::TimeZone zone("UTC");
    const nkfw::ClockSource before = nkfw::setClockSource([]() noexcept { return std::time_t{-6847804801}; });
    expectError(NkDtErrJahr, [] { Imp::now(); });
    nkfw::setClockSource([]() noexcept { return std::time_t{-6847804800}; });
    EXPECT_EQ(show(Imp::now()), "01.01.1753 00:00:00");
    nkfw::setClockSource(before);
}

// --- The date parse ---------------------------------------------------------------------------------------

struct Parse {
    std::string_view text;
    const char* after;
};
const Fields kBefore = fieldsOf(7, 6, 1999, 14, 7, 9);
constexpr const char* kRefused = "07.06.1999 14:07:09 for 5";

TEST(DateTimeParser, ReadsDates) {
    const NoonIn2023 noon;
    constexpr Parse cases[] = {
        {"01.02.2004", "01.02.2004 14:07:09"},
        {"1.2.2004", "01.02.2004 14:07:09"},
        {"1.2.04", "01.02.2004 14:07:09"},
        {"01.2.04", "01.02.2004 14:07:09"},
        {"01.02.99", "01.02.2099 14:07:09"},
        {"01.02.00", "01.02.2000 14:07:09"},
        {"01.02.0004", "01.02.2004 14:07:09"},
        {"01.02.2004 ", "01.02.2004 14:07:09"},
        {"01.02.2004 and more", "01.02.2004 14:07:09"},
        {"01.02.20041 ", "01.02.2004 14:07:09"},  // four characters up to the blank count
        {"01.02.04 13:45", "01.02.2004 14:07:09"},
        {"01.02.00 0000", "01.02.2000 14:07:09"},
        {"1.2.2004 ", "01.02.2004 14:07:09"},  // five characters behind the separator
        {"01.02.04 12", "01.02.2004 14:07:09"},
        {"29.02.2004", "29.02.2004 14:07:09"},
        // both separators
        {"01.02/2004", "01.02.2004 14:07:09"},
        {"1/.02.2004", "01.02.2004 14:07:09"},
        {"01.2/.2004", "01.02.2004 14:07:09"},
        {"1/04 12:00", "01.04.2004 14:07:09"},
    };
    for (const Parse& each : cases) {
        SCOPED_TRACE(each.text);
        EXPECT_EQ(afterReplaced(kBefore, [&](Fields& f) { Imp::parseDate(f, each.text); }), each.after);
    }
}

TEST(DateTimeParser, RefusesOtherDatesWithTheFieldsSetSoFar) {
    const NoonIn2023 noon;
    constexpr Parse cases[] = {
        {"", kRefused},
        {"1.2.4", kRefused},        // five characters
        {"01/04", kRefused},        // which would be 1 April otherwise
        {"01022004", kRefused},     // no separator
        {".02.2004", kRefused},     // at the start
        {"001.02.2004", kRefused},  // behind three digits
        {"01.0002.04", kRefused},   // three digits between
        {"01.022004", kRefused},    // one separator
        {"01.02.2004x", kRefused},  // no blank behind more than four characters
        {"01.02.20045", kRefused},
        {"01.02.204", kRefused},  // three digits
        {"01.02.2", kRefused},
        {"01.02.", kRefused},
        {"01.02.20x4", kRefused},
        {"01.02.-204", kRefused},
        {"01.02.4 13:45", kRefused},  // the blank belongs to the year
        {"01.02. 2004 ", kRefused},
        {"01/02/2004", kRefused},  // the second slash is looked for from the start
        {"01/02/2004 10:00", kRefused},
        {"1/2/04", kRefused},
        {"01-02-2004", kRefused},
        {"01.02.0000", "07.06.0 14:07:09 for 27"},
        {"01.02.0000 10:00", "07.06.0 14:07:09 for 27"},
        {"01.02.0104", "07.06.104 14:07:09 for 27"},
        {"01.02.1752", "07.06.1752 14:07:09 for 27"},
        {"01.13.2004", "07.06.2004 14:07:09 for 26"},
        {"01.00.2004", "07.06.2004 14:07:09 for 26"},
        {"01.0x.2004", "07.06.2004 14:07:09 for 5"},
        {"01. 2.2004", "07.06.2004 14:07:09 for 5"},
        {"01..2004  ", "07.06.2004 14:07:09 for 5"},
        {"32.02.2004", "07.02.2004 14:07:09 for 25"},
        {"00.02.2004", "07.02.2004 14:07:09 for 25"},
        {"30.02.2004", "07.02.2004 14:07:09 for 25"},
        {"29.02.2003", "07.02.2003 14:07:09 for 25"},
        {"x1.02.2004", "07.02.2004 14:07:09 for 5"},
        {" 1.02.2004", "07.02.2004 14:07:09 for 5"},
        {"1x.02.2004", "07.02.2004 14:07:09 for 5"},
    };
    for (const Parse& each : cases) {
        SCOPED_TRACE(each.text);
        EXPECT_EQ(afterReplaced(kBefore, [&](Fields& f) { Imp::parseDate(f, each.text); }), each.after);
    }
}

TEST(DateTimeParser, LowersTheOldDayBeforeTheNewOneIsSet) {
    EXPECT_EQ(afterReplaced(fieldsOf(31, 1, 2004), [](Fields& f) { Imp::parseDate(f, "xx.02.2003"); }),
              "28.02.2003 00:00:00 for 5");
    EXPECT_EQ(afterReplaced(fieldsOf(29, 2, 2004), [](Fields& f) { Imp::parseDate(f, "xx.xx.2003"); }),
              "28.02.2003 00:00:00 for 5");
}

// --- The time parse ---------------------------------------------------------------------------------------

TEST(DateTimeParser, ReadsTimesOfDay) {
    constexpr Parse cases[] = {
        {"13:45", "07.06.1999 13:45:00"},    {"13:45:30", "07.06.1999 13:45:30"},
        {" 9:05", "07.06.1999 09:05:00"},    {"00:00:00", "07.06.1999 00:00:00"},
        {"13:45:3", "07.06.1999 13:45:00"},  {"13:45:300", "07.06.1999 13:45:00"},
        {"13:456", "07.06.1999 13:45:00"},   {"13:45 xyz", "07.06.1999 13:45:00"},
        {"23:59:59", "07.06.1999 23:59:59"},
    };
    for (const Parse& each : cases) {
        SCOPED_TRACE(each.text);
        EXPECT_EQ(afterReplaced(kBefore, [&](Fields& f) { Imp::parseTime(f, each.text); }), each.after);
    }
}

TEST(DateTimeParser, RefusesOtherTimesWithTheFieldsSetSoFar) {
    constexpr Parse cases[] = {
        {"", kRefused},
        {"1:30", kRefused},
        {"9:05:00", kRefused},
        {"1345678", kRefused},
        {"x3:45", kRefused},
        {"1x:45", kRefused},
        {"1 :45", kRefused},
        {"24:00", "07.06.1999 14:07:09 for 28"},
        {"13:x5", "07.06.1999 13:07:09 for 5"},
        {"13:4x", "07.06.1999 13:07:09 for 5"},
        {"13: 5", "07.06.1999 13:07:09 for 5"},
        {"13:60", "07.06.1999 13:07:09 for 29"},
        {"13:45.30", "07.06.1999 13:45:09 for 5"},
        {"13:45:x0", "07.06.1999 13:45:09 for 5"},
        {"13:45:3 ", "07.06.1999 13:45:09 for 5"},
        {"13:45:60", "07.06.1999 13:45:09 for 30"},
    };
    for (const Parse& each : cases) {
        SCOPED_TRACE(each.text);
        EXPECT_EQ(afterReplaced(kBefore, [&](Fields& f) { Imp::parseTime(f, each.text); }), each.after);
    }
}

TEST(DateTimeParser, NamesItsOperations) {
    Fields fields;
    const auto replaced = [](const char* function, std::function<void()> operation) {
        return ErrorCase{function,
                         std::move(operation),
                         NkDtErrFolgefehler,
                         ".\\Imp\\dtdatimi.cc",
                         "DtDateTime_Imp",
                         function,
                         FALSE,
                         NkDtErrInitialwert};
    };
    expectOrigins({replaced("SetDate(LPCTSTR)", [&] { Imp::parseDate(fields, "x"); }),
                   replaced("SetTime(LPCTSTR)", [&] { Imp::parseTime(fields, "x"); })});
}

// --- Texts
// --------------------------------------------------------------------------------------------------

TEST(DateTimeRecordText, HoldsEveryFieldThatAnArchiveCanHold) {
    constexpr INT least = std::numeric_limits<INT>::min();
    constexpr INT most = std::numeric_limits<INT>::max();
    Fields extreme;
    extreme.tm_sec = extreme.tm_min = extreme.tm_hour = extreme.tm_mday = extreme.tm_mon = extreme.tm_year =
        least;
    EXPECT_EQ(show(extreme), "-2147483648.-2147483647.-2147481748 -2147483648:-2147483648:-2147483648");
    extreme.tm_sec = extreme.tm_min = extreme.tm_hour = extreme.tm_mday = extreme.tm_mon = extreme.tm_year =
        most;
    EXPECT_EQ(show(extreme), "2147483647.2147483648.2147485547 2147483647:2147483647:2147483647");
    Imp::Text buffer;
    for (const USHORT form : {Imp::sqlDayFirst, Imp::sqlMonthFirst, Imp::dateDigits, Imp::date})
        EXPECT_LE(Imp::text(extreme, form, buffer).size(), sizeof buffer);
    EXPECT_EQ(Imp::externText(extreme, buffer), "C-1001899-1-1-1");  // 16 bits of each
}

}  // namespace
