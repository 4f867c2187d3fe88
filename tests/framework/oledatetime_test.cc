#include <nkfw/Calendar.h>
#include <nkfw/Clock.h>
#include <nkfw/OleDateTime.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "FrameworkTest.h"
#include "TimeZone.h"

namespace {

constexpr int leastInt = std::numeric_limits<int>::min();
constexpr int mostInt = std::numeric_limits<int>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr int firstDay = -657434;  // 1 January 100
constexpr int lastDay = 2958465;   // 31 December 9999
constexpr double second = 1.0 / 86400;
constexpr COleDateTime::DateTimeStatus statuses[] = {COleDateTime::valid, COleDateTime::invalid,
                                                     COleDateTime::null};

struct Fields {
    int year;
    int month;
    int day;
    int hour;
    int minute;
    int second;

    bool operator==(const Fields&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Fields& fields) {
    return out << fields.year << '-' << fields.month << '-' << fields.day << ' ' << fields.hour << ':'
               << fields.minute << ':' << fields.second;
}

COleDateTime made(const Fields& fields) {
    return COleDateTime(fields.year, fields.month, fields.day, fields.hour, fields.minute, fields.second);
}

Fields read(const COleDateTime& dateTime) {
    return {dateTime.GetYear(), dateTime.GetMonth(),  dateTime.GetDay(),
            dateTime.GetHour(), dateTime.GetMinute(), dateTime.GetSecond()};
}

constexpr Fields noFields = {-1, -1, -1, -1, -1, -1};

void expectNoFields(const COleDateTime& dateTime) {
    EXPECT_EQ(read(dateTime), noFields);
    EXPECT_EQ(dateTime.GetDayOfWeek(), -1);
    EXPECT_EQ(dateTime.GetDayOfYear(), -1);
}

void expectInvalid(const COleDateTime& dateTime) {
    EXPECT_EQ(dateTime.GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(dateTime.m_dt, 0);
    expectNoFields(dateTime);
}

void expectCount(const COleDateTime& dateTime, DATE count) {
    EXPECT_EQ(dateTime.GetStatus(), COleDateTime::valid);
    EXPECT_EQ(dateTime.m_dt, count);
}

// ---- Construction and status ----

TEST(OleDateTime, StartsAsAValidDay0) {
    expectCount(COleDateTime(), 0);
    EXPECT_EQ(read(COleDateTime()), (Fields{1899, 12, 30, 0, 0, 0}));
}

TEST(OleDateTime, TheStatusesHaveTheNumbersOfAutomation) {
    EXPECT_EQ(COleDateTime::valid, 0);
    EXPECT_EQ(COleDateTime::invalid, 1);
    EXPECT_EQ(COleDateTime::null, 2);
}

TEST(OleDateTime, AStatusThatIsSetLeavesTheCountAndTakesTheFieldsAway) {
    COleDateTime dateTime(2004, 3, 5, 12, 0, 0);
    for (const COleDateTime::DateTimeStatus status : statuses) {
        dateTime.SetStatus(status);
        EXPECT_EQ(dateTime.GetStatus(), status);
        EXPECT_EQ(dateTime.m_status, status);
        EXPECT_EQ(dateTime.m_dt, 38051.5);
        if (status != COleDateTime::valid) expectNoFields(dateTime);
    }
    dateTime.SetStatus(COleDateTime::valid);
    EXPECT_EQ(read(dateTime), (Fields{2004, 3, 5, 12, 0, 0}));
}

TEST(OleDateTime, ACopyHasCountAndStatus) {
    for (const COleDateTime::DateTimeStatus status : statuses) {
        COleDateTime dateTime(2004, 3, 5, 12, 0, 0);
        dateTime.SetStatus(status);
        const COleDateTime copy(dateTime);
        EXPECT_EQ(copy.m_dt, 38051.5);
        EXPECT_EQ(copy.GetStatus(), status);
        COleDateTime assigned;
        assigned = dateTime;
        EXPECT_EQ(assigned.m_dt, 38051.5);
        EXPECT_EQ(assigned.GetStatus(), status);
    }
}

TEST(OleDateTime, ANumberBecomesADateOnlyWhereThatIsWritten) {
    static_assert(!std::is_convertible_v<double, COleDateTime>);
    static_assert(!std::is_convertible_v<std::time_t, COleDateTime>);
    static_assert(!std::is_constructible_v<COleDateTime, int>, "neither a count nor a time of the clock");
    static_assert(!std::is_constructible_v<COleDateTime, bool>);
    static_assert(!std::is_constructible_v<COleDateTime, COleDateTime::DateTimeStatus>);
    static_assert(!std::is_constructible_v<COleDateTime, std::nullptr_t>);
    static_assert(!std::is_assignable_v<COleDateTime&, double>);
}

// ---- Counts ----

struct CountCase {
    DATE count;
    Fields fields;
};

constexpr CountCase knownCounts[] = {
    {0, {1899, 12, 30, 0, 0, 0}},
    {0.5, {1899, 12, 30, 12, 0, 0}},
    {1, {1899, 12, 31, 0, 0, 0}},
    {2, {1900, 1, 1, 0, 0, 0}},
    {60, {1900, 2, 28, 0, 0, 0}},
    {61, {1900, 3, 1, 0, 0, 0}},
    {25569, {1970, 1, 1, 0, 0, 0}},
    {36585.25, {2000, 2, 29, 6, 0, 0}},
    {38047, {2004, 3, 1, 0, 0, 0}},
    {38051.75, {2004, 3, 5, 18, 0, 0}},
    {73110, {2100, 3, 1, 0, 0, 0}},
    {-53688, {1753, 1, 1, 0, 0, 0}},
    {-1, {1899, 12, 29, 0, 0, 0}},
    {-1.25, {1899, 12, 29, 6, 0, 0}},
    {-1.75, {1899, 12, 29, 18, 0, 0}},
    {-2.5, {1899, 12, 28, 12, 0, 0}},
    {-109512.125, {1600, 2, 29, 3, 0, 0}},
    {firstDay, {100, 1, 1, 0, 0, 0}},
    {firstDay - 0.75, {100, 1, 1, 18, 0, 0}},
    {lastDay, {9999, 12, 31, 0, 0, 0}},
    {lastDay + 0.75, {9999, 12, 31, 18, 0, 0}},
};

TEST(OleDateTimeFromCount, KeepsTheCountAndReadsItsFields) {
    for (const CountCase& each : knownCounts) {
        SCOPED_TRACE(each.count);
        expectCount(COleDateTime(each.count), each.count);
        EXPECT_EQ(read(COleDateTime(each.count)), each.fields);
    }
}

TEST(OleDateTimeFromFields, HasTheKnownCount) {
    for (const CountCase& each : knownCounts) {
        SCOPED_TRACE(each.count);
        expectCount(made(each.fields), each.count);
    }
}

TEST(OleDateTimeFromCount, BetweenDay0AndItsNeighboursTheFractionCountsForwardOnBothSides) {
    EXPECT_EQ(read(COleDateTime(-0.25)), (Fields{1899, 12, 30, 6, 0, 0}));
    EXPECT_EQ(read(COleDateTime(0.25)), (Fields{1899, 12, 30, 6, 0, 0}));
    EXPECT_EQ(COleDateTime(-0.25).m_dt, -0.25);
    EXPECT_EQ(read(COleDateTime(-0.0)), (Fields{1899, 12, 30, 0, 0, 0}));
}

TEST(OleDateTimeFromCount, IsReadRoundedToTheSecond) {
    const CountCase cases[] = {
        {38051 + 0.49 * second, {2004, 3, 5, 0, 0, 0}},
        {38051 + 0.51 * second, {2004, 3, 5, 0, 0, 1}},
        {38051 + 59.51 * second, {2004, 3, 5, 0, 1, 0}},
        {38051 + 3599.51 * second, {2004, 3, 5, 1, 0, 0}},
        {38051 + 86399.49 * second, {2004, 3, 5, 23, 59, 59}},
        {38051 + 86399.9 * second, {2004, 3, 6, 0, 0, 0}},
        {-86399.9 * second, {1899, 12, 31, 0, 0, 0}},
        {-1 - 0.51 * second, {1899, 12, 29, 0, 0, 1}},
        {-1 - 86399.49 * second, {1899, 12, 29, 23, 59, 59}},
        {-1 - 86399.9 * second, {1899, 12, 30, 0, 0, 0}},
        {-2 - 86399.9 * second, {1899, 12, 29, 0, 0, 0}},
        {36890 + 86399.9 * second, {2000, 12, 31, 0, 0, 0}},
        {36891 + 86399.9 * second, {2001, 1, 1, 0, 0, 0}},
        {firstDay - 86399.9 * second, {100, 1, 2, 0, 0, 0}},
        {lastDay + 86399.49 * second, {9999, 12, 31, 23, 59, 59}},
    };
    for (const CountCase& each : cases) {
        SCOPED_TRACE(testing::Message() << std::hexfloat << each.count);
        expectCount(COleDateTime(each.count), each.count);
        EXPECT_EQ(read(COleDateTime(each.count)), each.fields);
    }
}

TEST(OleDateTimeFromCount, BeyondTheRangeAndNotFiniteIsInvalid) {
    for (const DATE count : {DATE{firstDay - 1}, DATE{lastDay + 1}, lastDay + 86399.9 * second,
                             std::nextafter(lastDay + 1.0, 0.0), DATE{leastInt}, DATE{mostInt}, 1e10, -1e10,
                             1e300, -1e300, infinity, -infinity, noNumber, -noNumber}) {
        SCOPED_TRACE(count);
        expectInvalid(COleDateTime(count));
    }
}

TEST(OleDateTimeFromCount, TheLeastOfTheRangeIsJustAboveTheDayBeforeIt) {
    const DATE least = std::nextafter(firstDay - 1.0, 0.0);
    expectCount(COleDateTime(least), least);
    EXPECT_EQ(read(COleDateTime(least)), (Fields{100, 1, 2, 0, 0, 0}));
}

TEST(OleDateTimeFromCount, ACountBeyondTheRangeThatIsPutInByHandHasNoFields) {
    COleDateTime dateTime;
    for (const DATE count : {DATE{firstDay - 1}, DATE{lastDay + 1}, 1e300, infinity, -infinity, noNumber}) {
        SCOPED_TRACE(count);
        dateTime.m_dt = count;
        EXPECT_EQ(dateTime.GetStatus(), COleDateTime::valid);
        expectNoFields(dateTime);
    }
}

// The seconds from day 0 to a count, the fraction counted forward.
double secondsFromDay0(DATE count) {
    return std::trunc(count) * 86400 + std::fabs(count - std::trunc(count)) * 86400;
}

TEST(OleDateTimeFromCount, AnyCountOfTheRangeReadsAsTheNearestSecond) {
    std::mt19937_64 random(20040229);
    std::uniform_real_distribution<double> counts(firstDay, lastDay);
    constexpr double precision = 1e-4;  // of a count of 7 digits, in seconds
    for (int i = 0; i < 200'000; ++i) {
        const DATE count = counts(random);
        const COleDateTime dateTime(count);
        ASSERT_EQ(dateTime.GetStatus(), COleDateTime::valid) << count;
        const COleDateTime rounded = made(read(dateTime));
        ASSERT_EQ(rounded.GetStatus(), COleDateTime::valid) << count << " reads " << read(dateTime);
        ASSERT_NEAR(secondsFromDay0(rounded.m_dt), secondsFromDay0(count), 0.5 + precision)
            << count << " reads " << read(dateTime);
    }
}

TEST(OleDateTimeFromCount, AnyBitsAreADateWithinTheRangeOrInvalid) {
    std::mt19937_64 random(20040229);
    int valid = 0;
    for (int i = 0; i < 200'000; ++i) {
        const std::uint64_t bits = random();
        double count = 0;
        std::memcpy(&count, &bits, sizeof count);
        const COleDateTime dateTime(count);
        if (count > firstDay - 1 && count < lastDay + 0.99) {
            ++valid;
            ASSERT_EQ(dateTime.GetStatus(), COleDateTime::valid) << count;
            ASSERT_EQ(made(read(dateTime)).GetStatus(), COleDateTime::valid) << count;
        } else if (!(count < lastDay + 1)) {
            ASSERT_EQ(dateTime.GetStatus(), COleDateTime::invalid) << count;
        }
    }
    EXPECT_GT(valid, 1000);
}

// ---- Fields ----

TEST(OleDateTimeFromFields, EachValueOfEachFieldComesBack) {
    const Fields start = {2004, 3, 5, 14, 7, 9};
    const auto expectBack = [](const Fields& fields) { EXPECT_EQ(read(made(fields)), fields); };
    Fields fields = start;
    for (fields.year = 100; fields.year <= 9999; ++fields.year)
        expectBack(fields);
    fields = start;
    for (fields.month = 1; fields.month <= 12; ++fields.month)
        expectBack(fields);
    fields = start;
    for (fields.day = 1; fields.day <= 31; ++fields.day)
        expectBack(fields);
    fields = start;
    for (fields.hour = 0; fields.hour <= 23; ++fields.hour)
        expectBack(fields);
    fields = start;
    for (fields.minute = 0; fields.minute <= 59; ++fields.minute)
        expectBack(fields);
    fields = start;
    for (fields.second = 0; fields.second <= 59; ++fields.second)
        expectBack(fields);
}

TEST(OleDateTimeFromFields, WhatNoCalendarHasIsInvalid) {
    const Fields table[] = {
        {2003, 2, 29, 0, 0, 0},   {1900, 2, 29, 0, 0, 0},   {2100, 2, 29, 0, 0, 0},   {2004, 2, 30, 0, 0, 0},
        {2004, 4, 31, 0, 0, 0},   {2004, 6, 31, 0, 0, 0},   {2004, 9, 31, 0, 0, 0},   {2004, 11, 31, 0, 0, 0},
        {2004, 12, 32, 0, 0, 0},  {2004, 1, 0, 0, 0, 0},    {2004, 1, -1, 0, 0, 0},   {2004, 0, 1, 0, 0, 0},
        {2004, 13, 1, 0, 0, 0},   {2004, -1, 1, 0, 0, 0},   {2004, 1, 1, -1, 0, 0},   {2004, 1, 1, 24, 0, 0},
        {2004, 1, 1, 0, -1, 0},   {2004, 1, 1, 0, 60, 0},   {2004, 1, 1, 0, 0, -1},   {2004, 1, 1, 0, 0, 60},
        {99, 12, 31, 23, 59, 59}, {10000, 1, 1, 0, 0, 0},   {0, 1, 1, 0, 0, 0},       {4, 1, 1, 0, 0, 0},
        {-2004, 1, 1, 0, 0, 0},   {mostInt, 1, 1, 0, 0, 0}, {leastInt, 1, 1, 0, 0, 0}};
    for (const Fields& fields : table) {
        SCOPED_TRACE(testing::Message() << fields);
        expectInvalid(made(fields));
    }
}

TEST(OleDateTimeFromFields, ExtremeNumbersInAnyFieldAreInvalid) {
    for (const int number : {leastInt, mostInt}) {
        int fields[6] = {2004, 3, 5, 14, 7, 9};
        for (int& field : fields) {
            const int before = field;
            field = number;
            expectInvalid(COleDateTime(fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]));
            field = before;
        }
    }
}

TEST(OleDateTimeFromFields, TheEndsOfTheRangeComeBack) {
    for (const Fields& fields : {Fields{100, 1, 1, 0, 0, 0}, Fields{100, 1, 1, 23, 59, 59},
                                 Fields{9999, 12, 31, 0, 0, 0}, Fields{9999, 12, 31, 23, 59, 59}})
        EXPECT_EQ(read(made(fields)), fields);
}

TEST(OleDateTimeFromFields, EachDayFrom1753To2399ComesBackWithAnyTimeOfDay) {
    int count = -53688;  // 1753-01-01
    for (int year = 1753; year <= 2399; ++year) {
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= nkfw::daysInMonth(year, month); ++day) {
                // A time of day that changes from day to day and passes through all seconds.
                const int time = (count + 53688) * 7919 % 86400;
                const Fields fields = {year, month, day, time / 3600, time / 60 % 60, time % 60};
                ASSERT_EQ(made({year, month, day, 0, 0, 0}).m_dt, count) << fields;
                ASSERT_EQ(read(made(fields)), fields);
                ASSERT_EQ(std::trunc(made(fields).m_dt), count) << fields;
                ++count;
            }
        }
    }
    EXPECT_EQ(count, 182623);  // 2400-01-01
}

