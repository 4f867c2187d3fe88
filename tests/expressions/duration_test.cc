/// @file
/// NkDtTime in everyday expressions, beside numbers and texts.

#include <nkdt/Hash.h>
#include <nkdt/NkDtBool.h>
#include <nkdt/NkDtChar.h>
#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>
#include <nkdt/NkDtTime.h>
#include <nkfw/Recordset.h>

#include <algorithm>
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

using Mode = NkDtTime::TimeMode;
constexpr Mode minutes = NkDtTime::Minutes;
constexpr Mode hundredths = NkDtTime::Hundredths;

/// An application's own class.
class WorkingTime : public NkDtTime {
  public:
    using NkDtTime::NkDtTime;
    using NkDtTime::operator=;
};

template <class Result>
void isDuration(const Result& result, LONG length, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    static_assert(std::is_same_v<Result, NkDtTime>);
    count(result.IsDefined() && result.GetTime(minutes) == length, "is the duration", here);
}

LONG lengthOf(const NkDtTime& t) {
    return t.GetTime(minutes);
}

void building() {
    isDuration(NkDtTime("1:30"), 90);
    isDuration(NkDtTime("1,50", hundredths), 90);
    isDuration(NkDtTime(NkDtString("1:30")), 90);
    isDuration(NkDtTime(NkDtString("1,50"), hundredths), 90);
    isDuration(NkDtTime(1, 30), 90);
    isDuration(NkDtTime(1, 50, hundredths), 90);
    isDuration(NkDtTime(1L, 30L), 90);
    isDuration(NkDtTime(1, 30L), 90);
    isDuration(NkDtTime(short{1}, 30U, minutes), 90);
    isDuration(NkDtTime(NkDtLong(1), NkDtLong(30)), 90);
    isDuration(NkDtTime(NkDtShort(1), NkDtShort(30)), 90);
    isDuration(NkDtTime(NkDtLong(1), NkDtLong(50), hundredths), 90);
    isDuration(NkDtTime(NkDtLong(1), NkDtShort(30)), 90);
    isDuration(NkDtTime(NkDtLong(1), 30), 90);
    isDuration(NkDtTime(1L, NkDtShort(50), hundredths), 90);
    char buffer[] = "1:30";
    isDuration(NkDtTime(buffer), 90);
    isDuration(NkDtTime(static_cast<char*>(buffer), minutes), 90);
    const NkDtTime implicitText = "1:30";
    isDuration(implicitText, 90);
    const NkDtTime listed{1, 30};
    isDuration(listed, 90);
    isDuration(NkDtTime(WorkingTime(1, 30)), 90);
    holds(!NkDtTime().IsDefined() && NkDtTime(NkDtWmNull).IsNull());
    holds(lengthOf("1:30") == 90 && lengthOf({1, 30}) == 90 && lengthOf(NkDtString("1:30")) == 90);
    const LPCTSTR nothing = nullptr;
    raises(1, [&] { (void)NkDtTime(nothing); });
    raises(8, [] { (void)NkDtTime(5000000000LL, 0LL); });
}

void assigning() {
    NkDtTime t;
    t = "1:30";
    isDuration(t, 90);
    t = NkDtString("2:00");
    isDuration(t, 120);
    t = NkDtTime(0, 15);
    isDuration(t, 15);
    t = {3, 0};
    isDuration(t, 180);
    WorkingTime w(7, 45);
    t = w;
    isDuration(t, 465);
    w = t;
    w = NkDtTime("8:00");
    holds(w == NkDtTime(8, 0));
    t = NkDtTime(NkDtWmNull);
    holds(!t.IsDefined());
}

void counting() {
    NkDtTime t;
    t.SetHour(1);
    t.SetMin(30);
    t.AddHour(1L);
    t.SubHour(short{1});
    t.AddMin(5U, minutes);
    t.SubMin(NkDtLong(5));
    t.AddMin(25, hundredths);
    isDuration(t, 105);
    t.SetTime(NkDtShort(90));
    isDuration(t, 90);
    long count = 45;
    t.SetMin(count);
    isDuration(t, 105);
    t.SetFromSQL(1800L);
    isDuration(t, 90);
    raises(8, [&] { t.AddMin(5000000000LL); });
    raises(2, [&] { t.SetHour(NkDtLong(NkDtWmMissing)); });
}

