// Date-times: reading and setting their fields, and moving them by days, months, years, hours and minutes.

#include <nkdt/NkDtDateTime.h>

#include <functional>
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DateTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using namespace datetest;
using D = NkDtDateTime;

constexpr LONG kMost = std::numeric_limits<LONG>::max();
constexpr LONG kLeast = std::numeric_limits<LONG>::min();

constexpr SHORT (D::*kGetters[])() const = {&D::GetDay365, &D::GetMonth, &D::GetYear,
                                            &D::GetHour,   &D::GetMin,   &D::GetSecond};

using Change = std::function<void(D&)>;

/// What becomes of the value, with what the change is refused for.
std::string after(D value, const Change& change) {
    const ErrorPtr error = errorOf([&] { change(value); });
    std::string text = describe(value);
    if (error != nullptr) {
        text += " error " + std::to_string(error->GetErrorNumber());
        if (error->GetCauseNumber() != 0) text += " for " + std::to_string(error->GetCauseNumber());
    }
    return text;
}

std::string after(const char* text, const Change& change) {
    return after(defined(text), change);
}

// --- Reading ------------------------------------------------------------------------------------------

TEST(DateTimeFields, AreTold) {
    const D value(15, 3, 2004, 14, 7, 9);
    EXPECT_EQ(value.GetDay365(), 15);  // of the month
    EXPECT_EQ(value.GetMonth(), 3);
    EXPECT_EQ(value.GetYear(), 2004);
    EXPECT_EQ(value.GetHour(), 14);
    EXPECT_EQ(value.GetMin(), 7);
    EXPECT_EQ(value.GetSecond(), 9);
}

TEST(DateTimeFields, OfANullValueAreZeroForTheDateAndStoredForTheTime) {
    const D null = undefined(NkDtWmNull);
    EXPECT_EQ(null.GetDay365(), 0);
    EXPECT_EQ(null.GetMonth(), 0);
    EXPECT_EQ(null.GetYear(), 0);
    EXPECT_EQ(null.GetHour(), 14);
    EXPECT_EQ(null.GetMin(), 7);
    EXPECT_EQ(null.GetSecond(), 9);
    const D lost = undefined(NkDtWmDefined);  // neither missing nor null
    EXPECT_EQ(lost.GetDay365(), 5);
    EXPECT_EQ(lost.GetMonth(), 3);
    EXPECT_EQ(lost.GetYear(), 2004);
    EXPECT_EQ(lost.GetHour(), 14);
}

TEST(DateTimeFields, OfAMissingValueAreNotTold) {
    const D missing = undefined(NkDtWmMissing);
    for (const auto getter : kGetters) {
        const ErrorPtr error = expectError(NkDtErrUndefiniert, [&] { (missing.*getter)(); });
        EXPECT_STREQ(error->GetErrorText(), "Undefinierter Wert");
        EXPECT_TRUE(error->IsLogged());
    }
}

TEST(DateTimeFields, FromAnArchiveAreCutTo16Bits) {
    const D value = loaded(NkDtWmMissing, TRUE, {70000, -70000, 65536, 70000, 65540, 32768});
    EXPECT_EQ(value.GetSecond(), 70000 - 65536);
    EXPECT_EQ(value.GetMin(), 65536 - 70000);
    EXPECT_EQ(value.GetHour(), 0);
    EXPECT_EQ(value.GetYear(), 70000 - 65536);
    EXPECT_EQ(value.GetMonth(), 4);
    EXPECT_EQ(value.GetDay365(), -32768);
}

// --- Setting ------------------------------------------------------------------------------------------

struct Setter {
    const char* name;
    void (D::*set)(SHORT);
    SHORT same;
    SHORT other;
    const char* afterOther;
    SHORT refused;
    ULONG cause;
    bool marksFirst;  // defined before the number is looked at
    bool refusesMissing;
};
constexpr Setter kSetters[] = {
    {"SetDay365(SHORT)", &D::SetDay365, 5, 31, "31.03.2004 14:07:09", 32, NkDtErrTag, false, true},
    {"SetMonth(SHORT)", &D::SetMonth, 3, 12, "05.12.2004 14:07:09", 13, NkDtErrMonat, false, true},
    {"SetYear(SHORT)", &D::SetYear, 2004, 2005, "05.03.2005 14:07:09", 1752, NkDtErrJahr, false, false},
    {"SetHour(SHORT)", &D::SetHour, 14, 23, "05.03.2004 23:07:09", 25, NkDtErrStunde, true, false},
    {"SetMin(SHORT)", &D::SetMin, 7, 59, "05.03.2004 14:59:09", 60, NkDtErrMinute, true, false},
    {"SetSecond(SHORT)", &D::SetSecond, 9, 59, "05.03.2004 14:07:59", 60, NkDtErrSekunde, true, false},
};

