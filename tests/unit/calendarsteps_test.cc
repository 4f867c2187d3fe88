// The moves and differences of dates: the forms that count leap years against the steps that go from year to
// year, and both against the calendar where they follow it.

#include "CalendarSteps.h"

#include <algorithm>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <nkdt/NkDtDateTime.h>
#include <nkfw/Calendar.h>

#include "ValueTesting.h"
#include "support/Instruments.h"

namespace nkdt {

void PrintTo(const DateTimeFields& fields, std::ostream* out) {
    *out << fields.tm_mday << '.' << fields.month() << '.' << fields.year();
}

}  // namespace nkdt

namespace {

using namespace valuetest;
using Fields = nkdt::DateTimeFields;
using nkdt::calendar::addDays;
using nkdt::calendar::Difference;
using nkdt::calendar::subtractDays;

constexpr INT kLowest = std::numeric_limits<INT>::min();
constexpr INT kHighest = std::numeric_limits<INT>::max();
constexpr LONGLONG kMostDays = 32768;  // that a move by days is asked for
const bool kWatched = nktest::isWatched();

// --- The steps from year to year ----------------------------------------------------------------

constexpr LONGLONG kDaysBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
constexpr int kMarch = 2;

int leapOf(LONGLONG year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 ? 1 : 0;
}

void place(Fields& fields, LONGLONG year, LONGLONG month, LONGLONG day) {
    fields.tm_year = static_cast<INT>(year - 1900);
    fields.tm_mon = static_cast<INT>(month);
    fields.tm_mday = static_cast<INT>(day);
}

// False for a year beyond 32767, which changes nothing.
bool addStepByStep(Fields& fields, LONGLONG n) {
    LONGLONG year = fields.year();
    LONGLONG d = kDaysBefore[fields.tm_mon] + fields.tm_mday + n;
    int leap = leapOf(year);
    if (leap == 1 && fields.tm_mon >= kMarch) d += 1;
    while (d > 365 + leap) {
        d -= 365 + leap;
        year += 1;
        leap = leapOf(year);
    }
    if (year > 32767) return false;
    int m = 1;
    while (m < 12 && kDaysBefore[m] + (leap == 1 && m >= 2 ? 1 : 0) < d)
        m += 1;
    m -= 1;
    place(fields, year, m, d - kDaysBefore[m] - (leap == 1 && m >= 2 ? 1 : 0));
    return true;
}

void subtractStepByStep(Fields& fields, LONGLONG n) {
    LONGLONG year = fields.year();
    const bool fromMarch = fields.tm_mon >= kMarch;
    LONGLONG d = kDaysBefore[fields.tm_mon] + fields.tm_mday - n;
    int leap = leapOf(year);
    if (leap == 1 && fromMarch && d > 0) d += 1;
    while (d <= 0) {
        d += 365;
        if (fromMarch) d += leap;
        year -= 1;
        leap = leapOf(year);
        if (leap == 1 && !fromMarch) d += 1;
    }
    int m = 11;
    int before = leap == 1 && m >= 2 ? 1 : 0;
    while (kDaysBefore[m] + before >= d && m > 0) {
        m -= 1;
        if (m < 2) before = 0;
    }
    place(fields, year, m, d - kDaysBefore[m] - before);
}

Difference differenceStepByStep(const Fields& a, const Fields& b) {
    const LONGLONG year = a.year();
    const LONGLONG other = b.year();
    LONGLONG minutes = (a.tm_sec < b.tm_sec ? LONGLONG{-1} : 0) + a.tm_min - b.tm_min;
    LONGLONG hourBorrow = 0;
    if (minutes < 0) {
        minutes += 60;
        hourBorrow = -1;
    }
    LONGLONG days = (kDaysBefore[a.tm_mon] + a.tm_mday) - (kDaysBefore[b.tm_mon] + b.tm_mday);
    LONGLONG years = 0;
    LONGLONG leaps = 0;
    if (days >= 0 && year > other) {
        if (leapOf(year) == 1 && a.tm_mon > 2) days += 1;
        if (leapOf(other) == 1 && b.tm_mon <= 2) days += 1;
        years = year - other;
        LONGLONG k = other + 1;
        while (leapOf(k) == 0 && k < year - 1)
            k += 1;
        for (; k < year - 1; k += 4)
            leaps += leapOf(k);
    } else if (days <= 0 && year < other) {
        if (leapOf(year) == 1 && a.tm_mon <= 2) days -= 1;
        if (leapOf(other) == 1 && b.tm_mon > 2) days -= 1;
        years = year - other;
        LONGLONG k = other - 1;
        while (leapOf(k) == 0 && k > year + 1)
            k -= 1;
        for (; k > year + 1; k -= 4)
            leaps -= leapOf(k);
    }
    return {(years * 365 + leaps) * 24 + (hourBorrow + a.tm_hour - b.tm_hour) + days * 24, minutes};
}

// --- Dates --------------------------------------------------------------------------------------

Fields on(LONGLONG day, LONGLONG month, LONGLONG year) {
    Fields fields;
    place(fields, year, month - 1, day);
    return fields;
}

Fields on(const nkfw::CalendarDate& date) {
    return on(date.day, date.month, date.year);
}

LONGLONG dayNumber(const Fields& fields) {
    return nkfw::dayNumber(static_cast<int>(fields.year()), static_cast<int>(fields.month()), fields.tm_mday);
}

// 0 to stride - 1, so that the days of a year take turns in the counts that are tried.
LONGLONG turn(const Fields& day, LONGLONG stride) {
    return (day.tm_mon * 31 + day.tm_mday) % stride;
}

std::vector<Fields> daysOfYear(int year) {
    std::vector<Fields> days;
    for (auto day = nkfw::dayNumber(year, 1, 1); day < nkfw::dayNumber(year + 1, 1, 1); ++day)
        days.push_back(on(nkfw::dateOf(day)));
    return days;
}

// First and last days of months, and what lies around the leap day.
std::vector<Fields> edgesOfYear(int year) {
    std::vector<Fields> days = daysOfYear(year);
    std::erase_if(days, [&](const Fields& day) {
        const bool isAtLeapDay = day.tm_mon == 1 && day.tm_mday >= 27;
        return day.tm_mday != 1 && !isAtLeapDay &&
               day.tm_mday != nkfw::daysInMonth(year, static_cast<int>(day.month()));
    });
    return days;
}

constexpr int kYears[] = {1900, 2000, 2001, 2003, 2004};  // the first and the last before a leap year as well

// Days and years that only an archive brings.
std::vector<Fields> oddDates() {
    std::vector<Fields> dates;
    for (const LONGLONG year : {-32868, -401, -400, -4, -1, 0, 1, 4, 100, 1752, 1753, 1900, 2000, 2003, 2004,
                                2005, 32764, 32766, 32767}) {
        for (int month = 1; month <= 12; ++month) {
            for (const LONGLONG day :
                 {-40000, -366, -5, -1, 0, 29, 30, 31, 32, 59, 60, 61, 365, 366, 400, 40000})
                dates.push_back(on(day, month, year));
        }
    }
    return dates;
}

// --- Comparing ----------------------------------------------------------------------------------

// Comparisons are many: the test library sees only those that fail.
void expectAdds(const Fields& start, LONGLONG n) {
    Fields wanted = start;
    const bool isInRange = addStepByStep(wanted, n);
    Fields found = start;
    const ErrorPtr error = isInRange ? nullptr : errorOf([&] { addDays(found, n); });
    if (isInRange) addDays(found, n);
    const bool isAsWanted = isInRange || (error != nullptr && error->GetErrorNumber() == NkDtErrWertebereich);
    if (found != wanted || !isAsWanted) {
        ADD_FAILURE() << ::testing::PrintToString(start) << " and " << n << " days: found "
                      << ::testing::PrintToString(found) << " instead of "
                      << ::testing::PrintToString(wanted);
    }
}

void expectSubtracts(const Fields& start, LONGLONG n) {
    Fields wanted = start;
    subtractStepByStep(wanted, n);
    Fields found = start;
    subtractDays(found, n);
    if (found != wanted) {
        ADD_FAILURE() << ::testing::PrintToString(start) << " less " << n << " days: found "
                      << ::testing::PrintToString(found) << " instead of "
                      << ::testing::PrintToString(wanted);
    }
}

void expectDifference(const Fields& a, const Fields& b) {
    const Difference wanted = differenceStepByStep(a, b);
    const Difference found = nkdt::calendar::difference(a, b);
    if (found.hours != wanted.hours || found.minutes != wanted.minutes) {
        ADD_FAILURE() << ::testing::PrintToString(a) << " less " << ::testing::PrintToString(b) << ": found "
                      << found.hours << ':' << found.minutes << " instead of " << wanted.hours << ':'
                      << wanted.minutes;
    }
}

// --- Days against the steps ---------------------------------------------------------------------

TEST(CalendarSteps, EveryCountFromTheEdgesOfMonthsFollowsTheSteps) {
    const LONGLONG stride = kWatched ? 31 : 1;
    for (const int year : kYears) {
        for (const Fields& day : edgesOfYear(year)) {
            for (LONGLONG n = day.tm_mday % stride; n <= kMostDays; n += stride) {
                expectAdds(day, n);
                expectSubtracts(day, n);
            }
        }
    }
}

TEST(CalendarSteps, EveryDayOfAYearFollowsTheSteps) {
    const LONGLONG stride = kWatched ? 211 : 23;
    for (const int year : kYears) {
        for (const Fields& day : daysOfYear(year)) {
            for (LONGLONG n = 0; n <= 1500; n += kWatched ? 7 : 1) {
                expectAdds(day, n);
                expectSubtracts(day, n);
            }
            for (LONGLONG n = 1500 + turn(day, stride); n <= kMostDays; n += stride) {
                expectAdds(day, n);
                expectSubtracts(day, n);
            }
        }
    }
}

TEST(CalendarSteps, LargeCountsFollowTheSteps) {
    std::mt19937_64 random(17530101);
    std::uniform_int_distribution<int> anyDay(nkfw::dayNumber(1753, 1, 1), nkfw::dayNumber(9999, 12, 31));
    std::uniform_int_distribution<LONGLONG> anyCount(kMostDays, 20'000'000);  // up to 54,000 years
    for (int i = 0; i < (kWatched ? 30 : 500); ++i) {
        const Fields day = on(nkfw::dateOf(anyDay(random)));
        const LONGLONG n = anyCount(random);
        expectAdds(day, n);
        expectAdds(day, n / 2);
        expectSubtracts(day, n);
    }
    for (const LONGLONG n : {LONGLONG{kHighest}, LONGLONG{kHighest} + 1}) {
        expectAdds(on(29, 2, 2004), n);
        expectSubtracts(on(28, 2, 2004), n);
        expectSubtracts(on(1, 3, 2004), n);
    }
}

TEST(CalendarSteps, DaysThatAnArchiveBringsFollowTheSteps) {
    const std::vector<Fields> dates = oddDates();
    for (std::size_t i = 0; i < dates.size(); i += kWatched ? 17 : 1) {
        const Fields& date = dates[i];
        for (const LONGLONG n : {0, 1, 2, 31, 32, 59, 60, 365, 366, 367, 400, 1461, 14610, 32768}) {
            expectAdds(date, n);
            expectSubtracts(date, n);
        }
    }
    for (int month = 1; month <= 12; month += kWatched ? 5 : 1) {
        for (const LONGLONG n : {0, 1, 32768}) {
            expectAdds(on(kLowest, month, 2004), n);
            expectAdds(on(kHighest, month, 2004), n);
            expectSubtracts(on(kHighest, month, 2004), n);
        }
    }
    expectSubtracts(on(kLowest, 1, 2004), kMostDays);
    expectSubtracts(on(kLowest, 3, 2004), kMostDays);
}

TEST(CalendarSteps, YearsThatAnArchiveBringsFollowTheSteps) {
    for (const LONGLONG year : {LONGLONG{kLowest} + 1900 + 200, LONGLONG{-1'000'000}, LONGLONG{32768},
                                LONGLONG{1'000'000}, LONGLONG{kHighest} + 1900 - 200}) {
        for (int month = 1; month <= 12; ++month) {
            for (const LONGLONG n : {0, 1, 58, 59, 60, 366, 32768}) {
                expectAdds(on(1, month, year), n);
                expectSubtracts(on(1, month, year), n);
            }
        }
    }
}

TEST(CalendarSteps, AYearBelowTheLowestNumberIsRefusedAndChangesNothing) {
    const Fields start = on(1, 1, LONGLONG{kLowest} + 1900);
    Fields fields = start;
    expectError(NkDtErrWertebereich, [&] { subtractDays(fields, 1); });
    EXPECT_EQ(fields, start);
    subtractDays(fields, 0);
    EXPECT_EQ(fields, start);
}

TEST(CalendarSteps, AMonthThatIsNoneIsRefusedAndChangesNothing) {
    for (const INT month : {kLowest, -1, 12, 255, kHighest}) {
        Fields fields = on(1, 1, 2004);
        fields.tm_mon = month;
        const Fields start = fields;
        expectError(NkDtErrMonat, [&] { addDays(fields, 1); });
        expectError(NkDtErrMonat, [&] { subtractDays(fields, 1); });
        EXPECT_EQ(fields, start);
    }
}

TEST(CalendarSteps, MovesLeaveTheOtherFieldsAlone) {
    Fields fields = on(31, 12, 2003);
    fields.tm_hour = 14;
    fields.tm_min = 7;
    fields.tm_sec = 9;
    fields.tm_wday = 3;
    fields.tm_yday = 364;
    fields.tm_isdst = 1;
    for (void (*const move)(Fields&, LONGLONG) : {addDays, subtractDays}) {
        move(fields, 1000);
        EXPECT_EQ(fields.tm_hour, 14);
        EXPECT_EQ(fields.tm_min, 7);
        EXPECT_EQ(fields.tm_sec, 9);
        EXPECT_EQ(fields.tm_wday, 3);
        EXPECT_EQ(fields.tm_yday, 364);
        EXPECT_EQ(fields.tm_isdst, 1);
    }
}

// --- Days against the calendar --------------------------------------------------------------------

TEST(CalendarSteps, AddingFollowsTheCalendar) {
    const LONGLONG stride = kWatched ? 499 : 37;
    for (const int year : kYears) {
        for (const Fields& day : daysOfYear(year)) {
            for (LONGLONG n = turn(day, stride); n <= kMostDays; n += stride) {
                Fields found = day;
                addDays(found, n);
                ASSERT_EQ(found, on(nkfw::dateOf(dayNumber(day) + n))) << n;
            }
        }
    }
}

TEST(CalendarSteps, SubtractingFollowsTheCalendarUntilMarch) {
    const LONGLONG stride = kWatched ? 499 : 37;
    for (const int year : kYears) {
        for (const Fields& day : daysOfYear(year)) {
            for (LONGLONG n = turn(day, stride); day.tm_mon < kMarch && n <= kMostDays; n += stride) {
                Fields found = day;
                subtractDays(found, n);
                ASSERT_EQ(found, on(nkfw::dateOf(dayNumber(day) - n))) << n;
            }
        }
    }
}

// A leap year that is reached from March on has lost its leap day: all its days come out one too early, and
// 1 January as a 32nd day of the December before. Within the year of the start only 1 January does.
TEST(CalendarSteps, SubtractingFromMarchOnMissesTheLeapDayOfTheYearReached) {
    const LONGLONG stride = kWatched ? 499 : 37;
    int thirtySeconds = 0;
    for (const int year : kYears) {
        for (const Fields& day : daysOfYear(year)) {
            for (LONGLONG n = turn(day, stride); day.tm_mon >= kMarch && n <= kMostDays; n += stride) {
                Fields found = day;
                subtractDays(found, n);
                Fields wanted = on(nkfw::dateOf(dayNumber(day) - n));
                const bool isFirst = wanted.tm_mon == 0 && wanted.tm_mday == 1;
                if (wanted.isLeapYear() && isFirst) {
                    wanted = on(32, 12, wanted.year() - 1);
                    ++thirtySeconds;
                } else if (wanted.isLeapYear() && wanted.year() != day.year()) {
                    wanted = on(nkfw::dateOf(dayNumber(wanted) - 1));
                }
                ASSERT_EQ(found, wanted) << ::testing::PrintToString(day) << " less " << n;
            }
        }
    }
    EXPECT_GT(thirtySeconds, 0);
}

TEST(CalendarSteps, FirstOfJanuaryOfEveryLeapYearIsMissedFromMarchOn) {
    for (int year = 1756; year <= 2396; year += 4) {
        if (!nkfw::isLeapYear(year)) continue;
        const LONGLONG first = nkfw::dayNumber(year, 1, 1);
        for (auto day = nkfw::dayNumber(year, 3, 1); day <= nkfw::dayNumber(year, 12, 31); ++day) {
            Fields found = on(nkfw::dateOf(day));
            subtractDays(found, day - first);
            ASSERT_EQ(found, on(32, 12, year - 1));
        }
        for (auto day = first; day < nkfw::dayNumber(year, 3, 1); ++day) {
            Fields found = on(nkfw::dateOf(day));
            subtractDays(found, day - first);
            ASSERT_EQ(found, on(1, 1, year));
        }
    }
}

// --- Differences --------------------------------------------------------------------------------

Fields anyMoment(std::mt19937_64& random, int firstYear, int lastYear) {
    const auto any = [&](int first, int last) {
        return std::uniform_int_distribution<int>(first, last)(random);
    };
    const int year = any(firstYear, lastYear);
    const int month = any(1, 12);
    Fields fields = on(any(1, nkfw::daysInMonth(year, month)), month, year);
    fields.tm_hour = any(0, 23);
    fields.tm_min = any(0, 59);
    fields.tm_sec = any(0, 59);
    return fields;
}

TEST(CalendarSteps, DifferencesFollowTheStepsInBothDirections) {
    std::mt19937_64 random(20040305);
    for (const auto& [first, last] : {std::pair{1753, 2399}, {1890, 1915}, {1990, 2015}, {-900, 32767}}) {
        for (int i = 0; i < (kWatched ? 5'000 : 100'000); ++i) {
            const Fields a = anyMoment(random, first, last);
            const Fields b = anyMoment(random, first, last);
            expectDifference(a, b);
            expectDifference(b, a);
        }
    }
}

TEST(CalendarSteps, DifferencesOfAllYearsAroundACenturyFollowTheSteps) {
    for (int year = 1890; year <= 1912; ++year) {
        for (int other = 1890; other <= 1912; ++other) {
            for (const Fields& a : edgesOfYear(year)) {
                for (const Fields& b : {on(1, 1, other), on(28, 2, other), on(1, 3, other), on(31, 3, other),
                                        on(1, 4, other), on(31, 12, other)})
                    expectDifference(a, b);
            }
        }
    }
}

TEST(CalendarSteps, DifferencesOfDaysThatAnArchiveBringsFollowTheSteps) {
    const std::vector<Fields> dates = oddDates();
    const std::size_t stride = nktest::isUnderValgrind() ? 3643 : 101;
    for (std::size_t i = 0; i < dates.size(); ++i) {
        for (std::size_t k = i % stride; k < dates.size(); k += stride)
            expectDifference(dates[i], dates[k]);
    }
    for (const INT extreme : {kLowest, kHighest}) {
        Fields odd = on(extreme, 2, 2004);
        odd.tm_hour = odd.tm_min = odd.tm_sec = extreme;
        expectDifference(odd, on(1, 1, 2004));
        expectDifference(on(1, 1, 2004), odd);
        expectDifference(on(1, 1, 2004), on(1, 1, 2004 + (extreme < 0 ? -1'000'000 : 1'000'000)));
    }
}

// --- The class ----------------------------------------------------------------------------------

TEST(CalendarSteps, EveryDayFrom1753To2399LiesOneDayBehindTheOneBefore) {
    const LONGLONG first = nkfw::dayNumber(1753, 1, 1);
    const LONGLONG last = nkfw::dayNumber(2399, 12, 31);
    const auto expectDate = [](const NkDtDateTime& value, LONGLONG day) {
        const nkfw::CalendarDate date = nkfw::dateOf(day);
        ASSERT_EQ(value.GetDay365(), date.day) << day;
        ASSERT_EQ(value.GetMonth(), date.month) << day;
        ASSERT_EQ(value.GetYear(), date.year) << day;
    };
    NkDtDateTime walker(1, 1, 1753, 23, 59, 59);
    for (LONGLONG day = first; day < last; ++day) {
        expectDate(walker, day);
        walker.AddDay365(1);
    }
    for (LONGLONG day = last; day > first; --day) {
        expectDate(walker, day);
        walker.SubDay365(1);
    }
    expectDate(walker, first);
    EXPECT_TRUE(walker == NkDtDateTime(1, 1, 1753, 23, 59, 59));
    expectReplaced(NkDtErrJahr, [&] { walker.SubDay365(1); });
    expectDate(walker, first - 1);
}

}  // namespace
