#pragma once

/// @file
/// The nullable single character, one byte in code page 1252.
///
/// @code
/// NkDtChar chKlasse("a");
/// chKlasse.ToUpper();                           // 'A'
/// NkDtString strSql = chKlasse.ConvToSQL();     // 'A'
/// NkDtString strText = chKlasse + "-Kunde";     // "A-Kunde"
/// NkDtChar chFehlt(NkDtWmMissing);              // chFehlt.GetValue() raises error 2
/// @endcode
///
/// A character without content is NUL: it is what an undefined character and an empty text hold, and it is
/// written as the empty text.
///
/// Characters are equal byte for byte and have no order; beside a text they stand as texts. Numbers and truth
/// values do not compile beside them. The conversion to a plain `char` asks for no definedness; where it
/// leads on to a number (`int n = ch`), it cannot be stopped.

#include "nkdt/NkDtBasis.h"
#include "nkdt/NkDtString.h"
#include "nkdt/PlainValue.h"

class CRecordset;
class NkDtChar_Imp;

template <>
struct nkdt::ValueTraits<NkDtChar> {
    using Imp = NkDtChar_Imp;
    using Value = TCHAR;
    template <class T>
    static constexpr bool isNoComparand = isNoCharacterComparand<T>;
    template <class T>
    static constexpr bool isNoOrdered = isNoComparand<T> || std::is_same_v<T, TCHAR> || isKindOf<T, NkDtChar>;
};

extern template class NKDT_API nkdt::Record<NkDtChar_Imp>;
extern template class NKDT_API nkdt::StoredValue<NkDtChar>;
extern template class NKDT_API nkdt::PlainValue<NkDtChar>;

class NKDT_API NkDtChar : public nkdt::PlainValue<NkDtChar> {
  public:
    /// Undefined and NUL in that mode (3: the default); defined in mode 2.
    NkDtChar(NkDtWorkingMode eMode = NkDtWmDefault);
    NkDtChar(CHAR ch);
    template <class T, nkdt::If<nkdt::isNoCharacterSource<T> && !std::is_same_v<T, NkDtWorkingMode>> = 0>
    NkDtChar(const T&) = delete;
    /// The first character of the text, NUL for an empty one. Error 5 "Ungültiger Initialwert" for null.
    NkDtChar(LPCTSTR psz);
    /// The base state of @p r; its first character, NUL when it is empty or undefined.
    NkDtChar(const NkDtString& r);
    NkDtChar(const NkDtChar& r);
    NkDtChar(NkDtChar&& r) noexcept = default;
    ~NkDtChar() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    NkDtChar* NewObject() const override;

    /// Copies the character (modified if it differs) and the definedness; mode and format stay.
    NkDtChar& operator=(const NkDtChar& r);
    NkDtChar& operator=(NkDtChar&& r) {
        MoveFrom(r);
        return *this;
    }
    /// Stores the character, modified if it differs, and becomes defined.
    NkDtChar& operator=(TCHAR ch);
    template <class T, nkdt::If<nkdt::isNoCharacterSource<T>> = 0>
    NkDtChar& operator=(const T&) = delete;

    /// The character, NUL for a null value. Error 2 "Undefinierter Wert" when missing.
    TCHAR GetValue() const;
    /// The character, NUL for an undefined value.
    operator TCHAR() const { return Stored(); }

    /// Turns an ASCII letter, ä, ö or ü into its capital; modified if that changes it.
    void ToUpper();
    /// Turns an ASCII letter, Ä, Ö or Ü into the small letter; modified if that changes it.
    void ToLower();

    CString ConvToOFL(const NkFormat* pFormat = nullptr) const override;
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override;
    /// The character as a text with the base state of this value.
    NkDtString ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const override;
    /// Takes the text's first character.
    void SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) override;

    /// Takes the character of a database column, modified if it differs, and becomes defined.
    /// @param uCodePage the column's page: 850, 437 or the system's OEM page; any other: no conversion. Error
    /// 19 "Codepagewandlung nicht möglich", nothing changed, when the conversion fails.
    virtual void SetFromSQL(CHAR ch, UINT uCodePage = 0);
    template <class T, nkdt::If<nkdt::isNoTextOperand<T>> = 0>
    void SetFromSQL(const T&, UINT = 0) = delete;
    /// The character as an SQL literal in the page @p uCodePage: enclosed in apostrophes, an apostrophe
    /// doubled, also one that the conversion makes; '' for NUL; "NULL" for an undefined value. Error 19 when
    /// the conversion fails.
    virtual NkDtString ConvToSQL(UINT uCodePage = 0) const;
    /// Clears for a field that the recordset reports null; else takes its first character, modified if it
    /// differs, and becomes defined.
    virtual void SetFromRecordSet(CRecordset& rs, const CString& rField);
    /// Writes the character as a text into the field and marks it not null; marks it null, the field
    /// unchanged, for an undefined value.
    virtual void ConvToRecordSet(CRecordset& rs, CString& rField) const;

    // Concatenation makes text: an undefined operand contributes nothing, the result is the other one as a
    // text. Error 5 for a null pointer, error 8 when the result would be too long.
    friend NkDtString operator+(const NkDtChar& a, const NkDtChar& b) { return Concatenate(a, b); }
    friend NkDtString operator+(const NkDtString& a, const NkDtChar& b) { return Concatenate(a, b); }
    friend NkDtString operator+(const NkDtChar& a, const NkDtString& b) { return Concatenate(a, b); }
    friend NkDtString operator+(const NkDtChar& a, TCHAR b) { return Concatenate(a, b); }
    friend NkDtString operator+(TCHAR a, const NkDtChar& b) { return Concatenate(a, b); }
    friend NkDtString operator+(const NkDtChar& a, LPCTSTR b) { return Concatenate(a, b); }
    friend NkDtString operator+(LPCTSTR a, const NkDtChar& b) { return Concatenate(a, b); }
    friend NkDtString operator+(const NkDtChar& a, const CString& b) { return Concatenate(a, b.GetString()); }
    friend NkDtString operator+(const CString& a, const NkDtChar& b) { return Concatenate(a.GetString(), b); }
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoCharacterAddend<T>, NkDtString> operator+(const NkDtChar&,
                                                                              const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoCharacterAddend<T>, NkDtString> operator+(const T&,
                                                                              const NkDtChar&) = delete;

  private:
    static NkDtString Concatenate(const NkDtChar& a, const NkDtChar& b);
    static NkDtString Concatenate(const NkDtString& a, const NkDtChar& b);
    static NkDtString Concatenate(const NkDtChar& a, const NkDtString& b);
    static NkDtString Concatenate(const NkDtChar& a, TCHAR b);
    static NkDtString Concatenate(TCHAR a, const NkDtChar& b);
    static NkDtString Concatenate(const NkDtChar& a, LPCTSTR b);
    static NkDtString Concatenate(LPCTSTR a, const NkDtChar& b);
};