TEST(DateTimeSetter, SetsItsFieldAndRaisesTheFlagForAnotherNumberOnly) {
    for (const Setter& each : kSetters) {
        SCOPED_TRACE(each.name);
        for (const NkDtWorkingMode mode : kStoredModes) {
            const D value = defined("05.03.2004 14:07:09", mode);
            EXPECT_EQ(after(value, [&](D& d) { (d.*each.set)(each.same); }), "05.03.2004 14:07:09 defined");
            EXPECT_EQ(after(value, [&](D& d) { (d.*each.set)(each.other); }),
                      std::string(each.afterOther) + " defined modified");
        }
    }
}

TEST(DateTimeSetter, LeavesTheFlagRaisedAfterARefusal) {
    for (const Setter& each : kSetters) {
        SCOPED_TRACE(each.name);
        D value = defined("05.03.2004 14:07:09");
        const ErrorPtr error = expectReplaced(each.cause, [&] { (value.*each.set)(each.refused); });
        EXPECT_STREQ(error->GetSourceFile(), ".\\Dtdatimf.cc");
        EXPECT_STREQ(error->GetClassText(), "NkDtDateTime");
        EXPECT_STREQ(error->GetFunctionText(), each.name);
        const char* const fields = each.cause == NkDtErrJahr ? "05.03.1752 14:07:09" : "05.03.2004 14:07:09";
        EXPECT_EQ(describe(value), std::string(fields) + " defined modified");
    }
}

TEST(DateTimeSetter, MakesANullValueDefined) {
    for (const Setter& each : kSetters) {
        SCOPED_TRACE(each.name);
        for (const NkDtWorkingMode mode : {NkDtWmNull, NkDtWmDefined}) {
            const D value = undefined(mode);
            EXPECT_EQ(after(value, [&](D& d) { (d.*each.set)(each.same); }),
                      "05.03.2004 14:07:09 defined modified");
            EXPECT_EQ(after(value, [&](D& d) { (d.*each.set)(each.other); }),
                      std::string(each.afterOther) + " defined modified");
        }
    }
}

TEST(DateTimeSetter, OfTheDateLeavesANullValueNullWhenItIsRefusedOneOfTheTimeDoesNot) {
    for (const Setter& each : kSetters) {
        SCOPED_TRACE(each.name);
        D null = undefined(NkDtWmNull);
        expectReplaced(each.cause, [&] { (null.*each.set)(each.refused); });
        EXPECT_EQ(stateOf(null), each.marksFirst ? "defined modified" : "null modified");
    }
}

TEST(DateTimeSetter, OfDayAndMonthRefusesAMissingValueAndNoOtherDoes) {
    for (const Setter& each : kSetters) {
        SCOPED_TRACE(each.name);
        D missing = undefined(NkDtWmMissing);
        if (each.refusesMissing) {
            for (const SHORT number : {each.other, each.refused}) {
                const ErrorPtr error = expectError(NkDtErrUndefiniert, [&] { (missing.*each.set)(number); });
                EXPECT_TRUE(error->IsLogged());
                EXPECT_STREQ(error->GetFunctionText(), each.name);
                EXPECT_EQ(describe(missing), "05.03.2004 14:07:09 missing");
            }
        } else {
            (missing.*each.set)(each.other);
            EXPECT_EQ(describe(missing), std::string(each.afterOther) + " defined modified");
        }
    }
}

TEST(DateTimeSetter, ChecksTheDayAgainstTheMonth) {
    const auto set = [](SHORT day) { return [day](D& d) { d.SetDay365(day); }; };
    EXPECT_EQ(after("01.02.2004", set(29)), "29.02.2004 00:00:00 defined modified");
    EXPECT_EQ(after("01.02.2003", set(29)), "01.02.2003 00:00:00 defined modified error 1 for 25");
    EXPECT_EQ(after("01.02.1900", set(29)), "01.02.1900 00:00:00 defined modified error 1 for 25");
    EXPECT_EQ(after("01.02.2000", set(29)), "29.02.2000 00:00:00 defined modified");
    EXPECT_EQ(after("01.04.2004", set(31)), "01.04.2004 00:00:00 defined modified error 1 for 25");
    EXPECT_EQ(after("01.04.2004", set(0)), "01.04.2004 00:00:00 defined modified error 1 for 25");
    EXPECT_EQ(after("01.04.2004", set(-32768)), "01.04.2004 00:00:00 defined modified error 1 for 25");
    constexpr SHORT lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (SHORT month = 1; month <= 12; ++month) {
        D value(1, month, 2003);
        value.SetDay365(lengths[month - 1]);
        EXPECT_EQ(value.GetDay365(), lengths[month - 1]);
        expectReplaced(NkDtErrTag, [&] { value.SetDay365(lengths[month - 1] + 1); });
    }
}

