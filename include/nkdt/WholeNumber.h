#pragma once

/// @file
/// What NkDtLong and NkDtShort do alike: the nullable, checked whole number. Each class adds its
/// constructors.
///
/// Computing never wraps: a result beyond the range raises error 8 "Wert außerhalb des Wertebereichs", a
/// division by zero error 12 "Division durch 0", and the operands stay as they were.
///
/// | operands | `+` `-` | `*` | `/` |
/// |---|---|---|---|
/// | one missing, or both undefined | undefined | undefined | undefined |
/// | left null | the null counts as 0 | the right operand | the null counts as 0 |
/// | right null | the null counts as 0 | the left operand | the left operand |
///
/// An undefined result has the process default mode; so has a computed one, without format and unmodified.
///
/// Other whole types stand beside these numbers as an `int` does: error 8 if the value does not fit, and
/// comparisons look at 64 bits. Fractions, truth values and characters do not compile beside them. With an
/// NkDtDouble or NkDtDecimal the result is one of that class; to store it in a whole number, say so with a
/// constructor, because the fraction is lost. Two things cannot be stopped: `printf("%d", n)` passes an
/// object (write `n.GetValue()`), and `short k = n` narrows silently.

#include <iosfwd>

#include "nkdt/NkDtString.h"
#include "nkdt/Operands.h"
#include "nkdt/StoredValue.h"
#include "nkfw/Export.h"

class CRecordset;

namespace nkdt {

template <class Derived>
class NKDT_API WholeNumber : public StoredValue<Derived> {
    using Traits = ValueTraits<Derived>;

  public:
    using typename StoredValue<Derived>::Value;
    using Native = typename Traits::Native;  ///< what GetValue() and SetFromSQL() take
    using Field = typename Traits::Field;    ///< the field of a recordset

    /// The value. Error 2 "Undefinierter Wert" when missing; a null value gives its stored value.
    Native GetValue() const;
    operator Native() const { return GetValue(); }

    /// Stores the number (the modified flag is set only if it differs) and makes the value defined. Error 8,
    /// nothing changed, when the number does not fit.
    Derived& operator=(INT n);
    template <class W, IfOtherWhole<W, INT> = 0>
    Derived& operator=(W n) {
        return *this = Operand(n);
    }
    template <class T, If<isKindOf<T, NkDtLong, NkDtShort> && !isKindOf<T, Derived>> = 0>
    Derived& operator=(const T& r) {
        return Self() = Derived(r);
    }
    template <class T, If<isNoWholeOperand<T> || isRealValue<T>> = 0>
    Derived& operator=(const T&) = delete;

