// Holds NkDtDateTime and NkDtDateZp against the table calendar_values.tsv, which
// tests/models/calendar_values.py generates from the rules; the model explains the columns.

#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTime.h>
#include <nkfw/Clock.h>
#include <nkfw/OleDateTime.h>
#include <nkfw/Recordset.h>

#include <ctime>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "CalendarTable.h"
#include "framework/TimeZone.h"
#include "support/Instruments.h"

namespace {

using namespace calendartable;
using nktest::numbers;

constexpr std::size_t kMinimumDateTimeRows = 60'000;
constexpr std::size_t kMinimumDateRows = 9'000;
constexpr std::size_t kRowsToOneUnderValgrind = 23;  // prime, since operations take turns

// --- Notations --------------------------------------------------------------------------------

std::string listed(const std::vector<LONGLONG>& values) {
    std::string text;
    for (const LONGLONG value : values)
        text += (text.empty() ? "" : " ") + std::to_string(value);
    return text;
}

// "valid year month day hour minute second", "invalid" or "null"
COleDateTime oleDate(std::string_view cell) {
    const std::string_view status = take(cell, ' ');
    COleDateTime date;
    if (status == "valid") {
        const std::vector<int> fields = numbers(cell, ' ');
        date.SetDateTime(fields.at(0), fields.at(1), fields.at(2), fields.at(3), fields.at(4), fields.at(5));
        EXPECT_EQ(date.GetStatus(), COleDateTime::valid) << cell;
    } else {
        date.SetStatus(status == "null" ? COleDateTime::null : COleDateTime::invalid);
    }
    return date;
}

std::string shown(const COleDateTime& date) {
    if (date.GetStatus() == COleDateTime::null) return "null";
    if (date.GetStatus() != COleDateTime::valid) return "invalid";
    return "valid " + listed({date.GetYear(), date.GetMonth(), date.GetDay(), date.GetHour(),
                              date.GetMinute(), date.GetSecond()});
}

TIMESTAMP_STRUCT field(std::string_view cell) {
    const std::vector<int> fields = numbers(cell, ' ');
    const auto at = [&](std::size_t i) { return static_cast<USHORT>(fields.at(i)); };
    return {static_cast<SHORT>(fields.at(0)), at(1), at(2), at(3), at(4), at(5), 999'999'999};
}

// What a field holds before a date is written to it. The fraction stays.
constexpr TIMESTAMP_STRUCT kUnwritten = {-1, 99, 98, 97, 96, 95, 94};

std::string shownField(const TIMESTAMP_STRUCT& field) {
    return listed({field.year, field.month, field.day, field.hour, field.minute, field.second}) +
           (field.fraction == kUnwritten.fraction ? "" : " and a fraction");
}

std::string shownText(const NkDtString& text) {
    return nktest::inQuotes(text.GetValue());
}

// --- The operations by the table's names ---------------------------------------------------------

template <class Date>
void addFields(Operations<Date>& operations) {
    using C = Case<Date>;
    operations["GetDay365"] = [](C& c) { c.yieldsNumber(c.x().GetDay365()); };
    operations["GetMonth"] = [](C& c) { c.yieldsNumber(c.x().GetMonth()); };
    operations["GetYear"] = [](C& c) { c.yieldsNumber(c.x().GetYear()); };
    operations["GetHour"] = [](C& c) { c.yieldsNumber(c.x().GetHour()); };
    operations["GetMin"] = [](C& c) { c.yieldsNumber(c.x().GetMin()); };
    operations["GetSecond"] = [](C& c) { c.yieldsNumber(c.x().GetSecond()); };
    operations["SetDay365"] = [](C& c) { c.x().SetDay365(c.template n<SHORT>()); };
    operations["SetMonth"] = [](C& c) { c.x().SetMonth(c.template n<SHORT>()); };
    operations["SetYear"] = [](C& c) { c.x().SetYear(c.template n<SHORT>()); };
    operations["SetHour"] = [](C& c) { c.x().SetHour(c.template n<SHORT>()); };
    operations["SetMin"] = [](C& c) { c.x().SetMin(c.template n<SHORT>()); };
    operations["SetSecond"] = [](C& c) { c.x().SetSecond(c.template n<SHORT>()); };
    operations["WipeTime"] = [](C& c) { c.x().WipeTime(); };
}

template <class Date>
void addMoves(Operations<Date>& operations) {
    using C = Case<Date>;
    operations["AddDay365"] = [](C& c) { c.x().AddDay365(c.template n<SHORT>()); };
    operations["SubDay365"] = [](C& c) { c.x().SubDay365(c.template n<SHORT>()); };
    operations["AddMonth"] = [](C& c) { c.x().AddMonth(c.template n<SHORT>()); };
    operations["SubMonth"] = [](C& c) { c.x().SubMonth(c.template n<SHORT>()); };
    operations["AddYear"] = [](C& c) { c.x().AddYear(c.template n<SHORT>()); };
    operations["SubYear"] = [](C& c) { c.x().SubYear(c.template n<SHORT>()); };
    operations["AddHour"] = [](C& c) { c.x().AddHour(c.n()); };
    operations["SubHour"] = [](C& c) { c.x().SubHour(c.n()); };
    operations["AddMin"] = [](C& c) { c.x().AddMin(c.n()); };
    operations["SubMin"] = [](C& c) { c.x().SubMin(c.n()); };
    operations["x-y"] = [](C& c) { c.yields(c.x() - c.y()); };
    operations["x+t"] = [](C& c) { c.yields(c.x() + c.template rightValue<NkDtTime>()); };
    operations["x-t"] = [](C& c) { c.yields(c.x() - c.template rightValue<NkDtTime>()); };
}

// Year, month, day, hour, minute, second; a date is built of the first three.
template <class Date>
Date fromFields(const std::vector<SHORT>& f) {
    if constexpr (std::is_same_v<Date, NkDtDateZp>) {
        return Date(f.at(2), f.at(1), f.at(0));
    } else {
        return Date(f.at(2), f.at(1), f.at(0), f.at(3), f.at(4), f.at(5));
    }
}

// The same, or "undefined" and which of the values it is.
template <class Date>
Date fromValues(std::string_view cell) {
    constexpr std::size_t none = 6;
    std::size_t undefined = none;
    std::vector<SHORT> fields = {2004, 3, 5, 14, 7, 9};
    if (cell.starts_with("undefined")) {
        take(cell, ' ');
        undefined = number<std::size_t>(cell);
    } else {
        fields = numbers<SHORT>(cell, ' ');
    }
    std::vector<NkDtShort> v;
    for (const SHORT field : fields)
        v.push_back(v.size() == undefined ? NkDtShort(NkDtWmMissing) : NkDtShort(field));
    if constexpr (std::is_same_v<Date, NkDtDateZp>) {
        return Date(v.at(2), v.at(1), v.at(0));
    } else {
        return Date(v.at(2), v.at(1), v.at(0), v.at(3), v.at(4), v.at(5));
    }
}

// tm_year, tm_mon, tm_mday, tm_hour, tm_min, tm_sec
template <class Date>
Date fromBrokenDown(std::string_view cell) {
    const std::vector<int> fields = numbers(cell, ' ');
    struct tm time {};
    time.tm_year = fields.at(0);
    time.tm_mon = fields.at(1);
    time.tm_mday = fields.at(2);
    time.tm_hour = fields.at(3);
    time.tm_min = fields.at(4);
    time.tm_sec = fields.at(5);
    return Date(&time);
}

// A form, which dates do not take, and a text
template <class Date, class Text>
Date fromText(int form, Text&& text) {
    if constexpr (std::is_same_v<Date, NkDtDateZp>) {
        return Date(text);
    } else {
        return Date(text, static_cast<NkDtDateTime::FormOfDateTimeString>(form));
    }
}

template <class Date>
void addConstruction(Operations<Date>& operations) {
    using C = Case<Date>;
    operations["T(y,m,d,h,m,s)"] = [](C& c) { c.yields(fromFields<Date>(numbers<SHORT>(c.right(), ' '))); };
    operations["T(shorts)"] = [](C& c) { c.yields(fromValues<Date>(c.right())); };
    operations["T(tm)"] = [](C& c) { c.yields(fromBrokenDown<Date>(c.right())); };
    operations["T(text,form)"] = [](C& c) {
        std::string_view text = c.right();
        const int form = number(take(text, ' '));
        c.yields(fromText<Date>(form, static_cast<LPCTSTR>(valuetest::TextArgument(text))));
    };
    operations["T(string,form)"] = [](C& c) {
        std::string_view text = c.right();
        const int form = number(take(text, ' '));
        c.yields(fromText<Date>(form, valuetest::textOperand(text)));
    };
}

template <class Date>
void addTextsAndConversions(Operations<Date>& operations) {
    using C = Case<Date>;
    operations["SetDate"] = [](C& c) { c.x().SetDate(valuetest::TextArgument(c.right())); };
    operations["SetTime"] = [](C& c) { c.x().SetTime(valuetest::TextArgument(c.right())); };
    operations["SetDateTime"] = [](C& c) { c.x().SetDateTime(valuetest::TextArgument(c.right())); };
    operations["MakeFormatString"] = [](C& c) {
        c.yieldsText(shownText(c.x().MakeFormatString(c.template n<USHORT>())));
    };
    operations["ConvToSQL"] = [](C& c) {
        c.yieldsText(shownText(c.x().ConvToSQL(static_cast<NkDtDateTime::SQL_Language>(c.n()))));
    };
    operations["SetFromSQL"] = [](C& c) { c.x().SetFromSQL(valuetest::TextArgument(c.right())); };
    operations["SetFromRecordSet"] = [](C& c) { setFromField<TIMESTAMP_STRUCT>(c, field); };
    operations["ConvToRecordSet"] = [](C& c) { showField(c, kUnwritten, shownField); };
    operations["ole(x)"] = [](C& c) { c.yieldsText(shown(static_cast<COleDateTime>(c.x()))); };
}

template <class Date>
Operations<Date> dateOperations() {
    Operations<Date> operations;
    addCommonOperations(operations);
    addFields(operations);
    addMoves(operations);
    addConstruction(operations);
    addTextsAndConversions(operations);
    return operations;
}

Operations<NkDtDateTime> dateTimeOperations() {
    using C = Case<NkDtDateTime>;
    Operations<NkDtDateTime> operations = dateOperations<NkDtDateTime>();
    operations["T(h,m)"] = [](C& c) {
        const std::vector<SHORT> clock = numbers<SHORT>(c.right(), ' ');
        c.yields(NkDtDateTime(clock.at(0), clock.at(1)));
    };
    operations["T(ole)"] = [](C& c) { c.yields(NkDtDateTime(oleDate(c.right()))); };
    operations["x=ole"] = [](C& c) { c.x() = oleDate(c.right()); };
    operations["Assign(other)"] = [](C& c) { c.x().Assign(c.rightValue<NkDtDateZp>()); };
    return operations;
}

Operations<NkDtDateZp> pureDateOperations() {
    using C = Case<NkDtDateZp>;
    Operations<NkDtDateZp> operations = dateOperations<NkDtDateZp>();
    operations["T(other)"] = [](C& c) { c.yields(NkDtDateZp(c.rightValue<NkDtDateTime>())); };
    operations["Assign(other)"] = [](C& c) { c.x().Assign(c.rightValue<NkDtDateTime>()); };
    return operations;
}

// --- The whole table -----------------------------------------------------------------------------

/// "Now" is noon of 15 June 2023.
class CalendarTable : public ::testing::Test {
  protected:
    ~CalendarTable() override { nkfw::setClockSource(m_before); }

    const std::size_t m_step = nktest::isUnderValgrind() ? kRowsToOneUnderValgrind : 1;

  private:
    const frameworktest::TimeZone m_greenwich{"UTC0"};
    const nkfw::ClockSource m_before =
        nkfw::setClockSource([]() noexcept -> std::time_t { return 1686830400; });
};

TEST_F(CalendarTable, DateTimeFollowsEveryRowInEveryStateAndMode) {
    holdAgainstTable("calendar_values.tsv", "DateTime", dateTimeOperations(), kMinimumDateTimeRows, m_step);
}

TEST_F(CalendarTable, DateFollowsEveryRowInEveryStateAndMode) {
    holdAgainstTable("calendar_values.tsv", "Date", pureDateOperations(), kMinimumDateRows, m_step);
}

}  // namespace