TEST(DateTimeSetter, OfTheMonthLowersTheDayToTheLastOne) {
    const auto set = [](SHORT month) { return [month](D& d) { d.SetMonth(month); }; };
    EXPECT_EQ(after("31.01.2004", set(2)), "29.02.2004 00:00:00 defined modified");
    EXPECT_EQ(after("31.01.2003", set(2)), "28.02.2003 00:00:00 defined modified");
    EXPECT_EQ(after("31.03.2004", set(4)), "30.04.2004 00:00:00 defined modified");
    EXPECT_EQ(after("30.04.2004", set(5)), "30.05.2004 00:00:00 defined modified");
    EXPECT_EQ(after("31.01.2004", set(1)), "31.01.2004 00:00:00 defined");
    for (const SHORT month : std::initializer_list<SHORT>{0, 13, -1, 32767, -32768})
        EXPECT_EQ(after("31.01.2004", set(month)), "31.01.2004 00:00:00 defined modified error 1 for 26");
}

TEST(DateTimeSetter, OfTheYearKeepsTheCenturyTheFirstYearAndFebruary) {
    const NoonIn2023 noon;
    const auto set = [](SHORT year) { return [year](D& d) { d.SetYear(year); }; };
    EXPECT_EQ(after("29.02.2004", set(2005)), "28.02.2005 00:00:00 defined modified");
    EXPECT_EQ(after("29.02.2004", set(2008)), "29.02.2008 00:00:00 defined modified");
    EXPECT_EQ(after("29.02.2004", set(2100)), "28.02.2100 00:00:00 defined modified");
    EXPECT_EQ(after("29.02.2004", set(99)), "28.02.2099 00:00:00 defined modified");
    EXPECT_EQ(after("29.02.2004", set(0)), "29.02.2000 00:00:00 defined modified");
    EXPECT_EQ(after("29.02.2004", set(-1)), "28.02.1999 00:00:00 defined modified");
    EXPECT_EQ(after("29.02.2004", set(4)), "29.02.2004 00:00:00 defined modified");  // as it was given
    EXPECT_EQ(after("29.02.2004", set(100)), "29.02.100 00:00:00 defined modified error 1 for 27");
    EXPECT_EQ(after("29.02.2004", set(1752)), "29.02.1752 00:00:00 defined modified error 1 for 27");
    EXPECT_EQ(after("29.02.2004", set(1753)), "28.02.1753 00:00:00 defined modified");
    EXPECT_EQ(after("29.02.2004", set(32767)), "28.02.32767 00:00:00 defined modified");
}

TEST(DateTimeSetter, OfTheYearNeedsTheClockForTwoDigitsOnly) {
    const NoClock none;
    EXPECT_EQ(after("05.03.2004", [](D& d) { d.SetYear(2005); }), "05.03.2005 00:00:00 defined modified");
    EXPECT_EQ(after("05.03.2004", [](D& d) { d.SetYear(4); }),
              "05.03.2004 00:00:00 defined modified error 1 for 5");
}

TEST(DateTimeSetter, TakesHour24AsMidnightOfTheSameDate) {
    const auto midnight = [](D& d) { d.SetHour(24); };
    EXPECT_EQ(after("05.03.2004 14:07:09", midnight), "05.03.2004 00:07:09 defined modified");
    EXPECT_EQ(after("05.03.2004 00:07:09", midnight), "05.03.2004 00:07:09 defined");
    EXPECT_EQ(after("05.03.2004 14:07:09", [](D& d) { d.SetHour(25); }),
              "05.03.2004 14:07:09 defined modified error 1 for 28");
    EXPECT_EQ(after("05.03.2004 14:07:09", [](D& d) { d.SetHour(-1); }),
              "05.03.2004 14:07:09 defined modified error 1 for 28");
}

TEST(DateTimeSetter, GoesThroughTheVirtualFunctionForTheFlag) {
    Derived<D> value(defined("05.03.2004 14:07:09"));
    value.SetDay365(6);
    value.SetDay365(6);
    value.AddDay365(1);
    value.AddHour(1);
    EXPECT_EQ(value.calls, 3);
    value.AddDay365(0);
    value.AddMin(0);
    EXPECT_EQ(value.calls, 3);
}

