#pragma once

/// @file
/// The nullable 32-bit whole number, -2147483648 to 2147483647.
///
/// @code
/// NkDtLong nMenge("12");
/// NkDtLong nGesamt = nMenge * 5 + 3;            // 63
/// NkDtString sql = nGesamt.ConvToSQL();         // 63
/// NkDtLong nFehlt(NkDtWmMissing);               // nFehlt.GetValue() raises error 2
/// NkDtLong nNull(NkDtWmNull);                   // nNull * 5 is 5, nNull + 5 is 5
/// @endcode
///
/// Operators, comparisons and conversions: see nkdt::WholeNumber.

#include "nkdt/WholeNumber.h"

class NkDtLong_Imp;

template <>
struct nkdt::ValueTraits<NkDtLong> {
    using Imp = NkDtLong_Imp;
    using Value = LONG;
    using Native = long;
    using Field = long;
};

extern template class NKDT_API nkdt::Record<NkDtLong_Imp>;
extern template class NKDT_API nkdt::StoredValue<NkDtLong>;
extern template class NKDT_API nkdt::WholeNumber<NkDtLong>;

class NKDT_API NkDtLong : public nkdt::WholeNumber<NkDtLong> {
  public:
    /// Undefined with value 0 in that mode (3: the default); defined in mode 2.
    NkDtLong(NkDtWorkingMode eMode = NkDtWmDefault);
    NkDtLong(INT n);
    template <class W, nkdt::IfOtherWhole<W, INT> = 0>
    NkDtLong(W n) : NkDtLong(Operand(n)) {}
    template <class T, nkdt::If<nkdt::isNoWholeOperand<T> && !std::is_same_v<T, NkDtWorkingMode>> = 0>
    NkDtLong(const T&) = delete;
    /// Reads a whole number: blanks, a sign, digits; an empty text is 0. With a "," (else a ".") in the text
    /// only its first 11 bytes count, and what follows the separator is ignored. Error 5 "Ungültiger
    /// Initialwert" for null and for characters left over, error 8 for a number beyond the range.
    NkDtLong(LPCTSTR psz);
    /// The base state of @p r; its value sign-extended, 0 when undefined.
    NkDtLong(const NkDtShort& r);
    /// The base state of @p r; its number without the fraction, 0 when undefined. Error 8 below
    /// -2147483648.0, above 2147483647.0 and for NaN.
    NkDtLong(const NkDtDouble& r);
    /// The same by way of the double nearest to the number.
    NkDtLong(const NkDtDecimal& r);
    /// The base state of @p r; its text read as above, 0 when undefined.
    NkDtLong(const NkDtString& r);
    NkDtLong(const NkDtLong& r);
    NkDtLong(NkDtLong&& r) noexcept = default;
    ~NkDtLong() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    NkDtLong* NewObject() const override;

    using WholeNumber::operator=;
    /// Copies the value (modified if it differs) and the definedness; mode and format stay.
    NkDtLong& operator=(const NkDtLong& r);
    NkDtLong& operator=(NkDtLong&& r) {
        MoveFrom(r);
        return *this;
    }
};
