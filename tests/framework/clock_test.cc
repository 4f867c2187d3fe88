#include <nkfw/Clock.h>

#include <ctime>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "TimeZone.h"

namespace {

std::time_t theTime = 0;

std::time_t toldTime() noexcept {
    return theTime;
}

// Reads the clock in a time zone one hour east of Greenwich, set for one test.
class ClockInTheEast : public testing::Test {
  protected:
    void SetUp() override { nkfw::setClockSource(&toldTime); }
    void TearDown() override { nkfw::setClockSource(nullptr); }

  private:
    frameworktest::TimeZone m_zone{"EAST-1"};
};

struct Row {
    std::time_t seconds;
    nkfw::LocalTime local;
};

TEST_F(ClockInTheEast, TellsLocalDateAndTime) {
    const Row table[] = {
        {0, {1970, 1, 1, 1, 0, 0}},
        {1078099199, {2004, 3, 1, 0, 59, 59}},
        {1078095600, {2004, 3, 1, 0, 0, 0}},
        {1078095599, {2004, 2, 29, 23, 59, 59}},
        {946681199, {1999, 12, 31, 23, 59, 59}},
        {4102441200, {2100, 1, 1, 0, 0, 0}},
        {-3601, {1969, 12, 31, 23, 59, 59}},
    };
    for (const Row& row : table) {
        theTime = row.seconds;
        nkfw::LocalTime now{};
        ASSERT_TRUE(nkfw::readLocalTime(now)) << row.seconds;
        EXPECT_EQ(now.year, row.local.year) << row.seconds;
        EXPECT_EQ(now.month, row.local.month) << row.seconds;
        EXPECT_EQ(now.day, row.local.day) << row.seconds;
        EXPECT_EQ(now.hour, row.local.hour) << row.seconds;
        EXPECT_EQ(now.minute, row.local.minute) << row.seconds;
        EXPECT_EQ(now.second, row.local.second) << row.seconds;
    }
}

TEST_F(ClockInTheEast, AClockThatCannotBeReadGivesFalse) {
    theTime = -1;
    nkfw::LocalTime now{};
    EXPECT_FALSE(nkfw::readLocalTime(now));
}

TEST_F(ClockInTheEast, ATimeBeyondEveryCalendarGivesFalseAndLeavesTheReceiver) {
    constexpr std::time_t secondsOfAYear = 31556952;
    constexpr std::time_t beyond[] = {
        std::numeric_limits<std::time_t>::max(),
        // The calendar holds this year as a count from 1900, but not as a year.
        (std::numeric_limits<int>::max() - 70LL) * secondsOfAYear,
    };
    for (const std::time_t seconds : beyond) {
        theTime = seconds;
        nkfw::LocalTime now{1, 2, 3, 4, 5, 6};
        EXPECT_FALSE(nkfw::readLocalTime(now)) << seconds;
        EXPECT_EQ(now.year, 1);
        EXPECT_EQ(now.second, 6);
    }
}

struct FieldsCase {
    const char* zone;
    std::time_t seconds;
    // Second, minute, hour, day, month - 1, year - 1900, weekday, day of the year, summer time.
    std::tm fields;
};

TEST(LocalFields, FollowTheTimeZone) {
    constexpr const char* summerZone = "WINTER-1SUMMER,M3.5.0,M10.5.0/3";
    const FieldsCase cases[] = {
        {"UTC0", 0, {0, 0, 0, 1, 0, 70, 4, 0, 0, 0, nullptr}},
        {"UTC0", -1, {59, 59, 23, 31, 11, 69, 3, 364, 0, 0, nullptr}},
        {"UTC0", 951782400, {0, 0, 0, 29, 1, 100, 2, 59, 0, 0, nullptr}},
        {"EAST-1", 0, {0, 0, 1, 1, 0, 70, 4, 0, 0, 0, nullptr}},
        {"WEST+5:30", 0, {0, 30, 18, 31, 11, 69, 3, 364, 0, 0, nullptr}},
        {summerZone, 1080435599, {59, 59, 1, 28, 2, 104, 0, 87, 0, 0, nullptr}},
        {summerZone, 1080435600, {0, 0, 3, 28, 2, 104, 0, 87, 1, 0, nullptr}},
        {"UTC0", -67768040609740800, {0, 0, 0, 1, 0, std::numeric_limits<int>::min(), 4, 0, 0, 0, nullptr}},
    };
    for (const FieldsCase& each : cases) {
        SCOPED_TRACE(std::string(each.zone) + " " + std::to_string(each.seconds));
        const frameworktest::TimeZone zone(each.zone);
        std::tm fields{};
        ASSERT_TRUE(nkfw::localFields(each.seconds, fields));
        EXPECT_EQ(fields.tm_sec, each.fields.tm_sec);
        EXPECT_EQ(fields.tm_min, each.fields.tm_min);
        EXPECT_EQ(fields.tm_hour, each.fields.tm_hour);
        EXPECT_EQ(fields.tm_mday, each.fields.tm_mday);
        EXPECT_EQ(fields.tm_mon, each.fields.tm_mon);
        EXPECT_EQ(fields.tm_year, each.fields.tm_year);
        EXPECT_EQ(fields.tm_wday, each.fields.tm_wday);
        EXPECT_EQ(fields.tm_yday, each.fields.tm_yday);
        EXPECT_EQ(fields.tm_isdst, each.fields.tm_isdst);
    }
}

TEST(LocalFields, OfATimeBeyondEveryCalendarAreNoneAndTheReceiverStays) {
    for (const std::time_t seconds :
         {std::numeric_limits<std::time_t>::max(), std::numeric_limits<std::time_t>::min()}) {
        std::tm fields{};
        fields.tm_year = 104;
        fields.tm_sec = 7;
        EXPECT_FALSE(nkfw::localFields(seconds, fields)) << seconds;
        EXPECT_EQ(fields.tm_year, 104);
        EXPECT_EQ(fields.tm_sec, 7);
    }
}

TEST(Clock, SettingASourceGivesTheOneBefore) {
    EXPECT_EQ(nkfw::setClockSource(&toldTime), nullptr);
    EXPECT_EQ(nkfw::setClockSource(nullptr), &toldTime);
    EXPECT_EQ(nkfw::setClockSource(nullptr), nullptr);
}

TEST(Clock, WithoutASourceItIsTheSystemClock) {
    nkfw::setClockSource(&toldTime);
    nkfw::setClockSource(nullptr);
    nkfw::LocalTime now{};
    ASSERT_TRUE(nkfw::readLocalTime(now));
    EXPECT_GE(now.year, 2020);
    EXPECT_TRUE(now.month >= 1 && now.month <= 12);
    EXPECT_TRUE(now.day >= 1 && now.day <= 31);
    EXPECT_TRUE(now.hour >= 0 && now.hour <= 23);
    EXPECT_TRUE(now.minute >= 0 && now.minute <= 59);
    EXPECT_TRUE(now.second >= 0 && now.second <= 60);
}

}  // namespace