    /// Adds. A missing operand, or two undefined ones, make the value 0 and undefined; otherwise it becomes
    /// defined, and modified unless 0 is added. Errors 8; the value is unchanged then.
    Derived& operator+=(const Derived& r) { return Accumulate(r, Operation::add); }
    Derived& operator-=(const Derived& r) { return Accumulate(r, Operation::subtract); }
    /// The same with a plain number; a missing value stays as it is.
    Derived& operator+=(INT n) { return Accumulate(n, Operation::add); }
    Derived& operator-=(INT n) { return Accumulate(n, Operation::subtract); }
    template <class W, IfOtherWhole<W, INT> = 0>
    Derived& operator+=(W n) {
        return *this += Operand(n);
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    Derived& operator-=(W n) {
        return *this -= Operand(n);
    }
    template <class T, If<isKindOf<T, NkDtLong, NkDtShort> && !isKindOf<T, Derived>> = 0>
    Derived& operator+=(const T& r) {
        return *this += Derived(r);
    }
    template <class T, If<isKindOf<T, NkDtLong, NkDtShort> && !isKindOf<T, Derived>> = 0>
    Derived& operator-=(const T& r) {
        return *this -= Derived(r);
    }
    template <class T, If<isNoWholeOperand<T> || isRealValue<T>> = 0>
    Derived& operator+=(const T&) = delete;
    template <class T, If<isNoWholeOperand<T> || isRealValue<T>> = 0>
    Derived& operator-=(const T&) = delete;

    /// One more or less; nothing for a missing value. A null value becomes defined. Error 8 at the end of the
    /// range.
    void operator++() { Accumulate(1, Operation::add); }
    void operator++(int) { ++*this; }
    void operator--() { Accumulate(1, Operation::subtract); }
    void operator--(int) { --*this; }

    friend Derived operator+(const Derived& a, const Derived& b) { return Compute(a, b, Operation::add); }
    friend Derived operator-(const Derived& a, const Derived& b) {
        return Compute(a, b, Operation::subtract);
    }
    friend Derived operator*(const Derived& a, const Derived& b) {
        return Compute(a, b, Operation::multiply);
    }
    friend Derived operator/(const Derived& a, const Derived& b) { return Compute(a, b, Operation::divide); }
    friend Derived operator+(const Derived& a, INT b) { return Compute(a, b, Operation::add); }
    friend Derived operator-(const Derived& a, INT b) { return Compute(a, b, Operation::subtract); }
    friend Derived operator*(const Derived& a, INT b) { return Compute(a, b, Operation::multiply); }
    friend Derived operator/(const Derived& a, INT b) { return Compute(a, b, Operation::divide); }
    friend Derived operator+(INT a, const Derived& b) { return Compute(a, b, Operation::add); }
    friend Derived operator-(INT a, const Derived& b) { return Compute(a, b, Operation::subtract); }
    friend Derived operator*(INT a, const Derived& b) { return Compute(a, b, Operation::multiply); }
    friend Derived operator/(INT a, const Derived& b) { return Compute(a, b, Operation::divide); }

    template <class W, IfOtherWhole<W, INT> = 0>
    friend Derived operator+(const Derived& a, W b) {
        return Compute(a, Operand(b), Operation::add);
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend Derived operator-(const Derived& a, W b) {
        return Compute(a, Operand(b), Operation::subtract);
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend Derived operator*(const Derived& a, W b) {
        return Compute(a, Operand(b), Operation::multiply);
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend Derived operator/(const Derived& a, W b) {
        return Compute(a, Operand(b), Operation::divide);
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend Derived operator+(W a, const Derived& b) {
        return Compute(Operand(a), b, Operation::add);
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend Derived operator-(W a, const Derived& b) {
        return Compute(Operand(a), b, Operation::subtract);
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend Derived operator*(W a, const Derived& b) {
        return Compute(Operand(a), b, Operation::multiply);
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend Derived operator/(W a, const Derived& b) {
        return Compute(Operand(a), b, Operation::divide);
    }

    template <class T>
    friend ResultIf<isNoWholeOperand<T>, Derived> operator+(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T>, Derived> operator-(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T>, Derived> operator*(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T>, Derived> operator/(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T>, Derived> operator+(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T>, Derived> operator-(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T>, Derived> operator*(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T>, Derived> operator/(const T&, const Derived&) = delete;

    // Text and number make text.
    friend NkDtString operator+(const NkDtString& a, const Derived& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const Derived& a, const NkDtString& b) { return NkDtString(a) + b; }
    friend NkDtString operator+(LPCTSTR a, const Derived& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const Derived& a, LPCTSTR b) { return NkDtString(a) + b; }
    friend NkDtString operator+(const CString& a, const Derived& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const Derived& a, const CString& b) { return NkDtString(a) + b; }

    // Comparing raises error 2 "Undefinierter Wert" when an operand is missing; a null one compares by its
    // stored value.
    friend BOOL operator==(const Derived& a, const Derived& b) { return Order(a, b, Comparison::equal) == 0; }
    friend BOOL operator!=(const Derived& a, const Derived& b) {
        return Order(a, b, Comparison::unequal) != 0;
    }
    friend BOOL operator<(const Derived& a, const Derived& b) { return Order(a, b, Comparison::less) < 0; }
    friend BOOL operator>(const Derived& a, const Derived& b) { return Order(a, b, Comparison::greater) > 0; }
    friend BOOL operator<=(const Derived& a, const Derived& b) {
        return Order(a, b, Comparison::lessEqual) <= 0;
    }
    friend BOOL operator>=(const Derived& a, const Derived& b) {
        return Order(a, b, Comparison::greaterEqual) >= 0;
    }
    friend BOOL operator==(const Derived& a, INT b) { return Order(a, b, Comparison::equal) == 0; }
    friend BOOL operator!=(const Derived& a, INT b) { return Order(a, b, Comparison::unequal) != 0; }
    friend BOOL operator<(const Derived& a, INT b) { return Order(a, b, Comparison::less) < 0; }
    friend BOOL operator>(const Derived& a, INT b) { return Order(a, b, Comparison::greater) > 0; }
    friend BOOL operator<=(const Derived& a, INT b) { return Order(a, b, Comparison::lessEqual) <= 0; }
    friend BOOL operator>=(const Derived& a, INT b) { return Order(a, b, Comparison::greaterEqual) >= 0; }
    friend BOOL operator==(INT a, const Derived& b) { return b == a; }
    friend BOOL operator!=(INT a, const Derived& b) { return b != a; }
    friend BOOL operator<(INT a, const Derived& b) { return b > a; }
    friend BOOL operator>(INT a, const Derived& b) { return b < a; }
    friend BOOL operator<=(INT a, const Derived& b) { return b >= a; }
    friend BOOL operator>=(INT a, const Derived& b) { return b <= a; }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator==(const Derived& a, W b) {
        return Order(a, to64(b), Comparison::equal) == 0;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator!=(const Derived& a, W b) {
        return Order(a, to64(b), Comparison::unequal) != 0;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator<(const Derived& a, W b) {
        return Order(a, to64(b), Comparison::less) < 0;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator>(const Derived& a, W b) {
        return Order(a, to64(b), Comparison::greater) > 0;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator<=(const Derived& a, W b) {
        return Order(a, to64(b), Comparison::lessEqual) <= 0;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator>=(const Derived& a, W b) {
        return Order(a, to64(b), Comparison::greaterEqual) >= 0;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator==(W a, const Derived& b) {
        return b == a;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator!=(W a, const Derived& b) {
        return b != a;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator<(W a, const Derived& b) {
        return b > a;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator>(W a, const Derived& b) {
        return b < a;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator<=(W a, const Derived& b) {
        return b >= a;
    }
    template <class W, IfOtherWhole<W, INT> = 0>
    friend BOOL operator>=(W a, const Derived& b) {
        return b <= a;
    }

    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator==(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator!=(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator<(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator>(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator<=(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator>=(const Derived&, const T&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator==(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator!=(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator<(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator>(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator<=(const T&, const Derived&) = delete;
    template <class T>
    friend ResultIf<isNoWholeOperand<T> || isText<T>, BOOL> operator>=(const T&, const Derived&) = delete;

    /// Writes the digits; nothing for an undefined value.
    friend std::ostream& operator<<(std::ostream& os, const Derived& n) { return Write(os, n); }

    CString ConvToOFL(const NkFormat* pFormat = nullptr) const override;
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override;
    /// The digits of the stored value, also when the value is undefined.
    NkDtString ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const override;
    /// Reads the text as the construction from text does, up to a separator ("12,9" is 12). Error 1, cause 5
    /// or 8, for a text that is refused.
    void SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) override;

    /// Stores the number, modified if it differs, and makes the value defined. Error 8 when it does not fit.
    virtual void SetFromSQL(Native n);
    /// The digits as an SQL literal; "NULL" for an undefined value.
    virtual NkDtString ConvToSQL() const;
    /// Clears for a field that the recordset reports null; else stores the field, modified if it differs, and
    /// makes the value defined.
    virtual void SetFromRecordSet(CRecordset& rs, const Field& rField);
    /// Writes the value to the field and marks it not null; marks it null, the field unchanged, for an
    /// undefined value.
    virtual void ConvToRecordSet(CRecordset& rs, Field& rField) const;

  protected:
    using typename StoredValue<Derived>::Imp;
    using StoredValue<Derived>::StoredValue;
    using StoredValue<Derived>::Stored;

    /// The number as an `int` operand; error 8 when it does not fit.
    template <class W>
    static INT Operand(W n) {
        if (!fits<INT>(n)) RaiseRange();
        return static_cast<INT>(n);
    }
    [[noreturn]] static void RaiseRange();

  private:
    enum class Operation : unsigned char { add, subtract, multiply, divide };
    enum class Comparison : unsigned char { equal, unequal, less, greater, lessEqual, greaterEqual };

    using StoredValue<Derived>::Self;
    using StoredValue<Derived>::Store;
    static Derived Compute(const Derived& a, const Derived& b, Operation operation);
    static Derived Compute(const Derived& a, INT b, Operation operation);
    static Derived Compute(INT a, const Derived& b, Operation operation);
    static LONGLONG Number(const Derived& operand) { return operand.Stored(); }
    static LONGLONG Number(INT operand) { return operand; }
    template <class A, class B>
    static Derived ComputeAny(const A& a, const B& b, Operation operation);
    /// Adds or subtracts in place.
    Derived& Accumulate(const Derived& r, Operation operation);
    Derived& Accumulate(INT n, Operation operation);
    void AccumulateNumber(INT n, Operation operation);
    static int Order(const Derived& a, const Derived& b, Comparison comparison);
    static int Order(const Derived& a, LONGLONG b, Comparison comparison);
    static std::ostream& Write(std::ostream& os, const Derived& n);
};

}  // namespace nkdt