class OleDateTimeSeconds : public testing::TestWithParam<int> {};

TEST_P(OleDateTimeSeconds, OfADayAllComeBack) {
    COleDateTime date(static_cast<DATE>(GetParam()));
    Fields fields = read(date);
    for (int time = 0; time < 86400; ++time) {
        fields.hour = time / 3600;
        fields.minute = time / 60 % 60;
        fields.second = time % 60;
        const COleDateTime dateTime = made(fields);
        ASSERT_EQ(read(dateTime), fields);
        // Made from its count alone, and from one that lost its last bits.
        const DATE count = dateTime.m_dt;
        ASSERT_EQ(read(COleDateTime(count)), fields);
        ASSERT_EQ(read(COleDateTime(std::nextafter(count, 2 * count))), fields);
        const bool isMidnightBeforeDay0 = count < 0 && time == 0;
        if (!isMidnightBeforeDay0) {
            ASSERT_EQ(read(COleDateTime(std::nextafter(count, 0.0))), fields);
        }
    }
}

// A negative count a little nearer to 0 than a whole day is the very end of the day behind it, and not close
// to that midnight at all.
TEST(OleDateTimeFromCount, JustAboveANegativeMidnightIsTheEndOfTheNextDay) {
    EXPECT_EQ(read(COleDateTime(-2.0)), (Fields{1899, 12, 28, 0, 0, 0}));
    EXPECT_EQ(read(COleDateTime(-2.0 + second)), (Fields{1899, 12, 29, 23, 59, 59}));
    EXPECT_EQ(read(COleDateTime(std::nextafter(-2.0, 0.0))), (Fields{1899, 12, 30, 0, 0, 0}));
    EXPECT_EQ(read(COleDateTime(std::nextafter(-2.0, -3.0))), (Fields{1899, 12, 28, 0, 0, 0}));
}

