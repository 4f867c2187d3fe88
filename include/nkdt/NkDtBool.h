#pragma once

/// @file
/// The nullable truth value.
///
/// @code
/// NkDtBool fLieferbar("Ja");
/// if (fLieferbar.IsTrue()) fLieferbar = FALSE;
/// NkDtString strSql = fLieferbar.ConvToSQL();       // '0'
/// NkDtString strText = "Lieferbar: " + fLieferbar;  // "Lieferbar: Nein"
/// NkDtBool fNull(NkDtWmNull);                       // neither IsTrue() nor IsFalse()
/// @endcode
///
/// Every number but 0 is true, and is kept as it is given: a 5 stays a 5, and is not equal to TRUE. As text a
/// truth value is the word of the program's language (see NkLanguagePublisher): "Ja" and "Nein" in German,
/// also when the program has no language module.
///
/// Truth values have no order and are not computed with. One thing cannot be stopped: `printf("%d", f)`
/// passes an object; write `f.GetValue()`.

#include "nkdt/NkDtBasis.h"
#include "nkdt/NkDtString.h"
#include "nkdt/PlainValue.h"

class CRecordset;
class NkDtBool_Imp;

template <>
struct nkdt::ValueTraits<NkDtBool> {
    using Imp = NkDtBool_Imp;
    using Value = BOOL;
    template <class T>
    static constexpr bool isNoComparand = isNoTruthComparand<T>;
    template <class T>
    static constexpr bool isNoOrdered = isNoComparand<T> || isTruthOperand<T> || isKindOf<T, NkDtBool>;
};

extern template class NKDT_API nkdt::Record<NkDtBool_Imp>;
extern template class NKDT_API nkdt::StoredValue<NkDtBool>;
extern template class NKDT_API nkdt::PlainValue<NkDtBool>;

class NKDT_API NkDtBool : public nkdt::PlainValue<NkDtBool> {
  public:
    /// Undefined with value 0 in that mode (3: the default); defined in mode 2.
    NkDtBool(NkDtWorkingMode eMode = NkDtWmDefault);
    /// Any number; every one but 0 is true.
    NkDtBool(BOOL fInit);
    template <class T, nkdt::If<nkdt::isNoTruthSource<T> && !std::is_same_v<T, NkDtWorkingMode>> = 0>
    NkDtBool(const T&) = delete;
    /// Reads the language's word for true or false in any letter case, or "1" or "0". Error 5 "Ungültiger
    /// Initialwert" for any other text and for null.
    NkDtBool(LPCTSTR pszInit);
    /// The base state of @p krStrInit; its text read as above, 0 when undefined.
    NkDtBool(const NkDtString& krStrInit);
    NkDtBool(const NkDtBool& r);
    NkDtBool(NkDtBool&& r) noexcept = default;
    ~NkDtBool() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    NkDtBool* NewObject() const override;

    /// Copies the value (modified if it differs) and the definedness; mode and format stay.
    NkDtBool& operator=(const NkDtBool& r);
    NkDtBool& operator=(NkDtBool&& r) {
        MoveFrom(r);
        return *this;
    }
    /// Stores the number, modified if it differs, and becomes defined.
    NkDtBool& operator=(BOOL f);
    template <class T, nkdt::If<nkdt::isNoTruthSource<T>> = 0>
    NkDtBool& operator=(const T&) = delete;
    /// As the assignment.
    void Set(BOOL f);
    template <class T, nkdt::If<nkdt::isNoTruthSource<T>> = 0>
    void Set(const T&) = delete;

    /// The stored number: TRUE or any other for true, 0 for false and for a null value. Error 2
    /// "Undefinierter Wert" when missing.
    BOOL IsTrue() const;
    /// TRUE for a stored 0; FALSE for a null value. Error 2 when missing.
    BOOL IsFalse() const;
    /// The stored number, as IsTrue().
    BOOL GetValue() const;
    /// The same, so that a truth value stands in a condition.
    operator BOOL() const { return GetValue(); }

    /// Without any format the German words are shown and read, whatever the language of the program.
    CString ConvToOFL(const NkFormat* pFormat = nullptr) const override;
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override;
    /// "J" or "N"; an undefined text with the base state of this value for an undefined one.
    NkDtString ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const override;
    /// Takes "J" or "N" and becomes defined; any other text only makes the value defined. Clears for a flag
    /// other than TRUE and for a null text. Error 14 "Falsche Versionsnummer"; error 13 "Inkonsistente
    /// Definiertheit", nothing changed, for an undefined text.
    void SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) override;

    /// Takes '1' as TRUE or '0' as FALSE, modified if the value differs, and becomes defined. Error 5,
    /// nothing changed, for any other character.
    virtual void SetFromSQL(TCHAR chSQL);
    template <class T, nkdt::If<nkdt::isNoTextOperand<T>> = 0>
    void SetFromSQL(const T&) = delete;
    /// '1' or '0' with the apostrophes; "NULL" for an undefined value.
    virtual NkDtString ConvToSQL() const;
    /// Clears for a field that the recordset reports null; else stores the field, modified if it differs, and
    /// makes the value defined.
    virtual void SetFromRecordSet(CRecordset& rs, const BOOL& rField);
    /// Writes the stored number to the field and marks it not null; marks it null, the field unchanged, for
    /// an undefined value.
    virtual void ConvToRecordSet(CRecordset& rs, BOOL& rField) const;

    // Text and truth value make text.
    friend NkDtString operator+(const NkDtString& a, const NkDtBool& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtBool& a, const NkDtString& b) { return NkDtString(a) + b; }
    friend NkDtString operator+(LPCTSTR a, const NkDtBool& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtBool& a, LPCTSTR b) { return NkDtString(a) + b; }
    friend NkDtString operator+(const CString& a, const NkDtBool& b) { return a + NkDtString(b); }
    friend NkDtString operator+(const NkDtBool& a, const CString& b) { return NkDtString(a) + b; }

    // Truth values are no numbers, and no steps of a pointer.
    friend void operator+(const NkDtBool&, const NkDtBool&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTruthAddend<T>, void> operator+(const NkDtBool&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTruthAddend<T>, void> operator+(const T&, const NkDtBool&) = delete;
};