TEST(DateTimeFields, OfTheTimeAreWipedWithoutAnyOtherEffect) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        EXPECT_EQ(after(defined("05.03.2004 14:07:09", mode), &D::WipeTime), "05.03.2004 00:00:00 defined");
        D null = undefined(mode);
        const std::string state = stateOf(null);
        null.WipeTime();
        EXPECT_EQ(describe(null), "05.03.2004 00:00:00 " + state);
    }
}

// --- Days and years -------------------------------------------------------------------------------------

struct Move {
    const char* from;
    LONG count;
    const char* to;
};

template <class Number>
void expectMoves(void (D::*add)(Number), void (D::*subtract)(Number), const std::vector<Move>& moves) {
    for (const Move& each : moves) {
        SCOPED_TRACE(std::string(each.from) + " by " + std::to_string(each.count));
        const auto count = static_cast<Number>(each.count);
        const std::string flag = std::string(each.from) == each.to ? " defined" : " defined modified";
        EXPECT_EQ(after(each.from, [&](D& d) { (d.*add)(count); }), each.to + flag);
        if (count == std::numeric_limits<Number>::min()) continue;
        const auto opposite = static_cast<Number>(-count);
        EXPECT_EQ(after(each.from, [&](D& d) { (d.*subtract)(opposite); }), each.to + flag);
    }
}

TEST(DateTimeMove, GoesByDays) {
    expectMoves<SHORT>(&D::AddDay365, &D::SubDay365,
                       {{"31.12.2003 14:07:09", 1, "01.01.2004 14:07:09"},
                        {"28.02.2004 14:07:09", 1, "29.02.2004 14:07:09"},
                        {"28.02.2003 14:07:09", 1, "01.03.2003 14:07:09"},
                        {"01.03.2004 14:07:09", -1, "29.02.2004 14:07:09"},
                        {"01.01.2005 14:07:09", -1, "31.12.2004 14:07:09"},
                        {"01.01.2004 14:07:09", -1, "31.12.2003 14:07:09"},
                        {"05.03.2004 14:07:09", 0, "05.03.2004 14:07:09"},
                        {"01.03.2005 14:07:09", -365, "29.02.2004 14:07:09"},
                        {"01.01.2000 00:00:00", 32767, "17.09.2089 00:00:00"},
                        {"01.01.2000 00:00:00", -32768, "15.04.1910 00:00:00"}});
}

TEST(DateTimeMove, BackOntoTheFirstOfALeapYearGives32December) {
    expectMoves<SHORT>(&D::AddDay365, &D::SubDay365,
                       {{"01.03.2004 00:00:00", -60, "32.12.2003 00:00:00"},
                        {"01.03.2004 00:00:00", -61, "31.12.2003 00:00:00"},
                        {"31.12.2004 00:00:00", -365, "32.12.2003 00:00:00"},
                        {"01.02.2004 00:00:00", -31, "01.01.2004 00:00:00"}});
}

TEST(DateTimeMove, KeepsAnImpossibleDayBackAndRepairsItForward) {
    const D value = loaded(NkDtWmMissing, TRUE, {0, 0, 0, 2003, 12, 32});
    EXPECT_EQ(after(value, [](D& d) { d.SubDay365(0); }), "32.12.2003 00:00:00 defined");
    EXPECT_EQ(after(value, [](D& d) { d.AddDay365(0); }), "01.01.2004 00:00:00 defined modified");
    EXPECT_EQ(after(value, [](D& d) { d.SubDay365(1); }), "31.12.2003 00:00:00 defined modified");
}

TEST(DateTimeMove, BackBefore1753IsRefusedWithTheFieldsMovedAndNoFlag) {
    const auto back = [](D& d) { d.SubDay365(1); };
    EXPECT_EQ(after("01.01.1753", back), "31.12.1752 00:00:00 defined error 1 for 27");
    D null = undefined(NkDtWmNull, {0, 0, 0, 1753, 1, 1});
    EXPECT_EQ(after(null, back),
              "31.12.1752 00:00:00 defined modified error 1 for 27");  // for the definedness
    EXPECT_EQ(after("01.01.1753", [](D& d) { d.AddDay365(-1); }),
              "31.12.1752 00:00:00 defined error 1 for 27");
    // forward no year is checked
    const D early = loaded(NkDtWmMissing, TRUE, {0, 0, 0, 1700, 1, 1});
    EXPECT_EQ(after(early, [](D& d) { d.AddDay365(1); }), "02.01.1700 00:00:00 defined modified");
}