std::string nameOfDay(const testing::TestParamInfo<int>& info) {
    const nkfw::CalendarDate date = nkfw::dateOf(info.param + nkfw::dayNumber(1899, 12, 30));
    return "Of" + std::to_string(date.year) + "_" + std::to_string(date.month) + "_" +
           std::to_string(date.day);
}

INSTANTIATE_TEST_SUITE_P(SelectedDays, OleDateTimeSeconds,
                         testing::Values(firstDay, -53688, -2, -1, 0, 1, 38051, lastDay), nameOfDay);

TEST(OleDateTime, WeekdaysFollowEachOther) {
    EXPECT_EQ(COleDateTime(1899, 12, 30, 0, 0, 0).GetDayOfWeek(), 7);
    EXPECT_EQ(COleDateTime(2004, 2, 29, 23, 59, 59).GetDayOfWeek(), 1);
    EXPECT_EQ(COleDateTime(2004, 3, 5, 0, 0, 0).GetDayOfWeek(), 6);
    EXPECT_EQ(COleDateTime(1753, 1, 1, 0, 0, 0).GetDayOfWeek(), 2);
    EXPECT_EQ(COleDateTime(100, 1, 1, 0, 0, 0).GetDayOfWeek(), 6);
    EXPECT_EQ(COleDateTime(9999, 12, 31, 0, 0, 0).GetDayOfWeek(), 6);
    int weekday = 6;
    for (int day = firstDay; day <= lastDay; ++day) {
        ASSERT_EQ(COleDateTime(static_cast<DATE>(day)).GetDayOfWeek(), weekday) << day;
        weekday = weekday == 7 ? 1 : weekday + 1;
    }
}

