/// @file
/// NkDtLong and NkDtShort in everyday expressions.

#include <nkfo/NkFormat.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Check.h"
#include "Refused.h"

namespace expressions {

namespace {

constexpr long kLongMax = std::numeric_limits<INT>::max();
constexpr long kLongMin = std::numeric_limits<INT>::min();

/// An application's own class.
class Menge : public NkDtLong {
  public:
    using NkDtLong::NkDtLong;
    using NkDtLong::operator=;
};

template <class Number, class Result>
void is(const Result& result, long value, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    isNumber<Number>(result, value, here);
}

long valueOf(const NkDtLong& n) {
    return n.GetValue();
}
long valueOfShort(const NkDtShort& n) {
    return n.GetValue();
}

// Every whole type stands beside a number.

template <class Number, class Whole>
void besideWhole() {
    const Whole five{5};
    const Whole seven{7};
    Number n(five);
    is<Number>(n, 5);
    const Number copied = five;
    is<Number>(copied, 5);
    is<Number>(Number{seven}, 7);

    n = seven;
    is<Number>(n, 7);
    is<Number>(n += five, 12);
    is<Number>(n -= seven, 5);

    is<Number>(n + seven, 12);
    is<Number>(seven + n, 12);
    is<Number>(n - seven, -2);
    is<Number>(seven - n, 2);
    is<Number>(n * seven, 35);
    is<Number>(seven * n, 35);
    is<Number>(Number(15) / seven, 2);
    is<Number>(seven / Number(2), 3);

    equal(n, five);
    less(n, seven);
    less(Whole{3}, n);

    const Number missing(NkDtWmMissing);
    raises(2, [&] { (void)(missing == five); });
    raises(2, [&] { (void)(five < missing); });
    holds(!(missing + five).IsDefined());
}

template <class Number>
void besideEveryWholeType() {
    besideWhole<Number, signed char>();
    besideWhole<Number, unsigned char>();
    besideWhole<Number, short>();
    besideWhole<Number, unsigned short>();
    besideWhole<Number, int>();
    besideWhole<Number, unsigned int>();
    besideWhole<Number, long>();
    besideWhole<Number, unsigned long>();
    besideWhole<Number, long long>();
    besideWhole<Number, unsigned long long>();
}

template <class Number>
void literals() {
    is<Number>(Number(0), 0);
    is<Number>(Number(0L), 0);
    is<Number>(Number(0u), 0);
    is<Number>(Number(0ULL), 0);
    const Number implicitZero = 0;
    is<Number>(implicitZero, 0);
    const Number implicitLongZero = 0L;
    is<Number>(implicitLongZero, 0);
    const Number listed = {5};
    is<Number>(listed, 5);
    is<Number>(Number{-5L}, -5);

    Number n(5);
    isTrue(n == 5);
    isTrue(5 == n);
    isTrue(n == 5L);
    isTrue(5L == n);
    isTrue(n != 0);
    isTrue(0 < n);
    isTrue(n > 0L);
    isFalse(n == TRUE);
    isFalse(TRUE == n);
    isTrue(n != FALSE);
    is<Number>(n + 5, 10);
    is<Number>(5 + n, 10);
    is<Number>(n + 5u, 10);
    is<Number>(0 - n, -5);
    const auto x = n * 2 + 1;
    is<Number>(x, 11);
    n += n * 2 + 1;
    is<Number>(n, 16);
    n = 0;
    is<Number>(n, 0);
    // An enumerator that is no working mode is its number.
    isTrue(n != NkDtTypLong);
    is<Number>(n + NkDtTypLong, 3);

    holds(valueOf(5) == 5);
    holds(valueOf(5L) == 5);
    holds(valueOf(5ULL) == 5);
    holds(valueOf("12") == 12);
    holds(valueOf(NkDtShort(12)) == 12);
    holds(valueOfShort(NkDtLong(12)) == 12);
}

// Conditions, loops, native operators.

template <class Number>
void conditions() {
    const Number n(5);
    const Number other(6);
    bool reached = false;
    if (n == 5) reached = true;
    holds(reached);
    holds(!(n < 5));
    holds(!(n == other));
    holds(n == 5 && other != 5);
    holds(n == 6 || 6 == other);
    is<Number>(n < other ? n : other, 5);
    is<Number>(n > other ? n : Number(7), 7);
    int rounds = 0;
    for (Number i = 0; i < 3; ++i)
        ++rounds;
    for (Number i = 3; i > 0; i--)
        ++rounds;
    holds(rounds == 6);

    holds(-n == -5L);
    holds(n % 2 == 1);
    holds(n % other == 5);
    const int squares[] = {0, 1, 4, 9, 16, 25};
    holds(squares[n] == 25);
    switch (n) {
        case 5:
            break;
        default:
            holds(false);
    }
    const long plain = n;
    holds(plain == 5);
}

// What does not fit raises error 8, and nothing changes.

void ranges() {
    raises(8, [] { return NkDtLong(4000000000u); });
    raises(8, [] { return NkDtLong(5000000000L); });
    raises(8, [] { return NkDtLong(-5000000000L); });
    raises(8, [] { return NkDtLong(std::numeric_limits<unsigned long>::max()); });
    raises(8, [] { return NkDtLong(kLongMax + 1); });
    raises(8, [] { return NkDtLong(kLongMin - 1); });
    isLong(NkDtLong(kLongMax), kLongMax);
    isLong(NkDtLong(kLongMin), kLongMin);
    raises(8, [] { return NkDtShort(40000); });
    raises(8, [] { return NkDtShort(40000L); });
    raises(8, [] { return NkDtShort(65536u); });
    raises(8, [] { return NkDtShort(static_cast<unsigned short>(40000)); });
    isShort(NkDtShort(-32768L), -32768);

    NkDtLong l(5);
    l.SetModified(FALSE);
    raises(8, [&] { l = 5000000000L; });
    raises(8, [&] { l = -5000000000LL; });
    raises(8, [&] { l = 4000000000u; });
    raises(8, [&] { l = std::numeric_limits<unsigned long>::max(); });
    raises(8, [&] { l += 5000000000L; });
    raises(8, [&] { l -= 5000000000L; });
    raises(8, [&] { l += kLongMax; });
    raises(8, [&] { return l + 5000000000L; });
    raises(8, [&] { return 5000000000L - l; });
    raises(8, [&] { return l * 5000000000L; });
    raises(8, [&] { return l * 1000000000; });
    raises(12, [&] { return l / 0; });
    raises(12, [&] { return l / 0L; });
    isLong(l, 5);
    holds(l.IsModified() == FALSE);

    NkDtShort sh(5);
    sh.SetModified(FALSE);
    raises(8, [&] { sh = 40000L; });
    raises(8, [&] { sh = 40000; });
    raises(8, [&] { sh = 65536u + 5u; });
    raises(8, [&] { sh += 40000L; });
    raises(8, [&] { return sh + 40000L; });
    raises(8, [&] { return sh * 10000u; });
    isShort(sh, 5);
    holds(sh.IsModified() == FALSE);
    // An operand takes part whole; only the result is checked.
    isShort(NkDtShort(-10000) + 40000L, 30000);
    isShort(40000u - NkDtShort(10000), 30000);
}

// Comparing looks at 64 bits.

void wideComparisons() {
    const NkDtLong l(5);
    const NkDtLong minusOne(-1);
    isFalse(l == 5000000000L);
    less(l, 5000000000L);
    less(l, 5000000000LL);
    less(-5000000000L, l);
    less(l, std::numeric_limits<unsigned long>::max());
    less(l, std::numeric_limits<unsigned long long>::max());
    less(std::numeric_limits<long long>::min(), l);
    // 5 + 2^32 and -1 + 2^32 are no 5 and no -1.
    isFalse(l == 4294967301L);
    less(minusOne, 4294967295u);
    less(minusOne, 4294967295L);
    less(minusOne, 0u);
    less(minusOne, 0UL);
    less(minusOne, std::numeric_limits<unsigned long long>::max());
    equal(NkDtLong(kLongMax), 2147483647u);
    less(NkDtLong(kLongMax), 2147483648u);

    const NkDtShort sh(5);
    less(sh, 40000);
    less(sh, 65541);  // 5 + 2^16
    less(sh, 65541u);
    less(sh, 40000L);
    less(sh, 5000000000L);
    less(-40000, sh);
    less(NkDtShort(-1), 65535u);
    less(NkDtShort(-1), std::numeric_limits<unsigned long>::max());
}

// A long and a short make a long.

void mixes() {
    NkDtLong l(40000);
    NkDtShort sh(200);
    isLong(l + sh, 40200);
    isLong(sh + l, 40200);
    isLong(l - sh, 39800);
    isLong(sh - l, -39800);
    isLong(l * sh, 8000000);
    isLong(sh * l, 8000000);
    isLong(l / sh, 200);
    isLong(sh / NkDtLong(7), 28);
    isLong(NkDtLong(sh) * sh, 40000);
    isShort(sh + sh, 400);
    raises(8, [&] { return sh * sh; });
    less(sh, l);
    equal(sh, NkDtLong(200));
    less(NkDtLong(-40000), sh);

    isLong(l = sh, 200);
    isLong(l += sh, 400);
    isLong(l -= sh, 200);
    isShort(sh = l, 200);
    isShort(sh += l, 400);
    isShort(sh -= NkDtLong(100), 300);
    isLong(NkDtLong(sh), 300);
    isShort(NkDtShort(l), 200);
    const NkDtLong fromShort = sh;
    isLong(fromShort, 300);
    raises(8, [&] { sh = NkDtLong(40000); });
    raises(8, [&] { return NkDtShort(NkDtLong(40000)); });
    isShort(sh, 300);

    const NkDtShort missing(NkDtWmMissing);
    const NkDtShort null(NkDtWmNull);
    raises(2, [&] { (void)(l == missing); });
    raises(2, [&] { (void)(missing < l); });
    holds(!(l + missing).IsDefined());
    holds(!(missing * l).IsDefined());
    isLong(l + null, 200);
    isLong(l * null, 200);
    isLong(null * l, 200);
    l = missing;
    holds(!l.IsDefined());
}

// Text beside a number.

template <class Number>
void texts() {
    Number n(5);
    NkDtString s("Nr. ");
    isText("Nr. " + n, "Nr. 5");
    isText(n + " St.", "5 St.");
    isText(s + n, "Nr. 5");
    isText(n + s, "5Nr. ");
    isText(CString("Nr. ") + n, "Nr. 5");
    isText(n + CString(" St."), "5 St.");
    isText("Nr. " + n + "/" + Number(-6), "Nr. 5/-6");
    isText(s += n, "Nr. 5");
    isText(s = n, "5");
    isText(NkDtString(n), "5");
    const NkDtString converted = n;
    isText(converted, "5");
    const Number missing(NkDtWmMissing);
    isText("Nr. " + missing, "Nr. ");
    isText(s + missing, "5");
    s = missing;
    holds(!s.IsDefined());

    is<Number>(n = "12", 12);
    is<Number>(n = NkDtString("-13"), -13);
    is<Number>(Number("14"), 14);
    is<Number>(Number(NkDtString("15")), 15);
    const Number fromText = "16";
    is<Number>(fromText, 16);
    raises(5, [&] { n = "12x"; });
    is<Number>(n, -13);
    // As the stated constructor from text has it, a plain text stands for its number.
    equal(n, "-13");
    less(n, "7");
    is<Number>(n += "3", -10);
    is<Number>(n - "10", -20);
    is<Number>(n * NkDtString("2"), -20);
    raises(5, [&] { (void)(n == "x"); });
    isText(NkDtString("x=") += n, "x=-10");

    std::ostringstream os;
    os << n << ';' << missing << ';' << Number(NkDtWmNull) << ';' << Number(0);
    holds(os.str() == "-10;;;0");
    holds(std::to_string(n) == "-10");
}

// Containers and algorithms.

template <class Number>
void containers() {
    static_assert(std::is_nothrow_move_constructible_v<Number>);
    static_assert(std::is_copy_constructible_v<Number> && std::is_default_constructible_v<Number>);
    static_assert(std::is_copy_assignable_v<Number> && std::is_move_assignable_v<Number>);

    // A format goes with a move and never with a copy.
    const NkFormat format(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');
    std::vector<Number> numbers;
    for (int i = 0; i < 100; ++i) {
        numbers.push_back(Number((i * 37) % 100));
        numbers.back().SetFormat(&format);
    }
    std::sort(numbers.begin(), numbers.end());
    std::reverse(numbers.begin(), numbers.end());
    numbers.insert(numbers.begin(), Number(100));
    numbers.front().SetFormat(&format);
    numbers.erase(numbers.begin() + 1);
    holds(std::all_of(numbers.begin(), numbers.end(),
                      [&](const Number& n) { return n.GetFormat() == &format; }));
    is<Number>(numbers[0], 100);
    is<Number>(numbers[1], 98);
    is<Number>(numbers.back(), 0);

    Number a(1);
    Number b(2);
    a.SetFormat(&format);
    std::swap(a, b);
    is<Number>(a, 2);
    is<Number>(b, 1);
    holds(a.GetFormat() == nullptr && b.GetFormat() == &format);
    is<Number>(std::max(a, b), 2);
    is<Number>(std::min(a, Number(-1)), -1);

    holds(std::find(numbers.begin(), numbers.end(), 7) != numbers.end());
    holds(std::count(numbers.begin(), numbers.end(), 7L) == 1);
    std::vector<Number> listed{1, 2, 3};
    listed.emplace_back(4L);
    listed.push_back(5);
    Number sum(0);
    for (const Number& n : listed)
        sum += n;
    is<Number>(sum, 15);

    std::map<Number, int> ages;
    ages[7] = 70;
    ages[Number(5)] = 50;
    ages[7] = 71;
    holds(ages.size() == 2 && ages.begin()->second == 50 && ages.at(7) == 71);
    std::optional<Number> maybe;
    maybe = 5;
    holds(maybe == 5 && maybe != 6L);
    const std::pair<Number, Number> one{1, 2};
    const std::pair<Number, Number> two{1, 3};
    holds(one < two && one != two);
}

template <class Number>
void husks() {
    Number full(5);
    Number taken = std::move(full);
    is<Number>(taken, 5);
    holds(!full.IsDefined());  // NOLINT(bugprone-use-after-move)
    raises(2, [&] { (void)(full == 5); });
    full += 1;
    holds(!full.IsDefined());
    full = 7;
    is<Number>(full, 7);
    // Only a husk takes everything; any other value is assigned to.
    full = std::move(taken);
    is<Number>(full, 5);
    is<Number>(taken, 5);
    taken = full + 1L;
    is<Number>(taken, 6);
}

// A class derived from a number is a number.

void derived() {
    Menge m(5);
    const NkDtLong l(7);
    NkDtShort sh(3);
    equal(m, 5);
    equal(m, 5L);
    less(m, 5000000000L);
    less(m, l);
    less(sh, m);
    equal(m, Menge(5));
    isLong(m + 5, 10);
    isLong(5u + m, 10);
    isLong(m + l, 12);
    isLong(l - m, 2);
    isLong(m * m, 25);
    isLong(m * sh, 15);
    isLong(sh - m, -2);
    isText("Nr. " + m, "Nr. 5");
    isText(NkDtString("x") + m, "x5");
    isText(m + NkDtString("x"), "5x");
    isLong(NkDtLong(m), 5);
    NkDtLong assigned;
    isLong(assigned = m, 5);
    isLong(assigned += m, 10);
    isShort(sh = m, 5);
    isShort(sh += m, 10);
    isShort(sh -= m, 5);
    NkDtString s;
    isText(s = m, "5");
    isText(s += m, "55");
    m = 6L;
    m += l;
    holds(valueOf(m) == 13);
    m = l;
    holds(m == l);
    raises(8, [&] { m = 5000000000L; });
    refusedBeside<Menge, double, bool, char, std::nullptr_t, NkDtWorkingMode>("beside a derived number",
                                                                              arithmetic);
    refusedBeside<Menge, double, bool, char, std::nullptr_t, NkDtWorkingMode, NkDtString, CString>(
        "compared with a derived number", comparisons);
}

// What must not compile.

template <class Number>
void refused() {
    onlyFirstCompiles<Number>(
        "a number takes whole numbers only", [](auto&& n) -> decltype(void(n = 5)) {},
        [](auto&& n) -> decltype(void(n = 2.5)) {}, [](auto&& n) -> decltype(void(n = 2.5f)) {},
        [](auto&& n) -> decltype(void(n = 2.5L)) {}, [](auto&& n) -> decltype(void(n = true)) {},
        [](auto&& n) -> decltype(void(n = 'c')) {}, [](auto&& n) -> decltype(void(n = '5')) {},
        [](auto&& n) -> decltype(void(n = L'5')) {}, [](auto&& n) -> decltype(void(n = u'5')) {},
        [](auto&& n) -> decltype(void(n = U'5')) {}, [](auto&& n) -> decltype(void(n = nullptr)) {},
        [](auto&& n) -> decltype(void(n = NkDtWmNull)) {},
        [](auto&& n) -> decltype(void(n = NkDtWmMissing)) {});
    onlyFirstCompiles<Number>(
        "a number adds whole numbers only", [](auto&& n) -> decltype(void(n += 5)) {},
        [](auto&& n) -> decltype(void(n += 2.5)) {}, [](auto&& n) -> decltype(void(n += 2.5f)) {},
        [](auto&& n) -> decltype(void(n += true)) {}, [](auto&& n) -> decltype(void(n += 'c')) {},
        [](auto&& n) -> decltype(void(n += L'c')) {}, [](auto&& n) -> decltype(void(n += nullptr)) {},
        [](auto&& n) -> decltype(void(n += NkDtWmNull)) {});
    onlyFirstCompiles<Number>(
        "a number subtracts whole numbers only", [](auto&& n) -> decltype(void(n -= 5)) {},
        [](auto&& n) -> decltype(void(n -= 2.5)) {}, [](auto&& n) -> decltype(void(n -= 2.5f)) {},
        [](auto&& n) -> decltype(void(n -= true)) {}, [](auto&& n) -> decltype(void(n -= 'c')) {},
        [](auto&& n) -> decltype(void(n -= L'c')) {}, [](auto&& n) -> decltype(void(n -= nullptr)) {},
        [](auto&& n) -> decltype(void(n -= NkDtWmNull)) {});
    onlyFirstCompiles<Number>(
        "a number is built from whole numbers",
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>(5))) {},
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>(2.5))) {},
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>(2.5f))) {},
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>(true))) {},
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>('5'))) {},
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>(L'5'))) {},
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>(nullptr))) {});
    refusedAsArgument<Number, int, float, double, long double, bool, char, wchar_t, char16_t, char32_t,
                      std::nullptr_t>("a function that takes a number");

    onlyFirstCompiles<Number>(
        "a number computes with whole numbers", [](auto&& n) -> decltype(void(n + 2)) {},
        [](auto&& n) -> decltype(void(n + 2.5)) {}, [](auto&& n) -> decltype(void(2.5 + n)) {},
        [](auto&& n) -> decltype(void(n * 2.5)) {}, [](auto&& n) -> decltype(void(2.5 * n)) {},
        [](auto&& n) -> decltype(void(n + 'c')) {}, [](auto&& n) -> decltype(void('c' + n)) {},
        [](auto&& n) -> decltype(void(n + true)) {}, [](auto&& n) -> decltype(void(n + nullptr)) {},
        [](auto&& n) -> decltype(void(n + NkDtWmNull)) {});
    refusedBeside<Number, float, double, long double, bool, char, wchar_t, char16_t, char32_t, std::nullptr_t,
                  NkDtWorkingMode>("a number computes with whole numbers", arithmetic);

    onlyFirstCompiles<Number>(
        "a number compares with whole numbers", [](auto&& n) -> decltype(void(n == 0)) {},
        [](auto&& n) -> decltype(void(n == 2.5)) {}, [](auto&& n) -> decltype(void(n < 2.5)) {},
        [](auto&& n) -> decltype(void(2.5 < n)) {}, [](auto&& n) -> decltype(void(n == true)) {},
        [](auto&& n) -> decltype(void(true == n)) {}, [](auto&& n) -> decltype(void(n == 'c')) {},
        [](auto&& n) -> decltype(void('\0' == n)) {}, [](auto&& n) -> decltype(void(n == nullptr)) {},
        [](auto&& n) -> decltype(void(n == NkDtWmNull)) {},
        [](auto&& n) -> decltype(void(NkDtWmNull == n)) {});
    refusedBeside<Number, float, double, long double, bool, char, wchar_t, char16_t, char32_t, std::nullptr_t,
                  NkDtWorkingMode, NkDtString, CString>("a number compares with whole numbers", comparisons);

    onlyFirstCompiles<Number>(
        "a number is no character", [](auto&& n) -> decltype(void(std::declval<NkDtString&>() = n)) {},
        [](auto&& n) -> decltype(void(std::declval<CString&>() = n)) {},
        [](auto&& n) -> decltype(void(std::declval<CString&>() += n)) {},
        [](auto&& n) -> decltype(void(CString(n))) {});
    onlyFirstCompiles<Number>(
        "the two sides of a choice have one type", [](auto&& n) -> decltype(void(true ? n : n)) {},
        [](auto&& n) -> decltype(void(true ? n : 5)) {}, [](auto&& n) -> decltype(void(true ? 5L : n)) {});
}

}  // namespace

void wholeNumbers() {
    besideEveryWholeType<NkDtLong>();
    besideEveryWholeType<NkDtShort>();
    literals<NkDtLong>();
    literals<NkDtShort>();
    conditions<NkDtLong>();
    conditions<NkDtShort>();
    ranges();
    wideComparisons();
    mixes();
    texts<NkDtLong>();
    texts<NkDtShort>();
    containers<NkDtLong>();
    containers<NkDtShort>();
    husks<NkDtLong>();
    husks<NkDtShort>();
    derived();
    refused<NkDtLong>();
    refused<NkDtShort>();
}

}  // namespace expressions
