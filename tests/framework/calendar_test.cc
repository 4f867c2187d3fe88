#include <nkfw/Calendar.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

constexpr int leastInt = std::numeric_limits<int>::min();
constexpr int mostInt = std::numeric_limits<int>::max();

// What a wall calendar says, without any rule.
constexpr int commonYear[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr int leapYear[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

std::string textOf(const nkfw::CalendarDate& date) {
    return std::to_string(date.year) + "-" + std::to_string(date.month) + "-" + std::to_string(date.day);
}

// ---- Years and months ----

TEST(Calendar, LeapYearsAreAsKnown) {
    for (const int year : {1600, 1604, 1752, 1756, 1896, 1904, 1996, 2000, 2004,        2024,    2096,
                           2104, 2400, 9996, 0,    -4,   -400, 4,    400,  mostInt - 3, leastInt})
        EXPECT_TRUE(nkfw::isLeapYear(year)) << year;
    for (const int year :
         {1601, 1602, 1603, 1700, 1753, 1800, 1900, 1999, 2001, 2002, 2003, 2005,    2023,        2100,
          2200, 2300, 9999, 1,    -1,   -2,   -3,   -100, 100,  200,  300,  mostInt, leastInt + 1})
        EXPECT_FALSE(nkfw::isLeapYear(year)) << year;
}

TEST(Calendar, TheLeapYearsFrom1600To2400AreEachFourthButThreeCenturiesOfFour) {
    constexpr int withoutLeapDay[] = {1700, 1800, 1900, 2100, 2200, 2300};
    int next = 1600;
    for (int year = 1600; year <= 2400; ++year) {
        const bool isNext = year == next;
        if (isNext) next += 4;
        const bool excepted = std::count(std::begin(withoutLeapDay), std::end(withoutLeapDay), year) != 0;
        EXPECT_EQ(nkfw::isLeapYear(year), isNext && !excepted) << year;
    }
}

TEST(Calendar, MonthsHaveTheirLengths) {
    for (int month = 1; month <= 12; ++month) {
        for (const int year : {1753, 1900, 2003, 2100, 9999, -1})
            EXPECT_EQ(nkfw::daysInMonth(year, month), commonYear[month - 1]) << year << '-' << month;
        for (const int year : {1756, 1600, 2000, 2004, 2400, 0})
            EXPECT_EQ(nkfw::daysInMonth(year, month), leapYear[month - 1]) << year << '-' << month;
    }
}

TEST(Calendar, TheTableSumsUpTheMonthsOfACommonYear) {
    int sum = 0;
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(nkfw::daysBeforeMonth[month - 1], sum) << month;
        sum += commonYear[month - 1];
    }
    EXPECT_EQ(nkfw::daysBeforeMonth[12], 365);
    EXPECT_EQ(std::size(nkfw::daysBeforeMonth), 13U);
}

TEST(Calendar, ADateHasADayOfItsMonth) {
    for (int month = -1; month <= 14; ++month) {
        for (int day = -1; day <= 33; ++day) {
            const bool isMonth = month >= 1 && month <= 12;
            const bool inCommon = isMonth && day >= 1 && day <= commonYear[month - 1];
            const bool inLeap = isMonth && day >= 1 && day <= leapYear[month - 1];
            EXPECT_EQ(nkfw::isDate(1900, month, day), inCommon) << month << '-' << day;
            EXPECT_EQ(nkfw::isDate(2004, month, day), inLeap) << month << '-' << day;
        }
    }
    EXPECT_FALSE(nkfw::isDate(2004, leastInt, 1));
    EXPECT_FALSE(nkfw::isDate(2004, mostInt, 1));
    EXPECT_FALSE(nkfw::isDate(2004, 1, leastInt));
    EXPECT_FALSE(nkfw::isDate(2004, 1, mostInt));
}

// ---- Days ----

struct KnownDay {
    nkfw::CalendarDate date;
    std::int64_t number;
};

TEST(Calendar, KnownDatesHaveTheirNumbers) {
    const KnownDay table[] = {
        {{1970, 1, 1}, 0},
        {{1969, 12, 31}, -1},
        {{1, 1, 1}, -719162},
        {{100, 1, 1}, -683003},
        {{1582, 10, 15}, -141427},
        {{1600, 2, 29}, -135081},
        {{1753, 1, 1}, -79257},
        {{1899, 12, 30}, -25569},
        {{1900, 2, 28}, -25509},
        {{1900, 3, 1}, -25508},
        {{2000, 2, 29}, 11016},
        {{2000, 12, 31}, 11322},
        {{2004, 3, 1}, 12478},
        {{2038, 1, 19}, 24855},
        {{2100, 3, 1}, 47541},
        {{2399, 12, 31}, 157053},
        {{9999, 12, 31}, 2932896},
        {{10000, 1, 1}, 2932897},
        {{0, 1, 1}, -719528},
        {{0, 2, 29}, -719469},
        {{0, 12, 31}, -719163},
        {{-1, 12, 31}, -719529},
        {{-400, 3, 1}, -865565},
        {{mostInt, 12, 31}, 784351576776},
        {{leastInt, 1, 1}, -784353015833},
    };
    for (const KnownDay& row : table) {
        SCOPED_TRACE(textOf(row.date));
        EXPECT_EQ(nkfw::dayNumber(row.date.year, row.date.month, row.date.day), row.number);
        EXPECT_EQ(textOf(nkfw::dateOf(row.number)), textOf(row.date));
    }
}

TEST(Calendar, EachDayFrom1600To2400IsOneMoreThanTheDayBefore) {
    constexpr int withoutLeapDay[] = {1700, 1800, 1900, 2100, 2200, 2300};
    std::int64_t number = -135140;  // 1600-01-01
    for (int year = 1600; year <= 2400; ++year) {
        const bool excepted = std::count(std::begin(withoutLeapDay), std::end(withoutLeapDay), year) != 0;
        const int(&lengths)[12] = year % 4 == 0 && !excepted ? leapYear : commonYear;
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= lengths[month - 1]; ++day) {
                const nkfw::CalendarDate date = {year, month, day};
                ASSERT_EQ(nkfw::dayNumber(year, month, day), number) << textOf(date);
                ASSERT_TRUE(nkfw::dateOf(number) == date) << textOf(date);
                ++number;
            }
        }
    }
    EXPECT_EQ(number, 157420);  // 2401-01-01
}