TEST(OleDateTime, DaysOfTheYearAreCountedFrom1) {
    EXPECT_EQ(COleDateTime(2004, 1, 1, 0, 0, 0).GetDayOfYear(), 1);
    EXPECT_EQ(COleDateTime(2004, 2, 29, 0, 0, 0).GetDayOfYear(), 60);
    EXPECT_EQ(COleDateTime(2004, 12, 31, 23, 59, 59).GetDayOfYear(), 366);
    EXPECT_EQ(COleDateTime(2003, 3, 1, 0, 0, 0).GetDayOfYear(), 60);
    EXPECT_EQ(COleDateTime(1900, 12, 31, 0, 0, 0).GetDayOfYear(), 365);
    EXPECT_EQ(COleDateTime(100, 1, 1, 0, 0, 0).GetDayOfYear(), 1);
    EXPECT_EQ(COleDateTime(1899, 12, 30, 0, 0, 0).GetDayOfYear(), 364);
}

// ---- Setting ----

TEST(OleDateTimeSetting, GivesTheStatusAndMakesAnInvalidDateValid) {
    COleDateTime dateTime(2003, 2, 29, 0, 0, 0);
    EXPECT_EQ(dateTime.SetDateTime(2004, 2, 29, 14, 7, 9), COleDateTime::valid);
    EXPECT_EQ(read(dateTime), (Fields{2004, 2, 29, 14, 7, 9}));
    EXPECT_EQ(dateTime.SetDateTime(2003, 2, 29, 14, 7, 9), COleDateTime::invalid);
    expectInvalid(dateTime);
}

