#pragma once

/// @file
/// The nullable floating-point number: one `double`.
///
/// @code
/// NkDtDouble dGewicht("12.5");
/// NkDtDouble dGesamt = dGewicht * 4 + 0.25;          // 50.25
/// CString strText = dGesamt.ConvToOFL();             // "50,25"
/// NkDtDouble dNull(NkDtWmNull);                      // dNull * dGewicht is dGewicht
/// @endcode
///
/// It computes as a `double` does, without a check of the result: what is too large is infinite, and rounding
/// errors stay. Comparing knows no tolerance: 0.1 + 0.2 differs from 0.3, and NaN from everything. A whole
/// number counts as the double nearest to it. Only a division by 0 is refused, with error 12 "Division durch
/// 0".
///
/// Not every double survives its texts: the external text has 16 significant digits, SQL and text values 15,
/// and the default format shows two decimal places.
///
/// Operators and comparisons: see nkdt::RealNumber. `operator double()` asks for nothing, so a missing value
/// that is used as a `double` is 0.0; `GetValue()` refuses it.

#include "nkdt/RealNumber.h"

class CRecordset;
class NkDtDouble_Imp;

template <>
struct nkdt::ValueTraits<NkDtDouble> {
    using Imp = NkDtDouble_Imp;
    using Value = double;
};

extern template class NKDT_API nkdt::Record<NkDtDouble_Imp>;
extern template class NKDT_API nkdt::StoredValue<NkDtDouble>;
extern template class NKDT_API nkdt::RealNumber<NkDtDouble>;

class NKDT_API NkDtDouble : public nkdt::RealNumber<NkDtDouble> {
  public:
    /// Undefined with value 0.0 in that mode (3: the default); defined in mode 2.
    NkDtDouble(NkDtWorkingMode eMode = NkDtWmDefault);
    NkDtDouble(double d);
    NkDtDouble(INT n);
    template <class N, nkdt::If<nkdt::isOtherPlainNumber<N>> = 0>
    NkDtDouble(N n) : NkDtDouble(static_cast<double>(n)) {}
    template <class T, nkdt::If<nkdt::isNoRealSource<T> && !std::is_same_v<T, NkDtWorkingMode>> = 0>
    NkDtDouble(const T&) = delete;
    /// Reads a number as `strtod` does in the C locale, decimal forms only: white space, a sign, digits with
    /// a ".", an exponent. What follows is ignored ("1,5" is 1), a text without a number is 0. Error 5
    /// "Ungültiger Initialwert" for null. Error 8 "Wert außerhalb des Wertebereichs" for a number beyond the
    /// range, and for a text that is not a number alone while `errno` is ERANGE; `errno` is not cleared
    /// before.
    NkDtDouble(LPCTSTR psz);
    /// The base state of @p r; its text read as above, 0.0 when undefined.
    NkDtDouble(const NkDtString& r);
    /// The base state of @p r; its number, 0.0 when undefined.
    NkDtDouble(const NkDtLong& r);
    NkDtDouble(const NkDtShort& r);
    /// The same; the double nearest to the decimal.
    NkDtDouble(const NkDtDecimal& r);
    /// The currency's amount; undefined with 0.0 when its status is not valid.
    NkDtDouble(const COleCurrency& r);
    NkDtDouble(const NkDtDouble& r);
    NkDtDouble(NkDtDouble&& r) noexcept = default;
    ~NkDtDouble() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    NkDtDouble* NewObject() const override;

    /// Copies the number (modified if it differs) and the definedness; mode and format stay. Nothing happens
    /// to a value that is assigned to itself.
    NkDtDouble& operator=(const NkDtDouble& r);
    NkDtDouble& operator=(NkDtDouble&& r) {
        MoveFrom(r);
        return *this;
    }
    /// Stores the number, modified if it differs, and becomes defined. NaN differs from itself.
    NkDtDouble& operator=(double d);
    NkDtDouble& operator=(INT n) { return *this = static_cast<double>(n); }
    template <class N, nkdt::If<nkdt::isOtherPlainNumber<N>> = 0>
    NkDtDouble& operator=(N n) {
        return *this = static_cast<double>(n);
    }
    /// Stores the amount; clears for a currency whose status is not valid.
    NkDtDouble& operator=(const COleCurrency& r);
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong, NkDtShort, NkDtDecimal>> = 0>
    NkDtDouble& operator=(const T& r) {
        return *this = NkDtDouble(r);
    }
    template <class T, nkdt::If<nkdt::isNoRealSource<T>> = 0>
    NkDtDouble& operator=(const T&) = delete;

    /// The number. Error 2 "Undefinierter Wert" when missing; a null value gives its stored number.
    double GetValue() const;
    /// The stored number, whether the value is defined or not.
    operator double() const;
    /// The stored number as a currency, see COleCurrency::FromDouble(); one beyond its range is invalid.
    operator COleCurrency() const;

    /// By the default format with two decimal places, "," and "." between thousands: 1234.5 is "1.234,5".
    CString ConvToOFL(const NkFormat* pFormat = nullptr) const override;
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override;
    /// As `%.16G` prints it in the C locale; an undefined text for an undefined value.
    NkDtString ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const override;
    /// Reads the text as the construction from text does, so that a text without a number is 0. Error 1,
    /// cause 8, for a number beyond the range.
    void SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) override;

    /// Stores the number, modified if it differs, and becomes defined.
    virtual void SetFromSQL(double d);
    /// As `%.15g` prints it in the C locale; "NULL" for an undefined value.
    virtual NkDtString ConvToSQL() const;
    /// Clears for a field that the recordset reports null; else stores the field, modified if it differs, and
    /// becomes defined.
    virtual void SetFromRecordSet(CRecordset& rs, const double& rField);
    /// Writes the number to the field and marks it not null; marks it null, the field unchanged, for an
    /// undefined value.
    virtual void ConvToRecordSet(CRecordset& rs, double& rField) const;
};
