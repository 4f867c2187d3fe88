#pragma once

/// @file
/// The nullable 16-bit whole number, -32768 to 32767.
///
/// @code
/// NkDtShort nStueck(200);
/// nStueck += 50;                   // 250
/// nStueck = nStueck * nStueck;     // raises error 8, nStueck stays 250
/// NkDtLong nFlaeche = NkDtLong(nStueck) * nStueck;   // 62500
/// @endcode
///
/// Operators, comparisons and conversions: see nkdt::WholeNumber. An `int` operand takes part with all its 32
/// bits, only the result is checked. Beside an NkDtLong, a short is a long.

#include "nkdt/NkDtLong.h"
#include "nkdt/WholeNumber.h"

class NkDtShort_Imp;

template <>
struct nkdt::ValueTraits<NkDtShort> {
    using Imp = NkDtShort_Imp;
    using Value = SHORT;
    using Native = short;
    using Field = int;
};

extern template class NKDT_API nkdt::Record<NkDtShort_Imp>;
extern template class NKDT_API nkdt::StoredValue<NkDtShort>;
extern template class NKDT_API nkdt::WholeNumber<NkDtShort>;

class NKDT_API NkDtShort : public nkdt::WholeNumber<NkDtShort> {
  public:
    /// Undefined with value 0 in that mode (3: the default); defined in mode 2.
    NkDtShort(NkDtWorkingMode eMode = NkDtWmDefault);
    NkDtShort(short n);
    /// Error 8 "Wert außerhalb des Wertebereichs" when the number does not fit.
    NkDtShort(INT n);
    template <class W, nkdt::IfOtherWhole<W, short, INT> = 0>
    NkDtShort(W n) : NkDtShort(Operand(n)) {}
    template <class T, nkdt::If<nkdt::isNoWholeOperand<T> && !std::is_same_v<T, NkDtWorkingMode>> = 0>
    NkDtShort(const T&) = delete;
    /// Reads a whole number as NkDtLong does, but with a separator only the first 6 bytes count. Errors 5
    /// and 8.
    NkDtShort(LPCTSTR psz);
    /// The base state of @p r; its value, 0 when undefined. Error 8 when it does not fit.
    NkDtShort(const NkDtLong& r);
    /// The base state of @p r; its text read as above, 0 when undefined.
    NkDtShort(const NkDtString& r);
    /// The base state of @p r; the double nearest to its number without the fraction, 0 when undefined. Error
    /// 8 below -32768.0 and above 32767.0.
    NkDtShort(const NkDtDecimal& r);
    NkDtShort(const NkDtShort& r);
    NkDtShort(NkDtShort&& r) noexcept = default;
    ~NkDtShort() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    NkDtShort* NewObject() const override;

    using WholeNumber::operator=;
    /// Copies the value (modified if it differs) and the definedness; mode and format stay.
    NkDtShort& operator=(const NkDtShort& r);
    NkDtShort& operator=(NkDtShort&& r) {
        MoveFrom(r);
        return *this;
    }

    // Templates, so that beside a third type, a text say, a short is a short.
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend NkDtLong operator+(const T& a, const NkDtShort& b) {
        return a + NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend NkDtLong operator-(const T& a, const NkDtShort& b) {
        return a - NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend NkDtLong operator*(const T& a, const NkDtShort& b) {
        return a * NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend NkDtLong operator/(const T& a, const NkDtShort& b) {
        return a / NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend NkDtLong operator+(const NkDtShort& a, const T& b) {
        return NkDtLong(a) + b;
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend NkDtLong operator-(const NkDtShort& a, const T& b) {
        return NkDtLong(a) - b;
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend NkDtLong operator*(const NkDtShort& a, const T& b) {
        return NkDtLong(a) * b;
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend NkDtLong operator/(const NkDtShort& a, const T& b) {
        return NkDtLong(a) / b;
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator==(const T& a, const NkDtShort& b) {
        return a == NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator!=(const T& a, const NkDtShort& b) {
        return a != NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator<(const T& a, const NkDtShort& b) {
        return a < NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator>(const T& a, const NkDtShort& b) {
        return a > NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator<=(const T& a, const NkDtShort& b) {
        return a <= NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator>=(const T& a, const NkDtShort& b) {
        return a >= NkDtLong(b);
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator==(const NkDtShort& a, const T& b) {
        return NkDtLong(a) == b;
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator!=(const NkDtShort& a, const T& b) {
        return NkDtLong(a) != b;
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator<(const NkDtShort& a, const T& b) {
        return NkDtLong(a) < b;
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator>(const NkDtShort& a, const T& b) {
        return NkDtLong(a) > b;
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator<=(const NkDtShort& a, const T& b) {
        return NkDtLong(a) <= b;
    }
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong>> = 0>
    friend BOOL operator>=(const NkDtShort& a, const T& b) {
        return NkDtLong(a) >= b;
    }
};
