#pragma once

/// @file
/// The nullable decimal number for money and other exact quantities: up to 28 digits, 0 to 28 decimal places.
///
/// @code
/// NkDtDecimal dPreis("1,234.50");
/// NkDtDecimal dBrutto = dPreis * NkDtDecimal("1.19");              // 1469.055, exactly
/// dBrutto.Round(-2, NkDtDecimal::RundenKaufmaennisch);             // 1469.06
/// NkDtString strSql = dBrutto.ConvToSQL();                         // 1469.06
/// NkDtDecimal dNull(NkDtWmNull);                                   // dNull * dPreis is dPreis
/// @endcode
///
/// The number is a Decimal96 (see nkdec/Decimal96.h): sums, differences and products are exact where they
/// fit, and rounded half away from zero, once, where they do not. What fits at no scale raises error 24
/// "Fehler bei Berechung mit Dezimalwerten" and leaves the operands as they were. A plain `double` counts as
/// the decimal with the fewest places that reads back as it: 0.1 is 0.1.
///
/// Text that is read has "." as the decimal point; "," and blanks between digits group and are dropped. It
/// may be 38 characters long and have 28 digits, more only behind a leading "0".
///
/// Operators and comparisons: see nkdt::RealNumber.

#include "nkdt/DecRecord.h"
#include "nkdt/RealNumber.h"

class CRecordset;
class Decimal96;
class NkDtDecimal_Imp;

template <>
struct nkdt::ValueTraits<NkDtDecimal> {
    using Imp = NkDtDecimal_Imp;
    using Value = Decimal96;
};

extern template class NKDT_API nkdt::Record<NkDtDecimal_Imp>;
extern template class NKDT_API nkdt::StoredValue<NkDtDecimal>;
extern template class NKDT_API nkdt::RealNumber<NkDtDecimal>;

class NKDT_API NkDtDecimal : public nkdt::RealNumber<NkDtDecimal> {
  public:
    /// Where Round() moves a number; any other value rounds as RundenKaufmaennisch.
    enum Rundungsart : int {
        RundenKaufmaennisch = 0,  ///< half away from zero
        RundenAufwaerts = 1,      ///< toward plus infinity
        RundenAbwaerts = 2,       ///< toward minus infinity
        RundenVonNull = 3,        ///< away from zero
        RundenZurNull = 4,        ///< toward zero
        RundenAuf005 = 5,         ///< to steps of 0.05, see Round()
    };

    /// Undefined with value 0 in that mode (3: the default); defined in mode 2.
    NkDtDecimal(NkDtWorkingMode eMode = NkDtWmDefault);
    /// The number without places; 64-bit numbers exactly.
    NkDtDecimal(INT n);
    template <class W, nkdt::IfOtherWhole<W, INT> = 0>
    NkDtDecimal(W n) : NkDtDecimal(nkdt::PlainNumber(n)) {}
    /// The decimal with the fewest places that reads back as the double. Error 24 from 2^95 on and for what
    /// is not finite.
    NkDtDecimal(double dValue);
    NkDtDecimal(float dValue) : NkDtDecimal(double{dValue}) {}
    template <class T, nkdt::If<nkdt::isNoRealSource<T> && !std::is_same_v<T, NkDtWorkingMode>> = 0>
    NkDtDecimal(const T&) = delete;
    /// Reads a text as told at the head of this file; an empty one is 0. Error 5 "Ungültiger Initialwert" for
    /// null; error 11 "Der Eingabetext ist zu lang"; error 20 "Format nicht zugelassen" for a second point, a
    /// foreign character, a text without a digit and a sign elsewhere than in front.
    NkDtDecimal(LPCTSTR psz);
    /// The base state of @p r; its text read as above, 0 when undefined.
    NkDtDecimal(const NkDtString& r);
    /// The base state of @p r; its number, 0 when undefined.
    NkDtDecimal(const NkDtLong& r);
    NkDtDecimal(const NkDtShort& r);
    NkDtDecimal(const NkDtDouble& r);
    /// Four places; undefined with 0 for a currency whose status is not valid.
    NkDtDecimal(const COleCurrency& r);
    /// The number itself, defined.
    explicit NkDtDecimal(Decimal96 number);
    NkDtDecimal(const NkDtDecimal& r);
    NkDtDecimal(NkDtDecimal&& r) noexcept = default;
    ~NkDtDecimal() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    NkDtDecimal* NewObject() const override;

