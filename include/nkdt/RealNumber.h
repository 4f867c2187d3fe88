#pragma once

/// @file
/// What NkDtDecimal and NkDtDouble do alike: the nullable number with decimal places, computed with its like
/// and with plain numbers in every operand order. Each class adds its constructors and conversions.
///
/// | operands | `+` `-` | `*` | `/` |
/// |---|---|---|---|
/// | one missing, or both undefined | undefined | undefined | undefined |
/// | left null | the null counts as 0 | the right operand | the null counts as 0 |
/// | right null | the null counts as 0 | the left operand | the left operand |
/// | null and a plain number | the null counts as 0 | as 0 | as 0 |
/// | a plain number and null | the null counts as 0 | the plain number | the plain number |
///
/// An undefined result has the process default mode. A missing value beside a plain number makes the result
/// undefined as well.
///
/// Every plain number but truth values and characters can be an operand, and a whole-number value as well,
/// which counts as this class's value made of it. Truth values, characters, modes and the other of these two
/// classes do not compile beside it: say with a constructor which of the two is meant.

#include <cstddef>
#include <iosfwd>
#include <type_traits>

#include "nkdt/NkDtString.h"
#include "nkdt/Operands.h"
#include "nkdt/StoredValue.h"
#include "nkfw/Currency.h"
#include "nkfw/Export.h"

namespace nkdt {

/// A plain number on its way into an operation.
class PlainNumber {
  public:
    enum class Kind : unsigned char { whole, unsignedWhole, floating };

    template <class N, If<isWhole<N>> = 0>
    explicit constexpr PlainNumber(N n) noexcept
        : m_bits(static_cast<ULONGLONG>(n)),
          m_kind(std::is_signed_v<N> ? Kind::whole : Kind::unsignedWhole) {}
    /// A `float` counts as the double of the same value.
    explicit constexpr PlainNumber(double number) noexcept : m_number(number), m_kind(Kind::floating) {}

    constexpr Kind kind() const noexcept { return m_kind; }
    constexpr LONGLONG whole() const noexcept { return static_cast<LONGLONG>(m_bits); }
    constexpr ULONGLONG unsignedWhole() const noexcept { return m_bits; }
    constexpr double floating() const noexcept { return m_number; }
    constexpr bool isZero() const noexcept {
        return m_kind == Kind::floating ? m_number == 0.0 : m_bits == 0;
    }

  private:
    ULONGLONG m_bits = 0;
    double m_number = 0.0;
    Kind m_kind;
};

enum class RealOperation : unsigned char { add, subtract, multiply, divide, remainder };
enum class RealComparison : unsigned char { equal, unequal, less, greater, lessEqual, greaterEqual };

/// The plain numbers that no stated overload takes.
template <class T>
inline constexpr bool isOtherPlainNumber =
    (isWhole<T> && !std::is_same_v<T, INT>) || std::is_same_v<T, float>;

/// The whole-number value classes.
template <class T>
inline constexpr bool isWholeValue = isKindOf<T, NkDtLong, NkDtShort>;

/// What no number with places is built from: truth values, characters, modes, nothing.
template <class T>
inline constexpr bool isNoRealSource =
    std::is_same_v<T, bool> || isCharacter<T> || std::is_enum_v<T> || std::is_same_v<T, long double> ||
    std::is_same_v<T, std::nullptr_t> || isKindOf<T, NkDtBool, NkDtChar> || isTimeValue<T>;

/// What never stands beside a number with places.
template <class T, class Derived>
inline constexpr bool isNoRealOperand = std::is_same_v<T, bool> || isCharacter<T> || std::is_enum_v<T> ||
                                        std::is_same_v<T, long double> || std::is_same_v<T, std::nullptr_t> ||
                                        isKindOf<T, NkDtBool, NkDtChar> || isTimeValue<T> ||
                                        (isKindOf<T, NkDtDecimal, NkDtDouble> && !isKindOf<T, Derived>);

template <class Derived>
class NKDT_API RealNumber : public StoredValue<Derived> {
    using Operation = RealOperation;
    using Comparison = RealComparison;

  public:
    using typename StoredValue<Derived>::Value;