TEST(Calendar, EachDayOf3MillionAroundTheEpochComesBackAndIsThatOfTheStandardLibrary) {
    constexpr int most = 3'000'000;
    for (int number = -most; number <= most; ++number) {
        const nkfw::CalendarDate date = nkfw::dateOf(number);
        const std::chrono::year_month_day other{std::chrono::sys_days{std::chrono::days{number}}};
        const bool same = date.year == static_cast<int>(other.year()) &&
                          date.month == static_cast<int>(static_cast<unsigned>(other.month())) &&
                          date.day == static_cast<int>(static_cast<unsigned>(other.day()));
        if (!same || nkfw::dayNumber(date.year, date.month, date.day) != number) {
            FAIL() << number << " is " << textOf(date);
        }
    }
}

TEST(Calendar, ADayOutsideItsMonthIsCountedOn) {
    EXPECT_EQ(nkfw::dayNumber(2003, 12, 32), nkfw::dayNumber(2004, 1, 1));
    EXPECT_EQ(nkfw::dayNumber(2004, 3, 0), nkfw::dayNumber(2004, 2, 29));
    EXPECT_EQ(nkfw::dayNumber(2003, 3, 0), nkfw::dayNumber(2003, 2, 28));
    EXPECT_EQ(nkfw::dayNumber(1970, 1, mostInt), mostInt - 1);
    EXPECT_EQ(nkfw::dayNumber(1970, 1, leastInt), std::int64_t{leastInt} - 1);
}

TEST(Calendar, DatesAreEqualInAllThreeFields) {
    constexpr nkfw::CalendarDate date = {2004, 3, 5};
    EXPECT_TRUE(date == (nkfw::CalendarDate{2004, 3, 5}));
    EXPECT_FALSE(date != (nkfw::CalendarDate{2004, 3, 5}));
    for (const nkfw::CalendarDate& other :
         {nkfw::CalendarDate{2005, 3, 5}, nkfw::CalendarDate{2004, 4, 5}, nkfw::CalendarDate{2004, 3, 6}}) {
        EXPECT_TRUE(date != other) << textOf(other);
        EXPECT_FALSE(date == other) << textOf(other);
    }
}

TEST(Calendar, IsKnownAtCompileTime) {
    static_assert(nkfw::isLeapYear(2000));
    static_assert(nkfw::daysInMonth(1900, 2) == 28);
    static_assert(nkfw::isDate(2004, 2, 29));
    static_assert(nkfw::dayNumber(2004, 3, 5) == 12482);
    static_assert(nkfw::dateOf(12482) == nkfw::CalendarDate{2004, 3, 5});
}

}  // namespace