TEST(DateTimeMove, BeyondTheLastYearIsRefusedAndChangesNothing) {
    const D last = loaded(NkDtWmNull, FALSE, {9, 7, 14, 32767, 12, 31});
    const std::string before = describe(last);
    const std::pair<const char*, Change> moves[] = {
        {"AddDay365(SHORT)", [](D& d) { d.AddDay365(1); }},
        {"SubDay365(SHORT)", [](D& d) { d.SubDay365(-32768); }},
        {"AddMonth(SHORT)", [](D& d) { d.AddMonth(1); }},
        {"SubMonth(SHORT)", [](D& d) { d.SubMonth(-32768); }},
        {"AddYear(SHORT)", [](D& d) { d.AddYear(1); }},
        {"SubYear(SHORT)", [](D& d) { d.SubYear(-32768); }},
        {"AddHour(LONG)", [](D& d) { d.AddHour(10); }},
        {"SubHour(LONG)", [](D& d) { d.SubHour(-10); }},
        {"AddMin(LONG)", [](D& d) { d.AddMin(600); }},
        {"SubMin(LONG)", [](D& d) { d.SubMin(-600); }},
    };
    for (const auto& [name, move] : moves) {
        SCOPED_TRACE(name);
        D value(last);
        const ErrorPtr error = expectReplaced(NkDtErrWertebereich, [&move = move, &value] { move(value); });
        EXPECT_STREQ(error->GetFunctionText(), name);
        EXPECT_EQ(describe(value), before);
    }
}

TEST(DateTimeMove, GoesByYearsWithTheRulesOfTheYearSetter) {
    const NoonIn2023 noon;
    expectMoves<SHORT>(&D::AddYear, &D::SubYear,
                       {{"29.02.2004 14:07:09", 1, "28.02.2005 14:07:09"},
                        {"29.02.2004 14:07:09", 4, "29.02.2008 14:07:09"},
                        {"29.02.2004 14:07:09", -4, "29.02.2000 14:07:09"},
                        {"29.02.2004 14:07:09", 0, "29.02.2004 14:07:09"},
                        {"05.03.2004 14:07:09", -251, "05.03.1753 14:07:09"},
                        {"05.03.2004 14:07:09", 30763, "05.03.32767 14:07:09"},
                        {"05.03.2004 14:07:09", -1950, "05.03.2054 14:07:09"},  // 54
                        {"05.03.2004 14:07:09", -2010, "05.03.1994 14:07:09"},  // -6
                        {"05.03.2004 14:07:09", -2004, "05.03.2000 14:07:09"}});
    EXPECT_EQ(after("05.03.2004", [](D& d) { d.SubYear(252); }),
              "05.03.1752 00:00:00 defined modified error 1 for 27");
    EXPECT_EQ(after("05.03.2004", [](D& d) { d.SubYear(32767); }),
              "05.03.-28763 00:00:00 defined modified error 1 for 27");
    D null = undefined(NkDtWmNull);
    EXPECT_EQ(after(null, [](D& d) { d.AddYear(1); }), "05.03.2005 14:07:09 defined modified");
    EXPECT_EQ(after(null, [](D& d) { d.SubYear(252); }), "05.03.1752 14:07:09 null modified error 1 for 27");
}

TEST(DateTimeMove, OfAYearFromAnArchiveNeverWrapsAround) {
    constexpr INT least = std::numeric_limits<INT>::min() + 1900;
    const D early = loaded(NkDtWmMissing, TRUE, {0, 0, 0, least, 3, 5});
    for (const Change& move : {Change([](D& d) { d.SubYear(32767); }),
                               Change([](D& d) { d.SubMonth(32767); }), Change([](D& d) { d.SubYear(1); })}) {
        D value(early);
        expectReplaced(NkDtErrJahr, [&] { move(value); });
    }
}

// --- Months -----------------------------------------------------------------------------------------------