TEST(OleDateTimeSetting, ADateIsAtMidnight) {
    COleDateTime dateTime(2004, 3, 5, 14, 7, 9);
    EXPECT_EQ(dateTime.SetDate(1753, 1, 31), COleDateTime::valid);
    EXPECT_EQ(read(dateTime), (Fields{1753, 1, 31, 0, 0, 0}));
    EXPECT_EQ(dateTime.SetDate(2004, 4, 31), COleDateTime::invalid);
    expectInvalid(dateTime);
}

TEST(OleDateTimeSetting, ATimeOfDayIsOnDay0) {
    COleDateTime dateTime(2004, 3, 5, 14, 7, 9);
    EXPECT_EQ(dateTime.SetTime(23, 59, 58), COleDateTime::valid);
    EXPECT_EQ(read(dateTime), (Fields{1899, 12, 30, 23, 59, 58}));
    EXPECT_EQ(dateTime.SetTime(24, 0, 0), COleDateTime::invalid);
    expectInvalid(dateTime);
}

TEST(OleDateTimeSetting, MakesANullDateValid) {
    COleDateTime dateTime;
    dateTime.SetStatus(COleDateTime::null);
    EXPECT_EQ(dateTime.SetDate(2004, 3, 5), COleDateTime::valid);
    expectCount(dateTime, 38051);
}