void results() {
    const NkDtTime a(7, 45);
    const NkDtTime b("0:15");
    isDuration(a + b, 480);
    isDuration(a - b, 450);
    isDuration(a + b - b + a, 930);
    isDuration(WorkingTime(1, 0) + WorkingTime(2, 0), 180);
    isDuration(WorkingTime(1, 0) - a, -405);
    NkDtTime sum(0, 0);
    sum += a;
    sum += WorkingTime(1, 0);
    sum -= b;
    isDuration(sum, 510);
    sum += sum;
    isDuration(sum, 1020);
    holds(!(a + NkDtTime(NkDtWmMissing)).IsDefined());
}

void comparing() {
    equal(NkDtTime(1, 30), NkDtTime("1:30"));
    equal(NkDtTime(1, 30), NkDtTime(1, 50, hundredths));
    equal(NkDtTime(1, 30), WorkingTime(1, 30));
    equal(WorkingTime(1, 30), WorkingTime(1, 30));
    equal(NkDtTime(1, 30), "1:30");  // the text is read
    less(NkDtTime(1, 29), NkDtTime(1, 30));
    less(NkDtTime(9, 0), "10:00");
    raises(2, [] { (void)(NkDtTime() == NkDtTime(1, 30)); });
    raises(2, [] { (void)(NkDtTime(1, 30) < NkDtTime()); });
}

void texts() {
    const NkDtTime t(1, 30);
    const CString cs("cs");
    isText(NkDtString(t), "01:30");
    isText("Dauer: " + t, "Dauer: 01:30");
    isText(t + " h", "01:30 h");
    isText(t + "1:30", "01:301:30");  // a text is joined, not added
    isText(NkDtString("s") + t, "s01:30");
    isText(t + NkDtString("s"), "01:30s");
    isText(cs + t, "cs01:30");
    isText(t + cs, "01:30cs");
    isText(WorkingTime(1, 0) + "!", "01:00!");
    isText("!" + WorkingTime(1, 0), "!01:00");
    NkDtString s("Dauer: ");
    s += t;
    isText(s, "Dauer: 01:30");
    s = t;
    isText(s, "01:30");
    std::ostringstream stream;
    stream << t << ';' << NkDtTime() << ';' << WorkingTime(2, 0);
    holds(stream.str() == "01:30;;02:00");
}

void containers() {
    std::vector<NkDtTime> values;
    for (const char* text : {"2:30", "-1:00", "10:00", "0:05"})
        values.push_back(text);
    std::sort(values.begin(), values.end());
    isDuration(values.front(), -60);
    isDuration(values.back(), 600);
    std::map<NkDtTime, int> order;
    order["1:30"] = 1;
    order[NkDtTime("1,50", hundredths)] = 2;
    holds(order.size() == 1);
    const std::unordered_set<NkDtTime> keys = {"1:30", "01:30", "1:31"};
    holds(keys.size() == 2);
    std::optional<NkDtTime> maybe = NkDtTime(5, 0);
    holds(*maybe == NkDtTime(5, 0));
    NkDtTime taken(1, 30);
    const NkDtTime moved = std::move(taken);
    isDuration(moved, 90);
    taken = "2:00";
    isDuration(taken, 120);
}

template <class... Sources>
void builtFrom(bool wanted, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    count(std::is_constructible_v<NkDtTime, Sources...> == wanted, "is built from that", here);
}