    /// Copies number (modified if it differs; an equal one keeps its places) and definedness; mode and format
    /// stay.
    NkDtDecimal& operator=(const NkDtDecimal& r);
    NkDtDecimal& operator=(NkDtDecimal&& r) {
        MoveFrom(r);
        return *this;
    }
    /// Becomes defined. Modified if the whole number differs from the integer part of the old one: 5 assigned
    /// to 5.7 does not raise the flag.
    NkDtDecimal& operator=(INT n) { return AssignWhole(nkdt::PlainNumber(n)); }
    template <class W, nkdt::IfOtherWhole<W, INT> = 0>
    NkDtDecimal& operator=(W n) {
        return AssignWhole(nkdt::PlainNumber(n));
    }
    /// Becomes defined; modified if the number differs. Error 24, nothing changed, as in the construction.
    NkDtDecimal& operator=(double d);
    NkDtDecimal& operator=(float d) { return *this = double{d}; }
    /// As a number with four places; clears for a currency whose status is not valid.
    NkDtDecimal& operator=(const COleCurrency& r);
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong, NkDtShort, NkDtDouble>> = 0>
    NkDtDecimal& operator=(const T& r) {
        return *this = NkDtDecimal(r);
    }
    template <class T, nkdt::If<nkdt::isNoRealSource<T>> = 0>
    NkDtDecimal& operator=(const T&) = delete;

    /// The nearest double. Error 2 "Undefinierter Wert" when missing; error 1 when the number is none.
    double GetValue() const;
    /// The nearest double to the stored number.
    operator double() const;
    /// The number as a currency, rounded half away from zero to four places. Error 8 "Wert außerhalb des
    /// Wertebereichs" beyond ±922337203685477.5807 (negative numbers: .5808).
    operator COleCurrency() const;
    /// The count of decimal places. Error 2 when missing.
    INT GetPrecision() const;
    /// TRUE for 0, whether the value is defined or not.
    BOOL IsDecimal0() const;
    /// Writes the plain text without superfluous places: "12.5", "3".
    /// @param pszBuffer of the caller, at least 33 characters; error 5 for null
    /// @return @p pszBuffer
    LPTSTR DecimalToAscii(LPTSTR pszBuffer) const;

    /// Rounds to the unit 10^@p sPower (-2: hundredths, 0: whole numbers, 1: tens); modified, even if the
    /// number is the same. Nothing happens for an undefined value and where no more places are held.
    /// RundenAuf005 cuts toward zero to a multiple of 0.1 whatever the power, goes down another 0.1 when that
    /// is below 0, then adds 0.05 if more than 0.05 is left over, or subtracts it: 1.27 gives 1.25, 1.25
    /// gives 1.2, -1.2 gives -1.25.
    NkDtDecimal& Round(SHORT sPower, Rundungsart eArt);
    /// Cuts to @p usPlaces places, toward zero; modified unless that is the count of places. Undefined values
    /// too.
    NkDtDecimal& Truncate(USHORT usPlaces);

    /// Takes the number of a record; modified if it differs. Clears when @p fDefiniert is FALSE.
    void SetFromBTR(const DEC& rDec, BOOL fDefiniert);
    /// The number as a record, also when the value is undefined. Places that do not fit 64 bits are cut;
    /// error 8 for a positive number that does not fit without places; a negative one wraps.
    DEC ConvToBTR(BOOL& rfDefiniert) const;
    /// TRUE when the record's number equals the stored one.
    BOOL CompareDec(const DEC& rDec) const;