// ---- The system clock ----

TEST(OleDateTimeFromClockTime, IsLocal) {
    const frameworktest::TimeZone zone("WINTER-1SUMMER,M3.5.0,M10.5.0/3");
    EXPECT_EQ(read(COleDateTime(std::time_t{0})), (Fields{1970, 1, 1, 1, 0, 0}));
    EXPECT_EQ(read(COleDateTime(std::time_t{-1})), (Fields{1970, 1, 1, 0, 59, 59}));
    EXPECT_EQ(read(COleDateTime(std::time_t{1080435599})), (Fields{2004, 3, 28, 1, 59, 59}));
    EXPECT_EQ(read(COleDateTime(std::time_t{1080435600})), (Fields{2004, 3, 28, 3, 0, 0}));
}

TEST(OleDateTimeFromClockTime, BeyondTheRangeIsInvalid) {
    const frameworktest::TimeZone zone("UTC0");
    constexpr std::time_t first = -59011459200;
    constexpr std::time_t last = 253402300799;
    EXPECT_EQ(read(COleDateTime(first)), (Fields{100, 1, 1, 0, 0, 0}));
    EXPECT_EQ(read(COleDateTime(last)), (Fields{9999, 12, 31, 23, 59, 59}));
    constexpr std::time_t lastOfTheCLibrary = 67768036191676799;  // its count of years ends
    for (const std::time_t seconds :
         {first - 1, last + 1, lastOfTheCLibrary, lastOfTheCLibrary + 1,
          std::numeric_limits<std::time_t>::max(), std::numeric_limits<std::time_t>::min()}) {
        SCOPED_TRACE(seconds);
        expectInvalid(COleDateTime(seconds));
    }
}

