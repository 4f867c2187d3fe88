/// @file
/// NkDtDateTime and NkDtDateZp in everyday expressions, beside numbers, texts and durations.

#include <nkdt/Hash.h>
#include <nkdt/NkDtBool.h>
#include <nkdt/NkDtChar.h>
#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>
#include <nkdt/NkDtTime.h>
#include <nkfw/OleDateTime.h>
#include <nkfw/Recordset.h>

#include <algorithm>
#include <ctime>
#include <map>
#include <optional>
#include <sstream>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Check.h"
#include "Refused.h"

namespace expressions {

namespace {

using D = NkDtDateTime;
using Z = NkDtDateZp;

/// Applications' own classes.
class Receipt : public NkDtDateTime {
  public:
    using NkDtDateTime::NkDtDateTime;
    using NkDtDateTime::operator=;
};
class Holiday : public NkDtDateZp {
  public:
    using NkDtDateZp::NkDtDateZp;
    using NkDtDateZp::operator=;
};

const D noon(5, 3, 2004, 12, 0, 0);
const Z day(5, 3, 2004);

/// The result has this very type, is defined and shows this text.
template <class Date, class Result>
void isDate(const Result& result, std::string_view text, Here here) {
    static_assert(std::is_same_v<Result, Date>);
    count(result.IsDefined() && result.MakeFormatString(1101).GetValue() == text, "is the date", here);
}

template <class Result>
void isDateTime(const Result& result, std::string_view text,
                Here here = {__builtin_FILE(), __builtin_LINE()}) {
    isDate<D>(result, text, here);
}

template <class Result>
void isDay(const Result& result, std::string_view text, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    isDate<Z>(result, text, here);
}

template <class Result>
void isHours(const Result& result, LONG hours, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    static_assert(std::is_same_v<Result, NkDtTime>);
    count(result.IsDefined() && result.GetHour() == hours, "is the difference", here);
}

SHORT yearOf(const D& d) {
    return d.GetYear();
}

void buildingDateTimes() {
    isDateTime(D(5, 3, 2004, 14, 7, 9), "05.03.2004 14:07:09");
    isDateTime(D(5, 3, 2004), "05.03.2004 00:00:00");
    isDateTime(D(5L, 3U, short{2004}), "05.03.2004 00:00:00");
    isDateTime(D(short{5}, 3, 2004L, 14U, 7, 9), "05.03.2004 14:07:09");
    isDateTime(D(NkDtShort(5), NkDtShort(3), NkDtShort(2004)), "05.03.2004 00:00:00");
    isDateTime(D(NkDtShort(5), 3, NkDtLong(2004)), "05.03.2004 00:00:00");
    isDateTime(D(NkDtShort(5), 3, NkDtLong(2004), 14, NkDtShort(7), 9), "05.03.2004 14:07:09");
    isDateTime(D(10, 30), "01.01.1900 10:30:00");
    isDateTime(D(short{10}, short{30}), "01.01.1900 10:30:00");
    isDateTime(D(10L, 30U), "01.01.1900 10:30:00");
    isDateTime(D(NkDtShort(10), NkDtShort(30)), "01.01.1900 10:30:00");
    isDateTime(D(NkDtShort(10), 30), "01.01.1900 10:30:00");
    isDateTime(D(10, NkDtLong(30)), "01.01.1900 10:30:00");
    isDateTime(D("05.03.2004 14:07:09"), "05.03.2004 14:07:09");
    isDateTime(D("5.3.2004", D::DateOnly), "05.03.2004 00:00:00");
    isDateTime(D("14:07", D::TimeOnly), "01.01.1900 14:07:00");
    isDateTime(D(NkDtString("5.3.2004"), D::DateOnly), "05.03.2004 00:00:00");
    isDateTime(D(NkDtString("05.03.2004 14:07")), "05.03.2004 14:07:00");
    char buffer[] = "05.03.2004 14:07";
    isDateTime(D(buffer), "05.03.2004 14:07:00");
    isDateTime(D(static_cast<char*>(buffer), D::DateOnly), "05.03.2004 00:00:00");
    isDateTime(D(COleDateTime(2004, 3, 5, 14, 7, 9)), "05.03.2004 14:07:09");
    struct tm broken {};
    broken.tm_mday = 5;
    broken.tm_mon = 2;
    broken.tm_year = 104;
    isDateTime(D(&broken), "05.03.2004 00:00:00");
    const std::time_t then = 1078488000;  // 5 March 2004, noon in Greenwich
    count(D(then).GetYear() == 2004, "is a time of the system clock", {__FILE__, __LINE__});
    isDateTime(D(day), "05.03.2004 00:00:00");
    isDateTime(D(Receipt(5, 3, 2004)), "05.03.2004 00:00:00");
    const D implicitText = "05.03.2004 14:07";
    isDateTime(implicitText, "05.03.2004 14:07:00");
    const D listed{5, 3, 2004};
    isDateTime(listed, "05.03.2004 00:00:00");
    holds(!D().IsDefined() && D(NkDtWmNull).IsNull() && D(NkDtWmDefined).IsDefined());
    holds(yearOf({5, 3, 2004}) == 2004 && yearOf(day) == 2004 && yearOf("05.03.2004 14:07") == 2004);
    const LPCTSTR nothing = nullptr;
    raises(1, [&] { (void)D(nothing); });
    raises(1, [] { (void)D(5, 13, 2004); });
    raises(8, [] { (void)D(5, 3, 40000); });
    raises(8, [] { (void)D(5, 3, 2004, 5000000000LL, 0, 0); });
    raises(8, [] { (void)D(40000, 0); });
}

void buildingDates() {
    isDay(Z(5, 3, 2004), "05.03.2004 00:00:00");
    isDay(Z(short{5}, short{3}, short{2004}), "05.03.2004 00:00:00");
    isDay(Z(5L, 3U, short{2004}), "05.03.2004 00:00:00");
    isDay(Z(NkDtShort(5), NkDtShort(3), NkDtShort(2004)), "05.03.2004 00:00:00");
    isDay(Z(NkDtShort(5), 3, NkDtLong(2004)), "05.03.2004 00:00:00");
    isDay(Z("5.3.2004"), "05.03.2004 00:00:00");
    isDay(Z(NkDtString("05.03.2004")), "05.03.2004 00:00:00");
    isDay(Z(noon), "05.03.2004 00:00:00");
    isDay(Z(D(noon)), "05.03.2004 00:00:00");
    isDay(Z(COleDateTime(2004, 3, 5, 14, 7, 9)), "05.03.2004 00:00:00");
    isDay(Z(Holiday(5, 3, 2004)), "05.03.2004 00:00:00");
    const Z implicitText = "5.3.2004";
    isDay(implicitText, "05.03.2004 00:00:00");
    const Z implicitTime = noon;
    isDay(implicitTime, "05.03.2004 00:00:00");
    const Z listed{5, 3, 2004};
    isDay(listed, "05.03.2004 00:00:00");
    holds(!Z().IsDefined() && Z(NkDtWmNull).IsNull());
    raises(8, [] { (void)Z(5, 3, 40000); });
    raises(1, [] { (void)Z("2004"); });
}

void assigning() {
    D d;
    d = "05.03.2004 14:07";
    isDateTime(d, "05.03.2004 14:07:00");
    d = NkDtString("06.03.2004 14:07");
    isDateTime(d, "06.03.2004 14:07:00");
    d = {7, 3, 2004};
    isDateTime(d, "07.03.2004 00:00:00");
    d = day;
    isDateTime(d, "05.03.2004 00:00:00");
    d = COleDateTime(2004, 3, 8, 1, 2, 3);
    isDateTime(d, "08.03.2004 01:02:03");
    d = NkDtDateTime(NkDtWmNull);
    holds(!d.IsDefined());
    Z z;
    z = "5.3.2004";
    isDay(z, "05.03.2004 00:00:00");
    z = noon;
    isDay(z, "05.03.2004 00:00:00");
    z = {6, 3, 2004};
    isDay(z, "06.03.2004 00:00:00");
    z = COleDateTime(2004, 3, 8, 1, 2, 3);
    isDay(z, "08.03.2004 00:00:00");
    z = NkDtString("9.3.2004");
    isDay(z, "09.03.2004 00:00:00");
    Receipt receipt;
    receipt = noon;
    receipt = day;
    receipt = D(1, 2, 2003);
    holds(receipt == D(1, 2, 2003));
    Holiday holiday;
    holiday = noon;
    holds(holiday == day);
    holiday = Z(1, 2, 2003);
    holds(holiday == Z(1, 2, 2003));
}

void leaving() {
    const COleDateTime ole = noon;
    holds(ole == COleDateTime(2004, 3, 5, 12, 0, 0) &&
          COleDateTime(day) == COleDateTime(2004, 3, 5, 0, 0, 0));
    const struct tm broken = noon;
    holds(broken.tm_year == 104 && broken.tm_hour == 12);
    holds(static_cast<struct tm>(day).tm_mday == 5 && day.GetValue().tm_mon == 2);
}

void moving() {
    D d = noon;
    d.AddDay365(1);
    d.AddDay365(short{1});
    d.SubDay365(1L);
    d.AddMonth(NkDtShort(1));
    d.SubMonth(1U);
    d.AddYear(NkDtLong(1));
    d.SubYear(1LL);
    d.AddHour(3);
    d.SubHour(1L);
    d.AddMin(NkDtLong(90));
    d.SubMin(short{30});
    isDateTime(d, "06.03.2004 15:00:00");
    d.SetDay365(7);
    d.SetMonth(4L);
    d.SetYear(NkDtShort(2005));
    d.SetHour(1);
    d.SetMin(2);
    d.SetSecond(3U);
    isDateTime(d, "07.04.2005 01:02:03");
    raises(8, [&] { d.AddDay365(40000); });
    raises(8, [&] { d.SubMonth(-32769L); });
    raises(8, [&] { d.SetYear(65536 + 2004); });
    raises(8, [&] { d.AddHour(5000000000LL); });
    raises(8, [&] { d.SetHour(NkDtLong(65536)); });
    raises(2, [&] { d.AddDay365(NkDtLong(NkDtWmMissing)); });
    isDateTime(d, "07.04.2005 01:02:03");
}

void results() {
    const NkDtTime hour(1, 0);
    isDateTime(noon + hour, "05.03.2004 13:00:00");
    isDateTime(noon - hour, "05.03.2004 11:00:00");
    isDateTime(noon + hour - hour - hour, "05.03.2004 11:00:00");
    isDateTime(Receipt(5, 3, 2004) + hour, "05.03.2004 01:00:00");
    isDay(day + NkDtTime(24, 0), "06.03.2004 00:00:00");
    isDay(day - hour, "04.03.2004 00:00:00");
    isDay(Holiday(5, 3, 2004) + NkDtTime(23, 59), "05.03.2004 00:00:00");
    D d = noon;
    d = d + hour;
    isDateTime(d, "05.03.2004 13:00:00");
    Z z = day;
    z = z + NkDtTime(48, 0);
    isDay(z, "07.03.2004 00:00:00");
    z = noon + NkDtTime(24, 0);
    isDay(z, "06.03.2004 00:00:00");
    holds(!(noon + NkDtTime(NkDtWmMissing)).IsDefined() && !(day - NkDtTime(NkDtWmMissing)).IsDefined());

    isHours(noon - noon, 0);
    isHours(noon - day, 12);
    isHours(day - noon, -12);
    isHours(Z(8, 3, 2004) - day, 72);
    isHours(Holiday(8, 3, 2004) - day, 72);
    isHours(day - Holiday(8, 3, 2004), -72);
    isHours(Holiday(8, 3, 2004) - Holiday(5, 3, 2004), 72);
    isHours(Receipt(8, 3, 2004) - day, 72);
    isHours(noon - COleDateTime(2004, 3, 5, 0, 0, 0), 12);
    isHours(COleDateTime(2004, 3, 5, 0, 0, 0) - noon, -12);
    isDay(day + (noon - day), "05.03.2004 00:00:00");
}

void comparing() {
    equal(noon, D("05.03.2004 12:00"));
    equal(day, Z("5.3.2004"));
    equal(day, D(5, 3, 2004));
    equal(day, Holiday(5, 3, 2004));
    equal(Receipt(5, 3, 2004), day);
    equal(Receipt(5, 3, 2004), Receipt(5, 3, 2004));
    less(day, noon);
    less(noon, Z(6, 3, 2004));
    less(D(31, 12, 2003), day);
    less(Holiday(5, 3, 2004), Receipt(5, 3, 2004, 0, 0, 1));
    raises(2, [] { (void)(D() == noon); });
    raises(2, [] { (void)(noon < Z()); });
}

void texts() {
    const CString cs("cs");
    isText(NkDtString(noon), "05.03.2004 12:00:00");
    isText(NkDtString(day), "05.03.2004");
    isText("am " + noon, "am 05.03.2004 12:00:00");
    isText("am " + day, "am 05.03.2004");
    isText(noon + " Uhr", "05.03.2004 12:00:00 Uhr");
    isText(day + ".", "05.03.2004.");
    isText(day + "1:30", "05.03.20041:30");  // a text is joined, not read as a duration
    isText(NkDtString("s") + noon, "s05.03.2004 12:00:00");
    isText(noon + NkDtString("s"), "05.03.2004 12:00:00s");
    isText(NkDtString("s") + day, "s05.03.2004");
    isText(day + NkDtString("s"), "05.03.2004s");
    isText(cs + noon, "cs05.03.2004 12:00:00");
    isText(noon + cs, "05.03.2004 12:00:00cs");
    isText(cs + day, "cs05.03.2004");
    isText(day + cs, "05.03.2004cs");
    isText(Receipt(5, 3, 2004) + "!", "05.03.2004 00:00:00!");
    isText("!" + Holiday(5, 3, 2004), "!05.03.2004");
    NkDtString s("am ");
    s += day;
    isText(s, "am 05.03.2004");
    s += noon;
    isText(s, "am 05.03.200405.03.2004 12:00:00");
    s = noon;
    isText(s, "05.03.2004 12:00:00");
    s = day;
    isText(s, "05.03.2004");
    std::ostringstream stream;
    stream << noon << ';' << day << ';' << D() << Z() << ';' << Holiday(1, 2, 2003) << ';'
           << Receipt(1, 2, 2003);
    holds(stream.str() == "05.03.2004 12:00:00;05.03.2004;;01.02.2003;01.02.2003 00:00:00");
}

void containers() {
    std::vector<D> values;
    for (const D& d : {noon, D(day), D(1, 1, 1753), D(31, 12, 9999)})
        values.push_back(d);
    std::sort(values.begin(), values.end());
    isDateTime(values.front(), "01.01.1753 00:00:00");
    isDateTime(values.back(), "31.12.9999 00:00:00");
    std::map<Z, int> order;
    order["5.3.2004"] = 1;
    order[day] = 2;
    order[noon] = 3;
    holds(order.size() == 1);
    const std::unordered_set<Z> days = {"5.3.2004", "05.03.2004", "6.3.2004"};
    holds(days.size() == 2);
    const std::unordered_set<D> times = {noon, day, D(5, 3, 2004)};
    holds(times.size() == 2);
    const std::optional<D> maybe = D(noon);
    holds(*maybe == noon);
    Z taken(5, 3, 2004);
    const Z moved = std::move(taken);
    isDay(moved, "05.03.2004 00:00:00");
    taken = "6.3.2004";
    isDay(taken, "06.03.2004 00:00:00");
}

template <class Date, class... Sources>
void builtFrom(bool wanted, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    count(std::is_constructible_v<Date, Sources...> == wanted, "is built from that", here);
}

/// What neither class is built from.
template <class Date>
void refusedSources() {
    builtFrom<Date, const char*>(true);
    builtFrom<Date, int, int, int>(true);
    builtFrom<Date, std::time_t>(true);
    builtFrom<Date, int>(false);
    builtFrom<Date, unsigned>(false);
    builtFrom<Date, double>(false);
    builtFrom<Date, bool>(false);
    builtFrom<Date, char>(false);
    builtFrom<Date, std::nullptr_t>(false);
    builtFrom<Date, D::FormOfDateTimeString>(false);
    builtFrom<Date, NkDtLong>(false);
    builtFrom<Date, NkDtShort>(false);
    builtFrom<Date, NkDtDouble>(false);
    builtFrom<Date, NkDtDecimal>(false);
    builtFrom<Date, NkDtBool>(false);
    builtFrom<Date, NkDtChar>(false);
    builtFrom<Date, NkDtTime>(false);
    builtFrom<Date, int, int, double>(false);
    builtFrom<Date, bool, int, int>(false);
    builtFrom<Date, int, char, int>(false);
    builtFrom<Date, NkDtDecimal, int, int>(false);
    builtFrom<Date, int, NkDtDouble, int>(false);
    builtFrom<Date, const char*, const char*, const char*>(false);
    builtFrom<Date, int, int, int, int>(false);
    builtFrom<Date, NkDtWorkingMode, int, int>(false);
    onlyFirstCompiles<Date>(
        "a date is assigned dates and texts", [](auto&& d) -> decltype(void(d = "05.03.2004")) {},
        [](auto&& d) -> decltype(void(d = 5)) {}, [](auto&& d) -> decltype(void(d = 0)) {},
        [](auto&& d) -> decltype(void(d = 5L)) {}, [](auto&& d) -> decltype(void(d = 2.5)) {},
        [](auto&& d) -> decltype(void(d = true)) {}, [](auto&& d) -> decltype(void(d = 'a')) {},
        [](auto&& d) -> decltype(void(d = nullptr)) {}, [](auto&& d) -> decltype(void(d = NkDtWmNull)) {},
        [](auto&& d) -> decltype(void(d = D::DateOnly)) {},
        [](auto&& d) -> decltype(void(d = NkDtLong(5))) {},
        [](auto&& d) -> decltype(void(d = NkDtChar('5'))) {},
        [](auto&& d) -> decltype(void(d = NkDtDecimal(5))) {},
        [](auto&& d) -> decltype(void(d = NkDtTime(5, 0))) {});
    refusedAsArgument<Date, const char*, int, double, bool, char, std::nullptr_t, NkDtLong, NkDtShort,
                      NkDtBool, NkDtChar, NkDtDouble, NkDtDecimal, NkDtTime>("a function that takes a date");
}

void refusedParts() {
    builtFrom<D, int, int>(true);
    builtFrom<D, const char*, D::FormOfDateTimeString>(true);
    builtFrom<D, NkDtString, D::FormOfDateTimeString>(true);
    builtFrom<D, int, int, int, int, int, int>(true);
    builtFrom<D, double, int>(false);
    builtFrom<D, int, double>(false);
    builtFrom<D, int, bool>(false);
    builtFrom<D, char, int>(false);
    builtFrom<D, int, D::FormOfDateTimeString>(false);
    builtFrom<D, NkDtWorkingMode, D::FormOfDateTimeString>(false);
    builtFrom<D, const char*, int>(false);
    builtFrom<D, const char*, const char*>(false);
    builtFrom<D, NkDtDouble, NkDtDouble>(false);
    builtFrom<D, int, int, int, int, int, double>(false);
    builtFrom<D, int, int, int, int, int, NkDtDecimal>(false);
    builtFrom<D, int, int, int, int, int>(false);
    builtFrom<Z, int, int>(false);
    builtFrom<Z, int, int, int, int, int, int>(false);
}

/// No number, truth value, character or duration is made of a date, though its text begins with digits.
template <class Value>
void notMadeOfADate(Here here = {__builtin_FILE(), __builtin_LINE()}) {
    count(std::is_constructible_v<Value, const NkDtString&>, "is made of a text", here);
    count(!std::is_constructible_v<Value, const D&>, "is not made of a date-time", here);
    count(!std::is_constructible_v<Value, const Z&>, "is not made of a date", here);
    count(!std::is_assignable_v<Value&, const D&>, "is not assigned a date-time", here);
    count(!std::is_assignable_v<Value&, const Z&>, "is not assigned a date", here);
}

template <class Date>
void refusedCounts() {
    onlyFirstCompiles<Date>(
        "fields are whole numbers", [](auto&& d) -> decltype(void(d.SetHour(5))) {},
        [](auto&& d) -> decltype(void(d.SetHour(2.5))) {}, [](auto&& d) -> decltype(void(d.SetHour(true))) {},
        [](auto&& d) -> decltype(void(d.SetMin('5'))) {},
        [](auto&& d) -> decltype(void(d.SetSecond(NkDtWmNull))) {},
        [](auto&& d) -> decltype(void(d.SetDay365(NkDtDouble(2.5)))) {},
        [](auto&& d) -> decltype(void(d.SetMonth(2.5F))) {},
        [](auto&& d) -> decltype(void(d.SetYear("5"))) {},
        [](auto&& d) -> decltype(void(d.SetYear(NkDtTime(5, 0)))) {});
    onlyFirstCompiles<Date>(
        "moves count in whole numbers", [](auto&& d) -> decltype(void(d.AddDay365(5))) {},
        [](auto&& d) -> decltype(void(d.AddDay365(2.5))) {},
        [](auto&& d) -> decltype(void(d.SubDay365(true))) {},
        [](auto&& d) -> decltype(void(d.AddMonth('5'))) {},
        [](auto&& d) -> decltype(void(d.SubMonth(2.5))) {},
        [](auto&& d) -> decltype(void(d.AddYear(NkDtDecimal(5)))) {},
        [](auto&& d) -> decltype(void(d.SubYear(NkDtBool(TRUE)))) {},
        [](auto&& d) -> decltype(void(d.AddHour(2.5))) {},
        [](auto&& d) -> decltype(void(d.SubHour(NkDtTime(1, 0)))) {},
        [](auto&& d) -> decltype(void(d.AddMin(2.5F))) {},
        [](auto&& d) -> decltype(void(d.SubMin(nullptr))) {},
        [](auto&& d) -> decltype(void(d.ConvToSQL(1))) {});
}

template <class Date>
void refusedOperators() {
    const Row row("dates are moved by durations and subtracted");
    onlyFirstCompiles<Date>(
        row, [](auto&& d) -> decltype(void(d - d)) {}, [](auto&& d) -> decltype(void(d + d)) {},
        [](auto&& d) -> decltype(void(d + D())) {}, [](auto&& d) -> decltype(void(d + Z())) {},
        [](auto&& d) -> decltype(void(D() + d)) {}, [](auto&& d) -> decltype(void(Z() + d)) {},
        [](auto&& d) -> decltype(void(d + 5)) {}, [](auto&& d) -> decltype(void(5 + d)) {},
        [](auto&& d) -> decltype(void(d + 5L)) {}, [](auto&& d) -> decltype(void(d + 2.5)) {},
        [](auto&& d) -> decltype(void(d + 'a')) {}, [](auto&& d) -> decltype(void('a' + d)) {},
        [](auto&& d) -> decltype(void(d + NkDtWmNull)) {}, [](auto&& d) -> decltype(void(d + NkDtLong(5))) {},
        [](auto&& d) -> decltype(void(NkDtLong(5) + d)) {},
        [](auto&& d) -> decltype(void(d + NkDtDecimal(5))) {},
        [](auto&& d) -> decltype(void(NkDtDouble(5) + d)) {},
        [](auto&& d) -> decltype(void(d + NkDtChar('5'))) {},
        [](auto&& d) -> decltype(void(NkDtBool(TRUE) + d)) {},
        [](auto&& d) -> decltype(void(d + COleDateTime())) {},
        [](auto&& d) -> decltype(void(COleDateTime() + d)) {},
        [](auto&& d) -> decltype(void(d + std::declval<std::tm*>())) {},
        [](auto&& d) -> decltype(void(NkDtTime(1, 0) + d)) {}, [](auto&& d) -> decltype(void(d += d)) {},
        [](auto&& d) -> decltype(void(d += 5)) {}, [](auto&& d) -> decltype(void(++d)) {},
        [](auto&& d) -> decltype(void(d++)) {});
    onlyFirstCompiles<Date>(
        row, [](auto&& d) -> decltype(void(d - NkDtTime(1, 0))) {}, [](auto&& d) -> decltype(void(d - 5)) {},
        [](auto&& d) -> decltype(void(5 - d)) {}, [](auto&& d) -> decltype(void(d - 5L)) {},
        [](auto&& d) -> decltype(void(d - 2.5)) {}, [](auto&& d) -> decltype(void(d - "1:30")) {},
        [](auto&& d) -> decltype(void("1:30" - d)) {},
        [](auto&& d) -> decltype(void(d - NkDtString("1:30"))) {},
        [](auto&& d) -> decltype(void(NkDtString("1:30") - d)) {},
        [](auto&& d) -> decltype(void(d - NkDtLong(5))) {},
        [](auto&& d) -> decltype(void(NkDtLong(5) - d)) {},
        [](auto&& d) -> decltype(void(d - NkDtDecimal(5))) {},
        [](auto&& d) -> decltype(void(NkDtDouble(5) - d)) {},
        [](auto&& d) -> decltype(void(NkDtTime(1, 0) - d)) {}, [](auto&& d) -> decltype(void(d -= d)) {},
        [](auto&& d) -> decltype(void(d -= 5)) {}, [](auto&& d) -> decltype(void(--d)) {},
        [](auto&& d) -> decltype(void(d * 2)) {}, [](auto&& d) -> decltype(void(d / d)) {},
        [](auto&& d) -> decltype(void(-d)) {}, [](auto&& d) -> decltype(void(!d)) {},
        [](auto&& d) -> decltype(void(d ? 1 : 0)) {});
    refusedBeside<Date, int, long, double, bool, char, std::nullptr_t, NkDtWorkingMode,
                  D::FormOfDateTimeString, const char*, NkDtString, CString, int*, std::tm*, NkDtLong,
                  NkDtShort, NkDtBool, NkDtChar, NkDtDouble, NkDtDecimal, NkDtTime>("compared with a date",
                                                                                    comparisons);
}

}  // namespace

void dates() {
    buildingDateTimes();
    buildingDates();
    assigning();
    leaving();
    moving();
    results();
    comparing();
    texts();
    containers();
    refusedSources<D>();
    refusedSources<Z>();
    refusedParts();
    notMadeOfADate<NkDtLong>();
    notMadeOfADate<NkDtShort>();
    notMadeOfADate<NkDtDouble>();
    notMadeOfADate<NkDtDecimal>();
    notMadeOfADate<NkDtBool>();
    notMadeOfADate<NkDtChar>();
    notMadeOfADate<NkDtTime>();
    refusedCounts<D>();
    refusedCounts<Z>();
    refusedOperators<D>();
    refusedOperators<Z>();
}

}  // namespace expressions
