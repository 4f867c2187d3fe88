/// @file
/// NkDtDouble in everyday expressions.

#include <nkdt/NkDtBool.h>
#include <nkdt/NkDtChar.h>
#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <map>
#include <optional>
#include <sstream>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "Check.h"
#include "Refused.h"

namespace expressions {

namespace {

/// An application's own class.
class Gewicht : public NkDtDouble {
  public:
    using NkDtDouble::NkDtDouble;
    using NkDtDouble::operator=;
};

template <class Result>
void isDouble(const Result& result, double value, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    static_assert(std::is_same_v<Result, NkDtDouble>);
    count(result.IsDefined() && result.GetValue() == value, "is the double", here);
}

double valueOf(const NkDtDouble& d) {
    return d.GetValue();
}

// Every plain number stands beside a double.

template <class Plain>
void besidePlain() {
    const Plain five{5};
    const Plain seven{7};
    NkDtDouble d(five);
    isDouble(d, 5);
    const NkDtDouble copied = five;
    isDouble(copied, 5);
    isDouble(NkDtDouble{seven}, 7);

    isDouble(d = seven, 7);
    isDouble(d += five, 12);
    isDouble(d -= seven, 5);

    isDouble(d + seven, 12);
    isDouble(seven + d, 12);
    isDouble(d - seven, -2);
    isDouble(seven - d, 2);
    isDouble(d * seven, 35);
    isDouble(seven * d, 35);
    isDouble(NkDtDouble(3.5) / seven, 0.5);
    isDouble(seven / NkDtDouble(2), 3.5);

    equal(d, five);
    less(d, seven);
    less(Plain{3}, d);
    less(d, NkDtDouble(5.5));

    const NkDtDouble missing(NkDtWmMissing);
    raises(2, [&] { (void)(missing == five); });
    raises(2, [&] { (void)(five < missing); });
    raises(12, [&] { return d / Plain{0}; });
    raises(12, [&] { return five / NkDtDouble(0); });
    holds(!(missing + five).IsDefined());
    holds(!(five / missing).IsDefined());
    holds(valueOf(five) == 5);
}

void besideEveryPlainType() {
    besidePlain<signed char>();
    besidePlain<unsigned char>();
    besidePlain<short>();
    besidePlain<unsigned short>();
    besidePlain<int>();
    besidePlain<unsigned int>();
    besidePlain<long>();
    besidePlain<unsigned long>();
    besidePlain<long long>();
    besidePlain<unsigned long long>();
    besidePlain<float>();
    besidePlain<double>();
}

void literals() {
    isDouble(NkDtDouble(0), 0);
    isDouble(NkDtDouble(0L), 0);
    isDouble(NkDtDouble(0U), 0);
    isDouble(NkDtDouble(0.0), 0);
    const NkDtDouble implicitZero = 0;
    isDouble(implicitZero, 0);
    const NkDtDouble listed = {2.5};
    isDouble(listed, 2.5);
    isDouble(-listed, -2.5);
    isDouble(+listed, 2.5);
    holds(!(-NkDtDouble(NkDtWmMissing)).IsDefined());

    NkDtDouble d(2.5);
    isTrue(d == 2.5);
    isTrue(2.5 == d);
    isTrue(d == 2.5F);
    isTrue(d != 2);
    isTrue(0 < d);
    isTrue(d > 0L);
    isFalse(d == TRUE);
    isFalse(TRUE == d);
    isFalse(NkDtDouble(0.1) + 0.2 == 0.3);
    isDouble(d + 2.5, 5);
    isDouble(0 - d, -2.5);
    isDouble(d * 2 + 0.5, 5.5);
    const auto x = 1 / d;
    isDouble(x, 0.4);
    isDouble(d += d * 2, 7.5);
    isDouble(d = 0, 0);
    d = 2.5;
    ++d;
    d++;
    --d;
    isDouble(d, 3.5);
    isDouble(NkDtDouble(5000000000L) + 1, 5000000001.0);
    isTrue(NkDtDouble(5000000000L) == 5000000000L);
}

// Conditions, native operators, functions of the language.

void conditions() {
    const NkDtDouble d(2.5);
    const NkDtDouble other(6.5);
    bool reached = false;
    if (d == 2.5) reached = true;
    holds(reached);
    holds(!(d < 2));
    holds(d == 2.5 && other != 2.5);
    isDouble(d < other ? d : other, 2.5);
    isDouble(d > other ? d : NkDtDouble(7), 7);
    holds(-d == -2.5);
    holds(std::sqrt(d * d) == 2.5);
    holds(std::floor(d) == 2.0);
    const double plain = d;
    holds(plain == 2.5);
    // The conversion asks for nothing, the reader does.
    const NkDtDouble missing(NkDtWmMissing);
    const double unchecked = missing;
    holds(unchecked == 0.0);
    raises(2, [&] { return missing.GetValue(); });
}

// A whole-number value beside a double makes a double.

template <class Whole>
void mixes() {
    const Whole n(5);
    NkDtDouble d(2.5);
    isDouble(n + d, 7.5);
    isDouble(d + n, 7.5);
    isDouble(n - d, 2.5);
    isDouble(d - n, -2.5);
    isDouble(n * d, 12.5);
    isDouble(d * n, 12.5);
    isDouble(n / d, 2);
    isDouble(d / n, 0.5);
    less(d, n);
    equal(n, NkDtDouble(5));
    isDouble(NkDtDouble(n), 5);
    const NkDtDouble fromWhole = n;
    isDouble(fromWhole, 5);
    isDouble(d += n, 7.5);
    isDouble(d -= n, 2.5);
    isDouble(d = n, 5);
    holds(valueOf(n) == 5);

    const Whole missing(NkDtWmMissing);
    const Whole null(NkDtWmNull);
    raises(2, [&] { (void)(d == missing); });
    raises(2, [&] { (void)(missing < d); });
    holds(!(d + missing).IsDefined());
    holds(!(missing * d).IsDefined());
    isDouble(d * null, 5);
    isDouble(null * d, 5);
    isDouble(d + null, 5);
    raises(12, [&] { return d / Whole(0); });
    d = missing;
    holds(!d.IsDefined());
}

// To and from the other numbers by their constructors.

void conversions() {
    isLong(NkDtLong(NkDtDouble(2.9)), 2);
    const NkDtLong whole = NkDtDouble(-2.9);
    isLong(whole, -2);
    raises(8, [] { return NkDtLong(NkDtDouble(2147483647.5)); });
    isDouble(NkDtDouble(NkDtDecimal("0.1")), 0.1);
    NkDtDouble d;
    isDouble(d = NkDtDecimal("2.5"), 2.5);
    isTrue(NkDtDecimal(d) == NkDtDecimal("2.5"));
    isTrue(NkDtDouble(NkDtDecimal("2.5")) == d);

    const COleCurrency amount = NkDtDouble(12.5);
    holds(amount.m_cur.int64 == 125000);
    isDouble(NkDtDouble(amount), 12.5);
    isDouble(d = amount, 12.5);
}

// Text beside a double.

void texts() {
    NkDtDouble d(2.5);
    NkDtString s("Nr. ");
    isText("Nr. " + d, "Nr. 2.5");
    isText(d + " kg", "2.5 kg");
    isText(s + d, "Nr. 2.5");
    isText(d + s, "2.5Nr. ");
    isText(CString("Nr. ") + d, "Nr. 2.5");
    isText(d + CString(" kg"), "2.5 kg");
    isText(s += d, "Nr. 2.5");
    isText(s = d, "2.5");
    isText(NkDtString(d), "2.5");
    const NkDtString converted = d;
    isText(converted, "2.5");
    const NkDtDouble missing(NkDtWmMissing);
    isText("Nr. " + missing, "Nr. ");
    s = missing;
    holds(!s.IsDefined());

    isDouble(d = "12.5", 12.5);
    isDouble(d = NkDtString("-13.5"), -13.5);
    isDouble(NkDtDouble("1,5"), 1);
    isDouble(NkDtDouble(NkDtString("15.25")), 15.25);
    const NkDtDouble fromText = "16";
    isDouble(fromText, 16);
    raises(8, [&] { d = "1e400"; });
    isDouble(d, -13.5);
    // As the stated constructor from text has it, a plain text stands for its number.
    equal(d, "-13.5");
    isDouble(d += "3.5", -10);
    isDouble(d * NkDtString("2"), -20);

    std::ostringstream os;
    os << d << ';' << missing << ';' << NkDtDouble(NkDtWmNull) << ';' << NkDtDouble(0.5);
    holds(os.str() == "-10;;;0.5");
}

// Containers and algorithms.

void containers() {
    static_assert(std::is_nothrow_move_constructible_v<NkDtDouble>);
    static_assert(std::is_copy_constructible_v<NkDtDouble> && std::is_default_constructible_v<NkDtDouble>);
    static_assert(std::is_copy_assignable_v<NkDtDouble> && std::is_move_assignable_v<NkDtDouble>);

    std::vector<NkDtDouble> numbers{2.5, 1, 3.5};
    numbers.emplace_back(0.5);
    numbers.push_back(7L);
    std::sort(numbers.begin(), numbers.end());
    isDouble(numbers.front(), 0.5);
    isDouble(numbers.back(), 7);
    isDouble(std::max(numbers[0], numbers[1]), 1);
    holds(std::find(numbers.begin(), numbers.end(), 2.5) != numbers.end());
    holds(std::count(numbers.begin(), numbers.end(), 7) == 1);
    NkDtDouble sum(0);
    for (const NkDtDouble& d : numbers)
        sum += d;
    isDouble(sum, 14.5);

    std::map<NkDtDouble, int> ages;
    ages[7] = 70;
    ages[NkDtDouble(5.5)] = 50;
    ages[7.0] = 71;
    holds(ages.size() == 2 && ages.begin()->second == 50 && ages.at(7) == 71);
    std::optional<NkDtDouble> maybe;
    maybe = 2.5;
    holds(maybe == 2.5 && maybe != 6L);
    NkDtDouble a(1);
    NkDtDouble b(2);
    std::swap(a, b);
    isDouble(a, 2);
}

void husks() {
    NkDtDouble full(2.5);
    NkDtDouble taken = std::move(full);
    isDouble(taken, 2.5);
    holds(!full.IsDefined());  // NOLINT(bugprone-use-after-move)
    raises(2, [&] { (void)(full == 5); });
    full = 7;
    isDouble(full, 7);
    full = std::move(taken);
    isDouble(full, 2.5);
    isDouble(taken, 2.5);
}

// A class derived from a double is a double.

void derived() {
    Gewicht g(2.5);
    const NkDtDouble d(7.5);
    equal(g, 2.5);
    less(g, 3);
    less(g, d);
    less(g, NkDtLong(3));
    isDouble(g + 5, 7.5);
    isDouble(5.0 + g, 7.5);
    isDouble(g + d, 10);
    isDouble(d - g, 5);
    isDouble(g * g, 6.25);
    isDouble(g * NkDtLong(2), 5);
    isDouble(NkDtShort(2) * g, 5);
    isText("Nr. " + g, "Nr. 2.5");
    isDouble(NkDtDouble(g), 2.5);
    isLong(NkDtLong(g), 2);
    NkDtDouble assigned;
    isDouble(assigned = g, 2.5);
    isDouble(assigned += g, 5);
    NkDtString s;
    isText(s = g, "2.5");
    g = 6L;
    g += d;
    holds(valueOf(g) == 13.5);
    refusedBeside<Gewicht, bool, char, std::nullptr_t, NkDtWorkingMode, NkDtDecimal>(
        "beside a derived double", arithmetic);
}

// What must not compile.

void refused() {
    onlyFirstCompiles<NkDtDouble>(
        "a double takes numbers only", [](auto&& d) -> decltype(void(d = 5)) {},
        [](auto&& d) -> decltype(void(d = 2.5L)) {}, [](auto&& d) -> decltype(void(d = true)) {},
        [](auto&& d) -> decltype(void(d = 'c')) {}, [](auto&& d) -> decltype(void(d = L'5')) {},
        [](auto&& d) -> decltype(void(d = u'5')) {}, [](auto&& d) -> decltype(void(d = nullptr)) {},
        [](auto&& d) -> decltype(void(d = NkDtWmNull)) {}, [](auto&& d) -> decltype(void(d = NkDtTypLong)) {},
        [](auto&& d) -> decltype(void(d = NkDtBool(TRUE))) {},
        [](auto&& d) -> decltype(void(d = NkDtChar('5'))) {});
    onlyFirstCompiles<NkDtDouble>(
        "a double adds numbers only", [](auto&& d) -> decltype(void(d += 2.5)) {},
        [](auto&& d) -> decltype(void(d += true)) {}, [](auto&& d) -> decltype(void(d += 'c')) {},
        [](auto&& d) -> decltype(void(d += 2.5L)) {}, [](auto&& d) -> decltype(void(d += nullptr)) {},
        [](auto&& d) -> decltype(void(d += NkDtWmNull)) {},
        [](auto&& d) -> decltype(void(d += NkDtDecimal(1))) {},
        [](auto&& d) -> decltype(void(d -= NkDtDecimal(1))) {});
    onlyFirstCompiles<NkDtDouble>(
        "a double is built from numbers", [](auto&&) -> decltype(void(NkDtDouble(2.5))) {},
        [](auto&& d) -> decltype(void(std::decay_t<decltype(d)>(true))) {},
        [](auto&& d) -> decltype(void(std::decay_t<decltype(d)>('5'))) {},
        [](auto&& d) -> decltype(void(std::decay_t<decltype(d)>(2.5L))) {},
        [](auto&& d) -> decltype(void(std::decay_t<decltype(d)>(nullptr))) {},
        [](auto&& d) -> decltype(void(std::decay_t<decltype(d)>(NkDtBool(TRUE)))) {},
        [](auto&& d) -> decltype(void(std::decay_t<decltype(d)>(NkDtChar('5')))) {});
    refusedAsArgument<NkDtDouble, double, long double, bool, char, wchar_t, char16_t, char32_t,
                      std::nullptr_t, NkDtBool, NkDtChar>("a function that takes a double");
    refusedBeside<NkDtDouble, long double, bool, char, wchar_t, char16_t, char32_t, std::nullptr_t,
                  NkDtWorkingMode, NkDtTyps, NkDtBool, NkDtChar, NkDtDecimal>(
        "a double computes with numbers", arithmetic);
    refusedBeside<NkDtDouble, long double, bool, char, wchar_t, char16_t, char32_t, std::nullptr_t,
                  NkDtWorkingMode, NkDtTyps, NkDtBool, NkDtChar, NkDtDecimal, NkDtString, CString>(
        "a double compares with numbers", comparisons);

    // No whole number loses a fraction in an expression.
    onlyFirstCompiles<NkDtLong>(
        "a whole number takes whole numbers", [](auto&& n) -> decltype(void(n = NkDtShort(5))) {},
        [](auto&& n) -> decltype(void(n = NkDtDouble(2.5))) {},
        [](auto&& n) -> decltype(void(n += NkDtDouble(2.5))) {},
        [](auto&& n) -> decltype(void(n -= NkDtDouble(2.5))) {});
    onlyFirstCompiles<NkDtShort>(
        "a short takes whole numbers", [](auto&& n) -> decltype(void(n = NkDtLong(5))) {},
        [](auto&& n) -> decltype(void(n = NkDtDouble(2.5))) {},
        [](auto&& n) -> decltype(void(n += NkDtDouble(2.5))) {},
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>(NkDtDouble(2.5)))) {});
    onlyFirstCompiles<NkDtString>(
        "a position is a whole number", [](auto&& s) -> decltype(void(s[NkDtLong(1)])) {},
        [](auto&& s) -> decltype(void(s[NkDtDouble(1.5)])) {},
        [](auto&& s) -> decltype(void(s.GetnValue(NkDtDouble(1.5), 1))) {});
    onlyFirstCompiles<NkDtDouble>(
        "a double is no character and no truth value",
        [](auto&& d) -> decltype(void(std::declval<NkDtString&>() = d)) {},
        [](auto&& d) -> decltype(void(std::declval<CString&>() = d)) {},
        [](auto&& d) -> decltype(void(std::declval<NkDtChar&>() = d)) {},
        [](auto&& d) -> decltype(void(std::declval<NkDtBool&>() = d)) {},
        [](auto&& d) -> decltype(void(NkDtChar(d))) {}, [](auto&& d) -> decltype(void(NkDtBool(d))) {},
        [](auto&& d) -> decltype(void(CString(d))) {});
    onlyFirstCompiles<NkDtDouble>(
        "the two sides of a choice have one type", [](auto&& d) -> decltype(void(true ? d : d)) {},
        [](auto&& d) -> decltype(void(true ? d : 5)) {}, [](auto&& d) -> decltype(void(true ? 2.5 : d)) {});
}

}  // namespace

void doubles() {
    besideEveryPlainType();
    literals();
    conditions();
    mixes<NkDtLong>();
    mixes<NkDtShort>();
    conversions();
    texts();
    containers();
    husks();
    derived();
    refused();
}

}  // namespace expressions