std::time_t theTime = 0;

std::time_t toldTime() noexcept {
    return theTime;
}

class OleDateTimeNow : public testing::Test {
  protected:
    void SetUp() override { nkfw::setClockSource(&toldTime); }
    void TearDown() override { nkfw::setClockSource(nullptr); }

  private:
    frameworktest::TimeZone m_zone{"EAST-1"};
};

TEST_F(OleDateTimeNow, IsTheLocalTimeOfTheClock) {
    theTime = 1078495629;
    const COleDateTime now = COleDateTime::GetCurrentTime();
    EXPECT_EQ(now.GetStatus(), COleDateTime::valid);
    EXPECT_EQ(read(now), (Fields{2004, 3, 5, 15, 7, 9}));
    EXPECT_EQ(now, COleDateTime(theTime));
}

TEST_F(OleDateTimeNow, OfAClockThatCannotBeReadIsInvalid) {
    theTime = -1;
    expectInvalid(COleDateTime::GetCurrentTime());
}

TEST_F(OleDateTimeNow, BeyondTheRangeIsInvalid) {
    for (const std::time_t seconds : {std::time_t{253402300800}, std::time_t{67768036191676799},
                                      std::numeric_limits<std::time_t>::max()}) {
        theTime = seconds;
        SCOPED_TRACE(seconds);
        expectInvalid(COleDateTime::GetCurrentTime());
    }
}

// A zone file of the C library (Greenwich time) whose clock counts the leap second at the end of June 1972.
void writeZoneWithLeapSecond(const std::string& path) {
    constexpr char zone[] =
        "TZif\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
        "\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\1\0\0\0\4"  // one leap second, one kind of time, its name
        "\0\0\0\0\0\0"
        "UTC\0"
        "\x04\xB2\x58\0\0\0\0\1";
    std::ofstream(path, std::ios::binary).write(zone, sizeof zone - 1);
}