void refusedValues() {
    onlyFirstCompiles<NkDtTime>(
        "a duration is assigned durations and texts", [](auto&& t) -> decltype(void(t = "1:30")) {},
        [](auto&& t) -> decltype(void(t = 5)) {}, [](auto&& t) -> decltype(void(t = 0)) {},
        [](auto&& t) -> decltype(void(t = 2.5)) {}, [](auto&& t) -> decltype(void(t = true)) {},
        [](auto&& t) -> decltype(void(t = 'a')) {}, [](auto&& t) -> decltype(void(t = nullptr)) {},
        [](auto&& t) -> decltype(void(t = NkDtWmNull)) {}, [](auto&& t) -> decltype(void(t = minutes)) {},
        [](auto&& t) -> decltype(void(t = NkDtLong(5))) {},
        [](auto&& t) -> decltype(void(t = NkDtChar('5'))) {},
        [](auto&& t) -> decltype(void(t = NkDtDecimal(5))) {});
    refusedAsArgument<NkDtTime, const char*, int, long, double, bool, char, std::nullptr_t, Mode, NkDtLong,
                      NkDtShort, NkDtBool, NkDtChar, NkDtDouble, NkDtDecimal>(
        "a function that takes a duration");
    builtFrom<const char*>(true);
    builtFrom<const char*, Mode>(true);
    builtFrom<int, int, Mode>(true);
    builtFrom<int>(false);
    builtFrom<long>(false);
    builtFrom<double>(false);
    builtFrom<bool>(false);
    builtFrom<char>(false);
    builtFrom<std::nullptr_t>(false);
    builtFrom<Mode>(false);
    builtFrom<NkDtLong>(false);
    builtFrom<NkDtDecimal>(false);
    builtFrom<int, Mode>(false);
    builtFrom<NkDtWorkingMode, Mode>(false);
    builtFrom<double, int>(false);
    builtFrom<int, double>(false);
    builtFrom<int, bool>(false);
    builtFrom<char, int>(false);
    builtFrom<NkDtDouble, NkDtDouble>(false);
    builtFrom<int, NkDtDecimal>(false);
    builtFrom<int, int, int>(false);
}

/// No number, truth value or character is made of a duration, though its text begins with digits.
template <class Value>
void notMadeOfADuration(Here here = {__builtin_FILE(), __builtin_LINE()}) {
    count(std::is_constructible_v<Value, const NkDtString&>, "is made of a text", here);
    count(!std::is_constructible_v<Value, const NkDtTime&>, "is not made of a duration", here);
    count(!std::is_assignable_v<Value&, const NkDtTime&>, "is not assigned a duration", here);
}

void refusedSources() {
    notMadeOfADuration<NkDtLong>();
    notMadeOfADuration<NkDtShort>();
    notMadeOfADuration<NkDtDouble>();
    notMadeOfADuration<NkDtDecimal>();
    notMadeOfADuration<NkDtBool>();
    notMadeOfADuration<NkDtChar>();
}

void refusedCounts() {
    onlyFirstCompiles<NkDtTime>(
        "hours are whole numbers", [](auto&& t) -> decltype(void(t.SetHour(5))) {},
        [](auto&& t) -> decltype(void(t.SetHour(2.5))) {}, [](auto&& t) -> decltype(void(t.SetHour(true))) {},
        [](auto&& t) -> decltype(void(t.SetHour('5'))) {},
        [](auto&& t) -> decltype(void(t.SetHour(minutes))) {},
        [](auto&& t) -> decltype(void(t.SetHour(NkDtDouble(2.5)))) {},
        [](auto&& t) -> decltype(void(t.AddHour(2.5F))) {},
        [](auto&& t) -> decltype(void(t.SubHour(NkDtBool(TRUE)))) {},
        [](auto&& t) -> decltype(void(t.SetFromSQL(2.5))) {});
    onlyFirstCompiles<NkDtTime>(
        "parts are whole numbers in a mode", [](auto&& t) -> decltype(void(t.SetMin(5, minutes))) {},
        [](auto&& t) -> decltype(void(t.SetMin(2.5))) {},
        [](auto&& t) -> decltype(void(t.SetMin(minutes, 5))) {},
        [](auto&& t) -> decltype(void(t.SetMin(5, 1))) {},
        [](auto&& t) -> decltype(void(t.SetMin(minutes))) {},
        [](auto&& t) -> decltype(void(t.SetTime(2.5))) {}, [](auto&& t) -> decltype(void(t.AddMin(2.5))) {},
        [](auto&& t) -> decltype(void(t.SubMin('5', minutes))) {},
        [](auto&& t) -> decltype(void(t.SetMode(1))) {}, [](auto&& t) -> decltype(void(t.Round(1))) {},
        [](auto&& t) -> decltype(void(t.Round(minutes))) {});
    onlyFirstCompiles<NkDtTime>(
        "a field is known by its address",
        [](auto&& t) -> decltype(void(
                         t.SetFromRecordSet(std::declval<CRecordset&>(), std::declval<const LONG&>()))) {},
        [](auto&& t) -> decltype(void(
                         t.SetFromRecordSet(std::declval<CRecordset&>(), std::declval<const long&>()))) {},
        [](auto&& t) -> decltype(void(
                         t.ConvToRecordSet(std::declval<CRecordset&>(), std::declval<long&>()))) {});
}