    /// Without a format the plain text with all held places; there is no default format.
    CString ConvToOFL(const NkFormat* pFormat = nullptr) const override;
    /// Without a format a plain text: digits, ".", a sign in front. Of a plain text, be it given or what the
    /// format made, the first 38 characters are used: a number behind more zeros than that is read as 0.
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override;
    /// The number with one digit in front of the point and a power of ten, "1.2345E+002"; an undefined text
    /// for an undefined value.
    NkDtString ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const override;
    void SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) override;
    /// The base state, then the external text.
    void Serialize(CArchive& ar) override;
    void Clear() override;

    /// Reads a database's text, modified if the number differs, and becomes defined. Errors as in the
    /// construction from text; the value is unchanged then.
    virtual void SetFromSQL(LPCTSTR psz);
    /// The number with all held places; "NULL" for an undefined value.
    virtual NkDtString ConvToSQL() const;
    /// Clears for a field that the recordset reports null; else reads its text, modified if the number
    /// differs, and becomes defined.
    virtual void SetFromRecordSet(CRecordset& rs, const CString& rField);
    /// Writes the number into the field, with one decimal place at least ("0.00" for 0) and cut to the room
    /// that the field has, and marks it not null; marks it null, the field unchanged, for an undefined value.
    virtual void ConvToRecordSet(CRecordset& rs, CString& rField) const;

    /// The rest of the division toward zero: the sign of @p a, smaller than @p b. A null @p b gives the
    /// fraction of @p a. Error 24 for a divisor of 0.
    friend NkDtDecimal operator%(const NkDtDecimal& a, const NkDtDecimal& b) {
        return Compute(a, b, nkdt::RealOperation::remainder);
    }
    friend NkDtDecimal operator%(const NkDtDecimal& a, INT b) {
        return Compute(a, nkdt::PlainNumber(b), nkdt::RealOperation::remainder);
    }
    friend NkDtDecimal operator%(const NkDtDecimal& a, double b) {
        return Compute(a, nkdt::PlainNumber(b), nkdt::RealOperation::remainder);
    }
    friend NkDtDecimal operator%(INT a, const NkDtDecimal& b) { return NkDtDecimal(a) % b; }
    friend NkDtDecimal operator%(double a, const NkDtDecimal& b) { return NkDtDecimal(a) % b; }
    template <class N, nkdt::If<nkdt::isOtherPlainNumber<N>> = 0>
    friend NkDtDecimal operator%(const NkDtDecimal& a, N b) {
        return Compute(a, nkdt::PlainNumber(b), nkdt::RealOperation::remainder);
    }
    template <class N, nkdt::If<nkdt::isOtherPlainNumber<N>> = 0>
    friend NkDtDecimal operator%(N a, const NkDtDecimal& b) {
        return NkDtDecimal(a) % b;
    }
    template <class T, nkdt::If<nkdt::isWholeValue<T>> = 0>
    friend NkDtDecimal operator%(const NkDtDecimal& a, const T& b) {
        return a % FromWhole(b);
    }
    template <class T, nkdt::If<nkdt::isWholeValue<T>> = 0>
    friend NkDtDecimal operator%(const T& a, const NkDtDecimal& b) {
        return FromWhole(a) % b;
    }
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoRealOperand<T, NkDtDecimal>, NkDtDecimal> operator%(const NkDtDecimal&,
                                                                                        const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoRealOperand<T, NkDtDecimal>, NkDtDecimal> operator%(
        const T&, const NkDtDecimal&) = delete;

  private:
    friend struct nkdt::ValuePart<NkDtDecimal>;
    friend class nkdt::RealNumber<NkDtDecimal>;

    explicit NkDtDecimal(const nkdt::PlainNumber& number);
    NkDtDecimal& AssignWhole(const nkdt::PlainNumber& number);
    void ReplaceRounded(const Decimal96& number);
    /// Stores the number with its places, modified if it differs.
    void Take(const Decimal96& number);
};