TEST_F(OleDateTimeNow, InALeapSecondIsTheSecondBefore) {
    const frameworktest::TestFolder folder;
    const std::string path = folder.path("zone");
    writeZoneWithLeapSecond(path);
    const frameworktest::TimeZone zone((":" + path).c_str());
    theTime = 78796800;
    std::tm fields{};
    ASSERT_TRUE(nkfw::localFields(theTime, fields));
    ASSERT_EQ(fields.tm_sec, 60);
    EXPECT_EQ(read(COleDateTime(theTime)), (Fields{1972, 6, 30, 23, 59, 59}));
    EXPECT_EQ(read(COleDateTime::GetCurrentTime()), (Fields{1972, 6, 30, 23, 59, 59}));
    EXPECT_EQ(read(COleDateTime(theTime + 1)), (Fields{1972, 7, 1, 0, 0, 0}));
}

// ---- Comparison ----

TEST(OleDateTimeComparison, FollowsTime) {
    // In the order of time; the counts of one day before day 0 fall while its hours rise.
    const DATE counts[] = {firstDay,
                           firstDay - 0.25,
                           firstDay + 1,
                           -2,
                           -2.5,
                           -2.75,
                           -1,
                           -1.25,
                           -1.75,
                           0,
                           0.25,
                           -0.75,
                           1,
                           1.5,
                           38051,
                           38051.5,
                           38051.75,
                           lastDay,
                           lastDay + 0.75};
    for (std::size_t i = 0; i < std::size(counts); ++i) {
        for (std::size_t j = 0; j < std::size(counts); ++j) {
            const COleDateTime a(counts[i]);
            const COleDateTime b(counts[j]);
            SCOPED_TRACE(testing::Message() << counts[i] << " and " << counts[j]);
            EXPECT_EQ(a == b, i == j);
            EXPECT_EQ(a != b, i != j);
            EXPECT_EQ(a < b, i < j);
            EXPECT_EQ(a > b, i > j);
            EXPECT_EQ(a <= b, i <= j);
            EXPECT_EQ(a >= b, i >= j);
        }
    }
}

TEST(OleDateTimeComparison, BothCountsOfATimeOnDay0AreEqual) {
    EXPECT_TRUE(COleDateTime(-0.25) == COleDateTime(0.25));
    EXPECT_FALSE(COleDateTime(-0.25) < COleDateTime(0.25));
    EXPECT_TRUE(COleDateTime(-0.25) <= COleDateTime(0.25));
    EXPECT_TRUE(COleDateTime(-0.0) == COleDateTime());
}

TEST(OleDateTimeComparison, IsNotRounded) {
    const COleDateTime whole(38051.0);
    const COleDateTime more(std::nextafter(38051.0, 40000.0));
    EXPECT_EQ(read(whole), read(more));
    EXPECT_TRUE(whole != more && whole < more);
    const COleDateTime early(-38051.0);
    const COleDateTime later(std::nextafter(-38051.0, -40000.0));
    EXPECT_TRUE(early != later && early < later);
}

TEST(OleDateTimeComparison, EqualDatesHaveOneStatus) {
    for (const COleDateTime::DateTimeStatus one : statuses) {
        for (const COleDateTime::DateTimeStatus other : statuses) {
            COleDateTime a(2004, 3, 5, 0, 0, 0);
            COleDateTime b(2004, 3, 5, 0, 0, 0);
            a.SetStatus(one);
            b.SetStatus(other);
            EXPECT_EQ(a == b, one == other);
            EXPECT_EQ(a != b, one != other);
        }
    }
}

TEST(OleDateTimeComparison, WhatIsNotValidHasNoOrder) {
    const COleDateTime date(2004, 3, 5, 0, 0, 0);
    for (const COleDateTime::DateTimeStatus status : {COleDateTime::invalid, COleDateTime::null}) {
        COleDateTime none;
        none.SetStatus(status);
        EXPECT_FALSE(none < date || none <= date || none > date || none >= date);
        EXPECT_FALSE(date < none || date <= none || date > none || date >= none);
        EXPECT_FALSE(none < none || none <= none || none > none || none >= none);
    }
}

}  // namespace