    /// Adds or subtracts, when both operands may be computed with; else nothing happens.
    Derived& operator+=(const Derived& r) { return Accumulate(r, Operation::add); }
    Derived& operator-=(const Derived& r) { return Accumulate(r, Operation::subtract); }
    /// The same with a plain number; a missing value stays as it is.
    Derived& operator+=(INT n) { return Accumulate(PlainNumber(n), Operation::add); }
    Derived& operator-=(INT n) { return Accumulate(PlainNumber(n), Operation::subtract); }
    Derived& operator+=(double d) { return Accumulate(PlainNumber(d), Operation::add); }
    Derived& operator-=(double d) { return Accumulate(PlainNumber(d), Operation::subtract); }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    Derived& operator+=(N n) {
        return Accumulate(PlainNumber(n), Operation::add);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    Derived& operator-=(N n) {
        return Accumulate(PlainNumber(n), Operation::subtract);
    }
    template <class T, If<isWholeValue<T>> = 0>
    Derived& operator+=(const T& r) {
        return *this += FromWhole(r);
    }
    template <class T, If<isWholeValue<T>> = 0>
    Derived& operator-=(const T& r) {
        return *this -= FromWhole(r);
    }
    template <class T, If<isNoRealOperand<T, Derived>> = 0>
    Derived& operator+=(const T&) = delete;
    template <class T, If<isNoRealOperand<T, Derived>> = 0>
    Derived& operator-=(const T&) = delete;

    /// One more or less, modified; nothing for a missing value. A null value becomes defined.
    void operator++() { Step(Operation::add); }
    void operator++(int) { ++*this; }
    void operator--() { Step(Operation::subtract); }
    void operator--(int) { --*this; }

    friend Derived operator+(const Derived& a, const Derived& b) { return Compute(a, b, Operation::add); }
    friend Derived operator-(const Derived& a, const Derived& b) {
        return Compute(a, b, Operation::subtract);
    }
    friend Derived operator*(const Derived& a, const Derived& b) {
        return Compute(a, b, Operation::multiply);
    }
    friend Derived operator/(const Derived& a, const Derived& b) { return Compute(a, b, Operation::divide); }
    friend Derived operator+(const Derived& a, INT b) { return Compute(a, PlainNumber(b), Operation::add); }
    friend Derived operator-(const Derived& a, INT b) {
        return Compute(a, PlainNumber(b), Operation::subtract);
    }
    friend Derived operator*(const Derived& a, INT b) {
        return Compute(a, PlainNumber(b), Operation::multiply);
    }
    friend Derived operator/(const Derived& a, INT b) {
        return Compute(a, PlainNumber(b), Operation::divide);
    }
    friend Derived operator+(INT a, const Derived& b) { return Compute(PlainNumber(a), b, Operation::add); }
    friend Derived operator-(INT a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::subtract);
    }
    friend Derived operator*(INT a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::multiply);
    }
    friend Derived operator/(INT a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::divide);
    }
    friend Derived operator+(const Derived& a, double b) {
        return Compute(a, PlainNumber(b), Operation::add);
    }
    friend Derived operator-(const Derived& a, double b) {
        return Compute(a, PlainNumber(b), Operation::subtract);
    }
    friend Derived operator*(const Derived& a, double b) {
        return Compute(a, PlainNumber(b), Operation::multiply);
    }
    friend Derived operator/(const Derived& a, double b) {
        return Compute(a, PlainNumber(b), Operation::divide);
    }
    friend Derived operator+(double a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::add);
    }
    friend Derived operator-(double a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::subtract);
    }
    friend Derived operator*(double a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::multiply);
    }
    friend Derived operator/(double a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::divide);
    }

    /// The number with its places; undefined for a missing value, 0 for a null one.
    friend Derived operator+(const Derived& a) { return a * INT{1}; }
    friend Derived operator-(const Derived& a) { return a * INT{-1}; }

    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend Derived operator+(const Derived& a, N b) {
        return Compute(a, PlainNumber(b), Operation::add);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend Derived operator+(N a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::add);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend Derived operator-(const Derived& a, N b) {
        return Compute(a, PlainNumber(b), Operation::subtract);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend Derived operator-(N a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::subtract);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend Derived operator*(const Derived& a, N b) {
        return Compute(a, PlainNumber(b), Operation::multiply);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend Derived operator*(N a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::multiply);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend Derived operator/(const Derived& a, N b) {
        return Compute(a, PlainNumber(b), Operation::divide);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend Derived operator/(N a, const Derived& b) {
        return Compute(PlainNumber(a), b, Operation::divide);
    }

    template <class T, If<isWholeValue<T>> = 0>
    friend Derived operator+(const Derived& a, const T& b) {
        return a + FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend Derived operator+(const T& a, const Derived& b) {
        return FromWhole(a) + b;
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend Derived operator-(const Derived& a, const T& b) {
        return a - FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend Derived operator-(const T& a, const Derived& b) {
        return FromWhole(a) - b;
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend Derived operator*(const Derived& a, const T& b) {
        return a * FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend Derived operator*(const T& a, const Derived& b) {
        return FromWhole(a) * b;
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend Derived operator/(const Derived& a, const T& b) {
        return a / FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend Derived operator/(const T& a, const Derived& b) {
        return FromWhole(a) / b;
    }

    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived>, Derived> operator+(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived>, Derived> operator+(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived>, Derived> operator-(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived>, Derived> operator-(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived>, Derived> operator*(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived>, Derived> operator*(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived>, Derived> operator/(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived>, Derived> operator/(const T&, const Derived&) = delete;

    // Text and number make text.
    friend NkDtString operator+(const NkDtString& a, const Derived& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const Derived& a, const NkDtString& b) { return NkDtString(a) + b; }
    friend NkDtString operator+(LPCTSTR a, const Derived& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const Derived& a, LPCTSTR b) { return NkDtString(a) + b; }
    friend NkDtString operator+(const CString& a, const Derived& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const Derived& a, const CString& b) { return NkDtString(a) + b; }

    // Comparing is exact and raises error 2 "Undefinierter Wert" when an operand is missing; a null one
    // compares by its stored value.
    friend BOOL operator==(const Derived& a, const Derived& b) { return Related(a, b, Comparison::equal); }
    friend BOOL operator!=(const Derived& a, const Derived& b) { return Related(a, b, Comparison::unequal); }
    friend BOOL operator<(const Derived& a, const Derived& b) { return Related(a, b, Comparison::less); }
    friend BOOL operator>(const Derived& a, const Derived& b) { return Related(a, b, Comparison::greater); }
    friend BOOL operator<=(const Derived& a, const Derived& b) {
        return Related(a, b, Comparison::lessEqual);
    }
    friend BOOL operator>=(const Derived& a, const Derived& b) {
        return Related(a, b, Comparison::greaterEqual);
    }
    friend BOOL operator==(const Derived& a, INT b) { return Related(a, PlainNumber(b), Comparison::equal); }
    friend BOOL operator!=(const Derived& a, INT b) {
        return Related(a, PlainNumber(b), Comparison::unequal);
    }
    friend BOOL operator<(const Derived& a, INT b) { return Related(a, PlainNumber(b), Comparison::less); }
    friend BOOL operator>(const Derived& a, INT b) { return Related(a, PlainNumber(b), Comparison::greater); }
    friend BOOL operator<=(const Derived& a, INT b) {
        return Related(a, PlainNumber(b), Comparison::lessEqual);
    }
    friend BOOL operator>=(const Derived& a, INT b) {
        return Related(a, PlainNumber(b), Comparison::greaterEqual);
    }
    friend BOOL operator==(INT a, const Derived& b) { return b == a; }
    friend BOOL operator!=(INT a, const Derived& b) { return b != a; }
    friend BOOL operator<(INT a, const Derived& b) { return b > a; }
    friend BOOL operator>(INT a, const Derived& b) { return b < a; }
    friend BOOL operator<=(INT a, const Derived& b) { return b >= a; }
    friend BOOL operator>=(INT a, const Derived& b) { return b <= a; }
    friend BOOL operator==(const Derived& a, double b) {
        return Related(a, PlainNumber(b), Comparison::equal);
    }
    friend BOOL operator!=(const Derived& a, double b) {
        return Related(a, PlainNumber(b), Comparison::unequal);
    }
    friend BOOL operator<(const Derived& a, double b) { return Related(a, PlainNumber(b), Comparison::less); }
    friend BOOL operator>(const Derived& a, double b) {
        return Related(a, PlainNumber(b), Comparison::greater);
    }
    friend BOOL operator<=(const Derived& a, double b) {
        return Related(a, PlainNumber(b), Comparison::lessEqual);
    }
    friend BOOL operator>=(const Derived& a, double b) {
        return Related(a, PlainNumber(b), Comparison::greaterEqual);
    }
    friend BOOL operator==(double a, const Derived& b) { return b == a; }
    friend BOOL operator!=(double a, const Derived& b) { return b != a; }
    friend BOOL operator<(double a, const Derived& b) { return b > a; }
    friend BOOL operator>(double a, const Derived& b) { return b < a; }
    friend BOOL operator<=(double a, const Derived& b) { return b >= a; }
    friend BOOL operator>=(double a, const Derived& b) { return b <= a; }

    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator==(const Derived& a, N b) {
        return Related(a, PlainNumber(b), Comparison::equal);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator==(N a, const Derived& b) {
        return b == a;
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator!=(const Derived& a, N b) {
        return Related(a, PlainNumber(b), Comparison::unequal);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator!=(N a, const Derived& b) {
        return b != a;
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator<(const Derived& a, N b) {
        return Related(a, PlainNumber(b), Comparison::less);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator<(N a, const Derived& b) {
        return b > a;
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator>(const Derived& a, N b) {
        return Related(a, PlainNumber(b), Comparison::greater);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator>(N a, const Derived& b) {
        return b < a;
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator<=(const Derived& a, N b) {
        return Related(a, PlainNumber(b), Comparison::lessEqual);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator<=(N a, const Derived& b) {
        return b >= a;
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator>=(const Derived& a, N b) {
        return Related(a, PlainNumber(b), Comparison::greaterEqual);
    }
    template <class N, If<isOtherPlainNumber<N>> = 0>
    friend BOOL operator>=(N a, const Derived& b) {
        return b <= a;
    }

    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator==(const Derived& a, const T& b) {
        return a == FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator==(const T& a, const Derived& b) {
        return FromWhole(a) == b;
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator!=(const Derived& a, const T& b) {
        return a != FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator!=(const T& a, const Derived& b) {
        return FromWhole(a) != b;
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator<(const Derived& a, const T& b) {
        return a < FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator<(const T& a, const Derived& b) {
        return FromWhole(a) < b;
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator>(const Derived& a, const T& b) {
        return a > FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator>(const T& a, const Derived& b) {
        return FromWhole(a) > b;
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator<=(const Derived& a, const T& b) {
        return a <= FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator<=(const T& a, const Derived& b) {
        return FromWhole(a) <= b;
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator>=(const Derived& a, const T& b) {
        return a >= FromWhole(b);
    }
    template <class T, If<isWholeValue<T>> = 0>
    friend BOOL operator>=(const T& a, const Derived& b) {
        return FromWhole(a) >= b;
    }

    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator==(const Derived&,
                                                                               const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator==(const T&,
                                                                               const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator!=(const Derived&,
                                                                               const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator!=(const T&,
                                                                               const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator<(const Derived&,
                                                                              const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator<(const T&,
                                                                              const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator>(const Derived&,
                                                                              const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator>(const T&,
                                                                              const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator<=(const Derived&,
                                                                               const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator<=(const T&,
                                                                               const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator>=(const Derived&,
                                                                               const T&) = delete;
    template <class T>
    friend ResultIf<isNoRealOperand<T, Derived> || isText<T>, BOOL> operator>=(const T&,
                                                                               const Derived&) = delete;

    /// Writes the number's text; nothing for an undefined value.
    friend std::ostream& operator<<(std::ostream& os, const Derived& number) { return Write(os, number); }

  protected:
    using typename StoredValue<Derived>::Imp;
    using StoredValue<Derived>::StoredValue;
    using StoredValue<Derived>::Self;
    using StoredValue<Derived>::Store;
    using StoredValue<Derived>::Stored;

    static Derived Compute(const Derived& a, const Derived& b, Operation operation);
    static Derived Compute(const Derived& a, const PlainNumber& b, Operation operation);
    static Derived Compute(const PlainNumber& a, const Derived& b, Operation operation);
    /// A whole-number value as one of this class.
    template <class T>
    static Derived FromWhole(const T& r) {
        if constexpr (std::is_constructible_v<Derived, const T&>) {
            return Derived(r);
        } else {
            return Derived(NkDtLong(r));
        }
    }

  private:
    /// The operation on operands of which one at least is undefined.
    static Derived ComputeUndefined(const Derived& a, const Derived& b, Operation operation);
    Derived& Accumulate(const Derived& r, Operation operation);
    Derived& AccumulateAndNote(const Derived& r, Operation operation);
    Derived& Accumulate(const PlainNumber& n, Operation operation);
    void Step(Operation operation);
    static bool Related(const Derived& a, const Derived& b, Comparison comparison);
    static bool Related(const Derived& a, const PlainNumber& b, Comparison comparison);
    static std::ostream& Write(std::ostream& os, const Derived& number);
};

}  // namespace nkdt