TEST(DateTimeMove, GoesByMonthsAndKeepsTheDayOrTakesTheLastOne) {
    expectMoves<SHORT>(&D::AddMonth, &D::SubMonth,
                       {{"31.01.2004 14:07:09", 1, "29.02.2004 14:07:09"},
                        {"31.01.2003 14:07:09", 1, "28.02.2003 14:07:09"},
                        {"31.03.2004 14:07:09", 1, "30.04.2004 14:07:09"},
                        {"31.05.2004 14:07:09", -1, "30.04.2004 14:07:09"},
                        {"15.12.2004 14:07:09", 1, "15.01.2005 14:07:09"},
                        {"15.11.2004 14:07:09", 1, "15.12.2004 14:07:09"},
                        {"15.01.2004 14:07:09", -13, "15.12.2002 14:07:09"},
                        {"15.01.2004 14:07:09", -1, "15.12.2003 14:07:09"},
                        {"15.12.2004 14:07:09", -12, "15.12.2003 14:07:09"},
                        {"15.12.2004 14:07:09", -24, "15.12.2002 14:07:09"},
                        {"15.11.2004 14:07:09", 12, "15.11.2005 14:07:09"},
                        {"29.02.2004 14:07:09", 12, "28.02.2005 14:07:09"},
                        {"29.02.2004 14:07:09", -12, "28.02.2003 14:07:09"},
                        {"15.01.2004 14:07:09", 0, "15.01.2004 14:07:09"},
                        {"15.01.2004 14:07:09", 11, "15.12.2004 14:07:09"},
                        {"01.01.1753 14:07:09", 32767, "01.08.4483 14:07:09"}});
}

TEST(DateTimeMove, ByMonthsOntoALaterDecemberFailsAfterTheYearMoved) {
    const auto by = [](SHORT n) { return [n](D& d) { d.AddMonth(n); }; };
    EXPECT_EQ(after("15.11.2004", by(13)), "15.11.2006 00:00:00 defined modified error 1 for 26");
    EXPECT_EQ(after("15.12.2004", by(12)), "15.12.2006 00:00:00 defined modified error 1 for 26");
    EXPECT_EQ(after("31.12.2004", by(24)), "31.12.2007 00:00:00 defined modified error 1 for 26");
    EXPECT_EQ(after("15.11.2004", [](D& d) { d.SubMonth(-13); }),
              "15.11.2006 00:00:00 defined modified error 1 for 26");
    D null = undefined(NkDtWmNull, {0, 0, 0, 2004, 11, 15});
    EXPECT_EQ(after(null, by(13)), "15.11.2006 00:00:00 defined modified error 1 for 26");
}

TEST(DateTimeMove, ByMonthsForwardUsesTheYearSetter) {
    const NoonIn2023 noon;
    // 29 February is lowered by the year before the month is looked at
    EXPECT_EQ(after("29.02.2004", [](D& d) { d.AddMonth(13); }), "28.03.2005 00:00:00 defined modified");
    const D antique = loaded(NkDtWmMissing, TRUE, {0, 0, 0, 98, 12, 5});
    EXPECT_EQ(after(antique, [](D& d) { d.AddMonth(1); }), "05.01.2099 00:00:00 defined modified");
    const D early = loaded(NkDtWmNull, FALSE, {0, 0, 0, 1700, 12, 5});
    D value(early);
    expectReplaced(NkDtErrJahr, [&] { value.AddMonth(1); });
    EXPECT_EQ(textOf(value), "05.12.1701 00:00:00");
    EXPECT_FALSE(value.IsDefined());
}

TEST(DateTimeMove, ByMonthsBackBefore1753IsRefusedWithTheYearMovedAndTheFlagUp) {
    EXPECT_EQ(after("05.01.1753", [](D& d) { d.SubMonth(1); }),
              "05.01.1752 00:00:00 defined modified error 1 for 27");
    EXPECT_EQ(after("05.01.1753", [](D& d) { d.SubMonth(13); }),
              "05.01.1751 00:00:00 defined modified error 1 for 27");
    D null = undefined(NkDtWmNull, {0, 0, 0, 1753, 1, 5});
    EXPECT_EQ(after(null, [](D& d) { d.SubMonth(1); }), "05.01.1752 00:00:00 null modified error 1 for 27");
    EXPECT_EQ(after(null, [](D& d) { d.SubMonth(0); }), "05.01.1753 00:00:00 defined modified");
}

TEST(DateTimeMove, BackByMonthsRaisesTheFlagForMonthAndYearNotForALoweredDay) {
    const D day32 = loaded(NkDtWmMissing, TRUE, {0, 0, 0, 2003, 12, 32});
    EXPECT_EQ(after(day32, [](D& d) { d.SubMonth(0); }), "31.12.2003 00:00:00 defined");
    EXPECT_EQ(after(day32, [](D& d) { d.AddMonth(0); }), "31.12.2003 00:00:00 defined modified");
}

// --- Hours and minutes ------------------------------------------------------------------------------------

