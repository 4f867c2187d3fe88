/// @file
/// NkDtDecimal in everyday expressions, beside plain numbers, whole-number values and texts.

#include <nkdt/Hash.h>
#include <nkdt/NkDtBool.h>
#include <nkdt/NkDtChar.h>
#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Check.h"
#include "Refused.h"

namespace expressions {

namespace {

/// An application's own class.
class Price : public NkDtDecimal {
  public:
    using NkDtDecimal::NkDtDecimal;
    using NkDtDecimal::operator=;
};

template <class Result>
void isDecimal(const Result& result, std::string_view text,
               Here here = {__builtin_FILE(), __builtin_LINE()}) {
    static_assert(std::is_same_v<Result, NkDtDecimal>);
    char buffer[33];
    count(result.IsDefined() && result.DecimalToAscii(buffer) == text, "is the decimal", here);
}

double valueOf(const NkDtDecimal& d) {
    return d.GetValue();
}

void building() {
    isDecimal(NkDtDecimal(5), "5");
    isDecimal(NkDtDecimal(5L), "5");
    isDecimal(NkDtDecimal(5U), "5");
    isDecimal(NkDtDecimal(5000000000LL), "5000000000");
    isDecimal(NkDtDecimal(18446744073709551615ULL), "18446744073709551615");
    isDecimal(NkDtDecimal(short{5}), "5");
    isDecimal(NkDtDecimal(2.5), "2.5");
    isDecimal(NkDtDecimal(2.5F), "2.5");
    isDecimal(NkDtDecimal("1,234.50"), "1234.5");
    isDecimal(NkDtDecimal(NkDtString("1.5")), "1.5");
    isDecimal(NkDtDecimal(NkDtLong(5)), "5");
    isDecimal(NkDtDecimal(NkDtShort(5)), "5");
    isDecimal(NkDtDecimal(NkDtDouble(0.1)), "0.1");
    const NkDtDecimal implicitWhole = 5;
    isDecimal(implicitWhole, "5");
    const NkDtDecimal implicitFraction = 2.5;
    isDecimal(implicitFraction, "2.5");
    const NkDtDecimal implicitText = "2.5";
    isDecimal(implicitText, "2.5");
    holds(!NkDtDecimal().IsDefined() && !NkDtDecimal(NkDtWmNull).IsDefined());
    holds(valueOf(5) == 5.0 && valueOf(2.5) == 2.5 && valueOf("2.5") == 2.5 && valueOf(NkDtLong(5)) == 5.0);
    const LPCTSTR nothing = nullptr;
    raises(5, [&] { (void)NkDtDecimal(nothing); });
}

void assigning() {
    NkDtDecimal d;
    d = 5;
    isDecimal(d, "5");
    d = 5000000000L;
    isDecimal(d, "5000000000");
    d = 4000000000U;
    isDecimal(d, "4000000000");
    d = 2.5;
    isDecimal(d, "2.5");
    d = 2.5F;
    isDecimal(d, "2.5");
    d = "0.05";
    isDecimal(d, "0.05");
    d = NkDtString("7");
    isDecimal(d, "7");
    d = NkDtLong(8);
    isDecimal(d, "8");
    d = NkDtShort(9);
    isDecimal(d, "9");
    d = NkDtDouble(0.1);
    isDecimal(d, "0.1");
    d = NkDtDecimal("1.5");
    isDecimal(d, "1.5");
    Price price("19.99");
    d = price;
    isDecimal(d, "19.99");
    price = 5;
    holds(price == 5);
    const double plain = d;
    holds(plain == 19.99);
}

void results() {
    const NkDtDecimal a("7.5");
    const NkDtDecimal b("2");
    isDecimal(a + b, "9.5");
    isDecimal(a - b, "5.5");
    isDecimal(-a, "-7.5");
    isDecimal(+a, "7.5");
    isDecimal(-NkDtDecimal("1234567890123456789.25"), "-1234567890123456789.25");
    holds(!(-NkDtDecimal(NkDtWmMissing)).IsDefined());
    isDecimal(a * b, "15");
    isDecimal(a / b, "3.75");
    isDecimal(a % b, "1.5");
    isDecimal(a + 1, "8.5");
    isDecimal(1 + a, "8.5");
    isDecimal(a * 2L, "15");
    isDecimal(2U * a, "15");
    isDecimal(a - 5000000000LL, "-4999999992.5");
    isDecimal(a / 2ULL, "3.75");
    isDecimal(15 / a, "2");
    isDecimal(16L % a, "1");
    isDecimal(a % 2U, "1.5");
    isDecimal(a + 0.1, "7.6");
    isDecimal(0.1F * a, NkDtString(NkDtDecimal(double{0.1F}) * a).GetValue());
    isDecimal(a + NkDtLong(1), "8.5");
    isDecimal(NkDtLong(1) - a, "-6.5");
    isDecimal(NkDtLong(3) * a, "22.5");
    isDecimal(NkDtShort(3) * a, "22.5");
    isDecimal(a % NkDtShort(2), "1.5");
    isDecimal(Price("1.5") + Price("1"), "2.5");
    isDecimal(Price("1.5") * 2, "3");
    NkDtDecimal sum("0.5");
    sum += 1;
    sum += 0.25;
    sum += 5L;
    sum -= NkDtLong(2);
    sum += a;
    ++sum;
    sum--;
    isDecimal(sum, "12.25");
    raises(12, [&] { (void)(1 / NkDtDecimal(0)); });
    raises(24, [&] { (void)(a / 0); });
}

void comparing() {
    equal(NkDtDecimal("2.50"), NkDtDecimal("2.5"));
    equal(NkDtDecimal("2"), 2);
    equal(NkDtDecimal("2"), 2L);
    equal(NkDtDecimal("2"), 2U);
    equal(NkDtDecimal("2.5"), 2.5);
    equal(NkDtDecimal("2.5"), 2.5F);
    equal(NkDtDecimal("2"), NkDtLong(2));
    equal(NkDtDecimal("2"), NkDtShort(2));
    equal(NkDtDecimal("0.1"), 0.1);
    less(NkDtDecimal("2.49"), NkDtDecimal("2.5"));
    less(NkDtDecimal("1.9"), 2);
    less(NkDtDecimal("4294967295"), 4294967296LL);
    less(NkDtDecimal("1.9"), 2.0);
    less(NkDtDecimal("1.9"), NkDtLong(2));
    less(1, NkDtDecimal("1.1"));
    raises(2, [] { (void)(NkDtDecimal() == 1); });
    raises(2, [] { (void)(1.0 < NkDtDecimal()); });
}

void texts() {
    const NkDtDecimal d("12.50");
    isText("Summe: " + d, "Summe: 12.5");
    isText(d + " EUR", "12.5 EUR");
    isText(NkDtString("Summe: ") + d, "Summe: 12.5");
    isText(CString("Summe: ") + d, "Summe: 12.5");
    isText(d + CString(" EUR"), "12.5 EUR");
    NkDtString s("Summe: ");
    s += d;
    isText(s, "Summe: 12.5");
    s = d;
    isText(s, "12.5");
    std::ostringstream stream;
    stream << d << ';' << NkDtDecimal();
    holds(stream.str() == "12.5;");
}

void containers() {
    std::vector<NkDtDecimal> values;
    for (const char* text : {"2.5", "-1", "10", "0.05"})
        values.push_back(text);
    std::sort(values.begin(), values.end());
    isDecimal(values.front(), "-1");
    isDecimal(values.back(), "10");
    std::map<NkDtDecimal, int> order;
    order["2.50"] = 1;
    order["2.5"] = 2;
    holds(order.size() == 1);
    const std::unordered_set<NkDtDecimal> keys = {"2.50", "2.5", "2.51"};
    holds(keys.size() == 2);
    std::optional<NkDtDecimal> maybe = NkDtDecimal(5);
    holds(*maybe == 5);
    NkDtDecimal taken("1.5");
    const NkDtDecimal moved = std::move(taken);
    isDecimal(moved, "1.5");
    taken = 2;
    isDecimal(taken, "2");
}

void refused() {
    onlyFirstCompiles<NkDtDecimal>(
        "a decimal is assigned numbers and texts", [](auto&& d) -> decltype(void(d = 5)) {},
        [](auto&& d) -> decltype(void(d = true)) {}, [](auto&& d) -> decltype(void(d = 'a')) {},
        [](auto&& d) -> decltype(void(d = nullptr)) {}, [](auto&& d) -> decltype(void(d = NkDtWmNull)) {},
        [](auto&& d) -> decltype(void(d = NkDtBool(TRUE))) {},
        [](auto&& d) -> decltype(void(d = NkDtChar('5'))) {}, [](auto&& d) -> decltype(void(d = 2.5L)) {});
    refusedAsArgument<NkDtDecimal, int, bool, char, wchar_t, std::nullptr_t, NkDtTyps, NkDtBool, NkDtChar,
                      long double>("a function that takes a decimal");
    refusedBeside<NkDtDecimal, bool, char, wchar_t, std::nullptr_t, NkDtWorkingMode, NkDtBool, NkDtChar,
                  NkDtDouble, long double>("computed with a decimal", arithmetic);
    refusedBeside<NkDtDecimal, bool, char, wchar_t, std::nullptr_t, NkDtWorkingMode, NkDtBool, NkDtChar,
                  NkDtDouble, NkDtString, CString, long double>("compared with a decimal", comparisons);
    onlyFirstCompiles<NkDtDecimal>(
        "a decimal takes numbers in place", [](auto&& d) -> decltype(void(d += 5)) {},
        [](auto&& d) -> decltype(void(d += true)) {}, [](auto&& d) -> decltype(void(d -= 'a')) {},
        [](auto&& d) -> decltype(void(d += NkDtBool(TRUE))) {},
        [](auto&& d) -> decltype(void(d += NkDtDouble(1.5))) {},
        [](auto&& d) -> decltype(void(d % NkDtBool(TRUE))) {}, [](auto&& d) -> decltype(void(d % 'a')) {});
}

}  // namespace

void decimals() {
    building();
    assigning();
    results();
    comparing();
    texts();
    containers();
    refused();
}

}  // namespace expressions