void refusedOperators() {
    refusedBeside<NkDtTime, int, long, double, bool, char, wchar_t, std::nullptr_t, NkDtWorkingMode, Mode,
                  NkDtLong, NkDtShort, NkDtBool, NkDtChar, NkDtDouble, NkDtDecimal, int*>(
        "added to a duration", addition);
    refusedBeside<NkDtTime, int, long, double, bool, char, std::nullptr_t, NkDtWorkingMode, Mode, NkDtLong,
                  NkDtShort, NkDtBool, NkDtChar, NkDtDouble, NkDtDecimal, NkDtString, CString, int*>(
        "compared with a duration", comparisons);
    onlyFirstCompiles<NkDtTime>(
        "durations are added and subtracted", [](auto&& t) -> decltype(void(t - t)) {},
        [](auto&& t) -> decltype(void(t - 5)) {}, [](auto&& t) -> decltype(void(5 - t)) {},
        [](auto&& t) -> decltype(void(t - "1:30")) {}, [](auto&& t) -> decltype(void("1:30" - t)) {},
        [](auto&& t) -> decltype(void(t - NkDtString("1:30"))) {},
        [](auto&& t) -> decltype(void(t - NkDtLong(5))) {},
        [](auto&& t) -> decltype(void(NkDtLong(5) - t)) {}, [](auto&& t) -> decltype(void(t * 2)) {},
        [](auto&& t) -> decltype(void(2 * t)) {}, [](auto&& t) -> decltype(void(t * t)) {},
        [](auto&& t) -> decltype(void(t / 2)) {}, [](auto&& t) -> decltype(void(t / t)) {},
        [](auto&& t) -> decltype(void(t % t)) {}, [](auto&& t) -> decltype(void(t * 2.5)) {},
        [](auto&& t) -> decltype(void(t * NkDtDecimal(2))) {}, [](auto&& t) -> decltype(void(-t)) {},
        [](auto&& t) -> decltype(void(++t)) {}, [](auto&& t) -> decltype(void(!t)) {},
        [](auto&& t) -> decltype(void(t ? 1 : 0)) {});
    onlyFirstCompiles<NkDtTime>(
        "durations are added in place", [](auto&& t) -> decltype(void(t += t)) {},
        [](auto&& t) -> decltype(void(t += 5)) {}, [](auto&& t) -> decltype(void(t -= 5)) {},
        [](auto&& t) -> decltype(void(t += "1:30")) {}, [](auto&& t) -> decltype(void(t -= "1:30")) {},
        [](auto&& t) -> decltype(void(t += NkDtString("1:30"))) {},
        [](auto&& t) -> decltype(void(t += NkDtLong(5))) {}, [](auto&& t) -> decltype(void(t -= 2.5)) {},
        [](auto&& t) -> decltype(void(t *= 2)) {});
}

}  // namespace

void durations() {
    building();
    assigning();
    counting();
    results();
    comparing();
    texts();
    containers();
    refusedValues();
    refusedSources();
    refusedCounts();
    refusedOperators();
}

}  // namespace expressions