TEST(DateTimeMove, GoesByHoursAndMinutesIntoTheDays) {
    expectMoves<LONG>(&D::AddMin, &D::SubMin,
                      {{"05.03.2004 23:30:09", 45, "06.03.2004 00:15:09"},
                       {"06.03.2004 00:10:09", -20, "05.03.2004 23:50:09"},
                       {"05.03.2004 10:10:09", 49, "05.03.2004 10:59:09"},
                       {"05.03.2004 10:10:09", 50, "05.03.2004 11:00:09"},
                       {"05.03.2004 10:10:09", -10, "05.03.2004 10:00:09"},
                       {"05.03.2004 10:10:09", -11, "05.03.2004 09:59:09"},
                       {"05.03.2004 10:10:09", 0, "05.03.2004 10:10:09"},
                       {"28.02.2004 23:59:09", 1, "29.02.2004 00:00:09"},
                       {"01.03.2004 00:00:09", -1, "29.02.2004 23:59:09"},
                       {"05.03.2004 10:10:09", 60 * 24 * 365, "05.03.2005 10:10:09"}});
    expectMoves<LONG>(&D::AddHour, &D::SubHour,
                      {{"05.03.2004 23:30:09", 1, "06.03.2004 00:30:09"},
                       {"05.03.2004 23:30:09", -24, "04.03.2004 23:30:09"},
                       {"05.03.2004 00:30:09", -1, "04.03.2004 23:30:09"},
                       {"05.03.2004 20:30:09", 3, "05.03.2004 23:30:09"},
                       {"05.03.2004 20:30:09", -20, "05.03.2004 00:30:09"},
                       {"05.03.2004 20:30:09", 0, "05.03.2004 20:30:09"},
                       {"31.12.2003 20:30:09", 28, "02.01.2004 00:30:09"}});
}

TEST(DateTimeMove, CutsTheDaysOfHoursTo16Bits) {
    const auto addDays = [](LONG days) { return [days](D& d) { d.AddHour(days * 24); }; };
    const auto subtractDays = [](LONG days) { return [days](D& d) { d.SubHour(days * 24); }; };
    const char* const start = "05.03.2004 14:07:09";
    const auto byDays = [&](SHORT days) { return after(start, [days](D& d) { d.AddDay365(days); }); };
    EXPECT_EQ(after(start, addDays(32767)), byDays(32767));
    EXPECT_EQ(after(start, addDays(32768)), byDays(-32768));
    EXPECT_EQ(after(start, addDays(40000)), byDays(-25536));
    EXPECT_EQ(after(start, addDays(65535)), byDays(-1));
    EXPECT_EQ(after(start, addDays(65536)), std::string(start) + " defined");
    EXPECT_EQ(after(start, addDays(65537)), byDays(1));
    EXPECT_EQ(after(start, subtractDays(40000)), byDays(25536));
    EXPECT_EQ(after(start, subtractDays(65536)), std::string(start) + " defined");
    EXPECT_EQ(after(start, [](D& d) { d.AddHour(65536 * 24 + 1); }), "05.03.2004 15:07:09 defined modified");
}

TEST(DateTimeMove, TakesEveryCountOfItsType) {
    // 2147483647 hours are 89478485 days, 21845 of 16 bits, and 7 hours; as many minutes are 1491308 days,
    // -16020 of 16 bits, and 127 minutes.
    const char* const start = "05.03.2004 14:07:09";
    EXPECT_EQ(after(start, [](D& d) { d.AddHour(kMost); }), after(start, [](D& d) {
                  d.AddDay365(21845);
                  d.AddHour(7);
              }));
    EXPECT_EQ(after(start, [](D& d) { d.SubHour(kLeast); }), after(start, [](D& d) {
                  d.AddDay365(21845);
                  d.AddHour(8);
              }));
    EXPECT_EQ(after(start, [](D& d) { d.AddHour(kLeast); }), after(start, [](D& d) {
                  d.SubDay365(21845);
                  d.SubHour(8);
              }));
    EXPECT_EQ(after(start, [](D& d) { d.AddMin(kMost); }), after(start, [](D& d) {
                  d.AddDay365(-16020);
                  d.AddMin(127);
              }));
    EXPECT_EQ(after(start, [](D& d) { d.SubMin(kLeast); }), after(start, [](D& d) {
                  d.AddDay365(-16020);
                  d.AddMin(128);
              }));
    EXPECT_EQ(after(start, [](D& d) { d.AddDay365(-32768); }), after(start, [](D& d) {
                  d.SubDay365(16384);
                  d.SubDay365(16384);
              }));
    EXPECT_EQ(after(start, [](D& d) { d.SubDay365(-32768); }), after(start, [](D& d) {
                  d.AddDay365(16384);
                  d.AddDay365(16384);
              }));
    EXPECT_EQ(after(start, [](D& d) { d.SubMonth(-32768); }), after(start, [](D& d) {
                  d.AddMonth(16384);
                  d.AddMonth(16384);
              }));
}

