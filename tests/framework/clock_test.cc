#include <nkfw/Clock.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

std::time_t theTime = 0;

std::time_t toldTime() noexcept {
    return theTime;
}

// Reads the clock in a time zone one hour east of Greenwich, set for one test.
class ClockInTheEast : public testing::Test {
  protected:
    void SetUp() override {
        if (const char* const zone = std::getenv("TZ"); zone != nullptr) m_zone = zone;
        ::setenv("TZ", "EAST-1", 1);
        ::tzset();
        nkfw::setClockSource(&toldTime);
    }
    void TearDown() override {
        nkfw::setClockSource(nullptr);
        if (m_zone.empty()) {
            ::unsetenv("TZ");
        } else {
            ::setenv("TZ", m_zone.c_str(), 1);
        }
        ::tzset();
    }

  private:
    std::string m_zone;
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