TEST(DateTimeMove, ThatFailsInItsDaysLeavesHourAndMinute) {
    EXPECT_EQ(after("01.01.1753 00:30:09", [](D& d) { d.SubMin(40); }),
              "31.12.1752 00:30:09 defined error 1 for 27");
    EXPECT_EQ(after("01.01.1753 00:30:09", [](D& d) { d.SubHour(2); }),
              "31.12.1752 00:30:09 defined error 1 for 27");
}

// --- All moves --------------------------------------------------------------------------------------------

const std::pair<const char*, Change> kMovesByNone[] = {
    {"AddDay365(SHORT)", [](D& d) { d.AddDay365(0); }}, {"SubDay365(SHORT)", [](D& d) { d.SubDay365(0); }},
    {"AddMonth(SHORT)", [](D& d) { d.AddMonth(0); }},   {"SubMonth(SHORT)", [](D& d) { d.SubMonth(0); }},
    {"AddYear(SHORT)", [](D& d) { d.AddYear(0); }},     {"SubYear(SHORT)", [](D& d) { d.SubYear(0); }},
    {"AddHour(LONG)", [](D& d) { d.AddHour(0); }},      {"SubHour(LONG)", [](D& d) { d.SubHour(0); }},
    {"AddMin(LONG)", [](D& d) { d.AddMin(0); }},        {"SubMin(LONG)", [](D& d) { d.SubMin(0); }},
};

TEST(DateTimeMove, OfAMissingValueRaisesErrorTwoItself) {
    for (const auto& [name, move] : kMovesByNone) {
        SCOPED_TRACE(name);
        D missing = undefined(NkDtWmMissing);
        const ErrorPtr error = expectError(NkDtErrUndefiniert, [&move = move, &missing] { move(missing); });
        EXPECT_STREQ(error->GetFunctionText(), name);
        EXPECT_STREQ(error->GetSourceFile(), ".\\Dtdatimf.cc");
        EXPECT_STREQ(error->GetClassText(), "NkDtDateTime");
        EXPECT_TRUE(error->IsLogged());
        EXPECT_EQ(describe(missing), "05.03.2004 14:07:09 missing");
    }
}

TEST(DateTimeMove, OfANullValueMakesItsStoredFieldsDefined) {
    for (const auto& [name, move] : kMovesByNone) {
        SCOPED_TRACE(name);
        for (const NkDtWorkingMode mode : {NkDtWmNull, NkDtWmDefined})
            EXPECT_EQ(after(undefined(mode), move), "05.03.2004 14:07:09 defined modified");
    }
}

TEST(DateTimeMove, ByNoneLeavesADefinedValueAndItsFlag) {
    for (const auto& [name, move] : kMovesByNone) {
        SCOPED_TRACE(name);
        for (const BOOL modified : {FALSE, TRUE}) {
            D value = defined("05.03.2004 14:07:09");
            value.SetModified(modified);
            EXPECT_EQ(after(value, move),
                      "05.03.2004 14:07:09 defined" + std::string(modified ? " modified" : ""));
        }
    }
}

TEST(DateTimeMove, NeedsAMonthOfTheCalendarForDays) {
    for (const INT month : {0, 13, 200, -5}) {
        D value = loaded(NkDtWmNull, FALSE, {9, 7, 14, 2004, month, 5});
        const std::string before = describe(value);
        expectReplaced(NkDtErrMonat, [&] { value.AddDay365(1); });
        expectReplaced(NkDtErrMonat, [&] { value.SubDay365(1); });
        expectReplaced(NkDtErrMonat, [&] { value.AddHour(24); });
        expectReplaced(NkDtErrMonat, [&] { value.SubMin(24 * 60); });
        EXPECT_EQ(describe(value), before);
        expectReplaced(NkDtErrMonat, [&] { value.SetDay365(6); });
        EXPECT_EQ(stateOf(value), "null modified");
        value.AddHour(1);
        EXPECT_EQ(value.GetHour(), 15);
        value.SetMonth(4);
        EXPECT_EQ(describe(value), "05.04.2004 15:07:09 defined modified");
    }
}

}  // namespace
