#pragma once

/// @file
/// The nullable text, and the hub of all conversions: every class reads from it and writes to it.
///
/// @code
/// NkDtString strName("Müller");
/// strName += ", Köln";
/// NkDtString strSql = strName.ConvToSQL();      // 'Müller, Köln'
/// NkDtString strNr = "Nr. " + NkDtLong(5);      // "Nr. 5"
/// @endcode
///
/// Text is one byte a character in code page 1252. Lengths and allocation lengths count characters without
/// the terminator; a text has fewer than 2147483647. An undefined text is empty and owns no buffer.
///
/// Equality is exact; the ordering is the library's sort order, which ignores case (see
/// NkDtCompareUsingNorvaneSortOrder()). Numbers do not compare with texts and are not assigned to them as
/// characters: write `NkDtString(5)`. One thing cannot be stopped: `printf("%s", str)` passes an object;
/// write `str.GetValue()`.

#include <cstddef>
#include <iosfwd>
#include <string_view>

#include "nkdt/NkDtBasis.h"
#include "nkdt/NkDtTypes.h"
#include "nkdt/Operands.h"
#include "nkdt/Record.h"
#include "nkfw/BStr.h"
#include "nkfw/Export.h"
#include "nkfw/String.h"

class CRecordset;
class NkDtString_Imp;

namespace nkdt {

struct Origin;
struct TextPiece;
template <class Imp>
struct NewRecords;
extern template class NKDT_API Record<NkDtString_Imp>;

}  // namespace nkdt

class NKDT_API NkDtString : public NkDtBasis {
  public:
    /// Undefined and empty in that mode (3: the default); defined in mode 2.
    NkDtString(NkDtWorkingMode eMode = NkDtWmDefault);
    /// The first @p nLen characters (NkDtStrLenAuto: all) with room for @p nAlloc (NkDtStrLenAuto or less
    /// than the length: as many as the length). An empty text takes any length; the characters are NUL then.
    /// Error 5 "Ungültiger Initialwert" for null, error 6 "Ungültige Initiallänge" for a negative length, one
    /// beyond a non-empty text, or 2147483647.
    NkDtString(LPCTSTR psz, INT nLen = NkDtStrLenAuto, INT nAlloc = NkDtStrLenAuto);
    NkDtString(const CString& r);
    /// A `BSTR` or any other 16-bit text, up to its first character 0. Error 23 "Wandlung in
    /// Wide-Charakter-Format nicht möglich" for a character that code page 1252 does not have.
    NkDtString(const OLECHAR* pwsz);
    /// One character; the empty text for NUL.
    NkDtString(CHAR ch);
    /// The decimal digits, a leading "-" when negative.
    NkDtString(INT n);
    NkDtString(UINT n);
    template <class W, nkdt::IfOtherWhole<W, INT, UINT> = 0>
    NkDtString(W n) : NkDtString(Digits(n)) {}
    template <class T, nkdt::If<nkdt::isNoTextSource<T>> = 0>
    NkDtString(const T&) = delete;
    /// The base state and the digits of @p r; empty when undefined.
    NkDtString(const NkDtLong& r);
    NkDtString(const NkDtShort& r);
    /// The base state of @p r and its number with 15 significant digits, as `%.15g` prints it in the C
    /// locale; empty when undefined. The allocation length is 316.
    NkDtString(const NkDtDouble& r);
    /// The base state of @p r and its plain text without superfluous places; empty when undefined. The
    /// allocation length is 38.
    NkDtString(const NkDtDecimal& r);
    /// The base state of @p r and its character; the empty text for NUL and when undefined.
    NkDtString(const NkDtChar& r);
    /// The base state of @p r and its text "DD.MM.YYYY hh:mm:ss", cut to 19 characters; empty when undefined.
    NkDtString(const NkDtDateTime& r);
    /// The base state of @p r and its text "DD.MM.YYYY", cut to 10 characters; empty when undefined.
    NkDtString(const NkDtDateZp& r);
    /// The base state of @p r and its text in its time mode, see NkDtTime::GetValue(); empty when undefined.
    NkDtString(const NkDtTime& r);
    /// The base state of @p r and its word in the program's language; empty when undefined.
    NkDtString(const NkDtBool& r);
    /// The copy's allocation length is the length of the text.
    NkDtString(const NkDtString& r);
    NkDtString(NkDtString&& r) noexcept = default;
    ~NkDtString() override;

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject();
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    /// Copies the text (modified if it differs) and becomes defined. An undefined @p r makes this text
    /// undefined whatever its mode and leaves the modified flag alone. Mode and format stay. The buffer is
    /// reused when it is large enough.
    NkDtString& operator=(const NkDtString& r);
    NkDtString& operator=(NkDtString&& r) {
        if (!IsHusk()) return *this = static_cast<const NkDtString&>(r);
        StealState(r);
        m_imp.steal(r.m_imp);
        return *this;
    }
    /// Takes the text (modified if it differs) and becomes defined. The source may lie inside this text.
    /// Error 5 for null, error 8 for more than 2147483646 characters.
    NkDtString& operator=(LPCTSTR psz);
    NkDtString& operator=(const CString& r);
    /// As the constructor; error 23, nothing changed, for a character that code page 1252 does not have.
    NkDtString& operator=(const OLECHAR* pwsz);
    /// A text of this one character; NUL too counts as a character here.
    NkDtString& operator=(TCHAR ch);
    /// The same with a defined character. An undefined one makes this text undefined whatever its mode;
    /// modified if it was defined.
    NkDtString& operator=(const NkDtChar& r);
    template <class T, nkdt::If<nkdt::hasTextForm<T>> = 0>
    NkDtString& operator=(const T& r) {
        return *this = NkDtString(r);
    }
    template <class T, nkdt::If<nkdt::isNoTextOperand<T>> = 0>
    NkDtString& operator=(const T&) = delete;

    void Serialize(CArchive& ar) override;
    void Clear() override;
    void Assign(const NkDtBasis& r) override;
    NkDtString* NewObject() const override;
    NkDtTyps GetDtTyp() const override;
    CString ConvToOFL(const NkFormat* pFormat = nullptr) const override;
    void SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat = nullptr) override;
    /// A copy of the text.
    NkDtString ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const override;
    void SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) override;

    /// Takes the first @p nLen characters of a database column and converts them from the page @p uCodePage
    /// (850, 437 or the system's OEM page; any other: no conversion). Sets the modified flag if the text
    /// differs in the end. Error 5 for null, error 6 unless 1 <= nLen <= length of the text; error 1, nothing
    /// changed, when the conversion fails.
    virtual void SetFromSQL(LPCTSTR pszText, INT nLen, UINT uCodePage = 0);
    /// The text as an SQL literal in the page @p uCodePage: enclosed in apostrophes, each apostrophe doubled,
    /// also one that the conversion makes out of another character. "NULL" for an undefined text. Error 1
    /// when the conversion fails or the literal would be too long.
    virtual NkDtString ConvToSQL(UINT uCodePage = 0) const;
    /// Clears for a null field, else takes its text (modified if it differs) and becomes defined.
    virtual void SetFromRecordSet(CRecordset& rs, const CString& rField);
    /// Writes the text into the field's buffer, cut to its allocated length less one, and marks the field not
    /// null; an undefined text marks it null and leaves it as it was.
    virtual void ConvToRecordSet(CRecordset& rs, CString& rField) const;

    /// The text, valid until the next change. Error 2 "Undefinierter Wert" when missing; a null text is "".
    LPCTSTR GetValue() const;
    /// Copies the text and its terminator into the caller's buffer of @p nSize bytes and returns it. Error 2
    /// when missing, error 4 "Puffer zu klein" when it does not fit, error 5 for a null buffer.
    LPTSTR GetValue(LPTSTR pszBuffer, INT nSize) const;
    /// @p nCount characters from 0-based position @p nPos on, as a defined text; a null text gives an empty
    /// one. Error 2 when missing, error 3 "Ungültiger Stringindex" when there are fewer.
    NkDtString GetnValue(INT nPos, INT nCount) const;
    template <class P, class N, nkdt::If<nkdt::isNoLength<P> || nkdt::isNoLength<N>> = 0>
    NkDtString GetnValue(const P&, const N&) const = delete;
    /// The length, 0 for an undefined text.
    INT GetLength() const;
    /// The characters that the buffer holds without growing.
    INT GetAllocLength() const;
    /// Replaces the character at 0-based @p nIndex, modified if it differs. Error 3 for a position outside of
    /// the text, error 5 for NUL.
    void SetAt(INT nIndex, TCHAR ch);
    template <class P, class C, nkdt::If<nkdt::isNoLength<P> || nkdt::isNoTextOperand<C>> = 0>
    void SetAt(const P&, const C&) = delete;
    /// The character at 0-based @p nIndex; error 3 for a position outside of the text.
    TCHAR operator[](INT nIndex) const;
    template <class W, nkdt::IfOtherWhole<W, INT> = 0>
    TCHAR operator[](W n) const {
        return (*this)[nkdt::fits<INT>(n) ? static_cast<INT>(n) : INT{-1}];
    }
    /// Error 2 "Undefinierter Wert" for a missing position.
    template <class T, nkdt::If<nkdt::isKindOf<T, NkDtLong, NkDtShort>> = 0>
    TCHAR operator[](const T& n) const {
        return (*this)[n.GetValue()];
    }
    template <class T, nkdt::If<nkdt::isNoPosition<T>> = 0>
    TCHAR operator[](const T&) const = delete;
    /// The text, "" when undefined; valid until the next change.
    operator LPCTSTR() const;
    operator CString() const;
    /// A new 16-bit text; the caller frees it with SysFreeString().
    operator BSTR() const;

    // Editing. Positions and lengths count characters from 0. Searching and comparing look at the text up to
    // its first NUL, copying at its whole length. Each argument may be this text itself: the result is what a
    // copy of it would give.

    /// Removes @p strPart and tells whether there was something to remove; modified then. FALSE when one of
    /// the two is empty.
    /// @param nMode NkDtStrAll: every occurrence, those that a removal brings about included; NkDtStrFirst:
    /// the first; any other value: as many characters as @p strPart has at this position, whatever they are.
    /// Error 3 "Ungültiger Stringindex" when there are fewer.
    BOOL DeleteParts(const NkDtString& strPart, INT nMode);
    /// The position of @p strPart, -1 when it is not found or one of the two is empty. A hit is remembered.
    /// @param nMode NkDtStrPosNext: searches behind the remembered hit, as far on as @p strPart is long; any
    /// other value, or no hit yet: from the start
    INT GetPos(const NkDtString& strPart, INT nMode);
    /// Replaces everything from @p nPos on by @p str; modified and defined. Error 2 "Undefinierter Wert" when
    /// one of the two is missing, error 3 for a position outside of the text, error 8 "Wert außerhalb des
    /// Wertebereichs" when the text would reach 2147483647 characters.
    void Copy(const NkDtString& str, INT nPos);
    template <class P, nkdt::If<nkdt::isNoLength<P>> = 0>
    void Copy(const NkDtString&, const P&) = delete;
    /// Overwrites the characters from @p nPos on by @p str, beyond the end too; modified. An empty @p str
    /// does nothing. A text that becomes longer becomes defined. Errors as Copy().
    void CopyParts(const NkDtString& str, INT nPos);
    template <class P, nkdt::If<nkdt::isNoLength<P>> = 0>
    void CopyParts(const NkDtString&, const P&) = delete;
    /// Inserts @p str in front of position @p nPos; modified and defined. An empty @p str does nothing.
    /// Errors as Copy().
    void Insert(const NkDtString& str, INT nPos);
    template <class P, nkdt::If<nkdt::isNoLength<P>> = 0>
    void Insert(const NkDtString&, const P&) = delete;
    /// Replaces @p strOld by @p strNew and tells whether something was replaced; modified then. Nothing
    /// inserted is searched again. FALSE when this text or @p strOld is empty or @p strNew missing; TRUE, and
    /// nothing changed, when the two are equal. An empty @p strNew removes, see DeleteParts(). Error 3 for a
    /// position, error 8 when the text would reach 2147483647 characters.
    /// @param nMode NkDtStrAll, NkDtStrFirst or a position, see DeleteParts()
    BOOL Change(const NkDtString& strOld, const NkDtString& strNew, INT nMode);
    /// Turns ASCII letters, ä, ö and ü into capitals. Modified, even if nothing changes, unless all
    /// characters are capitals or ß.
    void ToUpper();
    /// Turns ASCII letters, Ä, Ö and Ü into small ones. Modified, even if nothing changes, unless all
    /// characters are small letters or ß.
    void ToLower();
    /// Keeps the first @p nLen characters; modified if there were more. An undefined text stays. Error 3 for
    /// a negative length and one beyond the text.
    void Cut(INT nLen);
    template <class P, nkdt::If<nkdt::isNoLength<P>> = 0>
    void Cut(const P&) = delete;
    /// Divides the text: @p strLeft gets the first @p nLen characters, @p strRight the others; it is cleared
    /// when there are none. Both are cleared when this text is undefined. Neither becomes modified by the
    /// text that it gets. A length beyond the text counts as the text's, unless @p strLeft already has room
    /// for the text: then it gets this length, filled up with NUL. Error 3, nothing changed, for a negative
    /// length; error 6 "Ungültige Initiallänge" for a left text of 2147483647 characters.
    void Split(NkDtString& strLeft, NkDtString& strRight, INT nLen) const;
    template <class P, nkdt::If<nkdt::isNoLength<P>> = 0>
    void Split(NkDtString&, NkDtString&, const P&) const = delete;
    /// Removes blanks (no other white space); modified if there were some.
    /// @param nMode NkDtStrLeft: at the start; NkDtStrRight: at the end; any other value: at both ends
    void Trim(INT nMode);
    /// Fills the text up to @p nLen characters with @p ch; modified and defined. Does nothing when it is
    /// missing or long enough. Error 6 for a length of 2147483647.
    /// @param nMode NkDtStrLeft: in front; any other value: behind
    void FillUp(TCHAR ch, INT nLen, INT nMode);
    template <class C, class P, nkdt::If<nkdt::isNoTextOperand<C> || nkdt::isNoLength<P>> = 0>
    void FillUp(const C&, const P&, INT) = delete;
    /// TRUE for a length of 0, also when null. Error 2 when missing.
    BOOL IsEmpty() const;
    /// TRUE when the texts are equal, or both undefined. An undefined text is equal to an empty one.
    /// @param fExact FALSE: upper and lower case are equal (ASCII letters, ä, ö and ü)
    BOOL Compare(const NkDtString& str, BOOL fExact) const;

    /// Converts the text in place; an undefined one stays. Modified if it changes. Error 19 "Codepagewandlung
    /// nicht möglich", nothing changed, for a direction that is not known or not available.
    void ConvertCodePage(NkDtCodepageWandlung eWandlung);

    /// Appends and becomes defined; modified unless the added text is empty. An empty defined text makes an
    /// undefined one defined and empty; an undefined text added changes nothing. The source may lie inside
    /// this text. Error 1 (cause 8) when the text would reach 2147483647 characters.
    NkDtString& operator+=(const NkDtString& r);
    /// The same, but an empty text added changes nothing, not even the definedness; error 5 for null.
    NkDtString& operator+=(const CString& r);
    NkDtString& operator+=(LPCTSTR psz);
    /// Appends the character, NUL too. Error 8 when the text is full.
    NkDtString& operator+=(TCHAR ch);
    /// The same with a defined character; nothing for an undefined one.
    NkDtString& operator+=(const NkDtChar& r);
    template <class T, nkdt::If<nkdt::hasTextForm<T>> = 0>
    NkDtString& operator+=(const T& r) {
        return *this += NkDtString(r);
    }
    template <class T, nkdt::If<nkdt::isNoTextOperand<T>> = 0>
    NkDtString& operator+=(const T&) = delete;

    /// Appends the text to a framework text.
    friend CString& operator+=(CString& a, const NkDtString& b) { return a += static_cast<LPCTSTR>(b); }

    // Concatenation (with NkDtChar in its own header): an undefined operand contributes nothing, the result
    // is a copy of the other one. Error 8 when the result would be too long, error 5 for a null pointer.
    friend NkDtString operator+(const NkDtString& a, const NkDtString& b) { return Concatenate(a, b); }
    friend NkDtString operator+(const NkDtString& a, LPCTSTR b) { return Concatenate(a, b); }
    friend NkDtString operator+(const NkDtString& a, const CString& b) { return Concatenate(a, b); }
    friend NkDtString operator+(const NkDtString& a, TCHAR b) { return Concatenate(a, b); }
    friend NkDtString operator+(LPCTSTR a, const NkDtString& b) { return Concatenate(a, b); }
    friend NkDtString operator+(const CString& a, const NkDtString& b) {
        return Concatenate(a.GetString(), b);
    }
    friend NkDtString operator+(TCHAR a, const NkDtString& b) { return Concatenate(a, b); }
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextOperand<T>, NkDtString> operator+(const NkDtString&,
                                                                          const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextOperand<T>, NkDtString> operator+(const T&,
                                                                          const NkDtString&) = delete;

    // A text is no pointer to be stepped from.
    friend void operator-(const NkDtString&, const NkDtString&) = delete;
    template <class T>
    friend nkdt::ResultIf<!nkdt::isKindOf<T, NkDtString>, void> operator-(const NkDtString&,
                                                                          const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isPointer<T>, void> operator-(const T&, const NkDtString&) = delete;

    // Comparison: error 2 "Undefinierter Wert" for a missing text, error 5 for a null pointer; a null text
    // compares as "".
    friend BOOL operator==(const NkDtString& a, const NkDtString& b) {
        return Equal(a, b, Comparison::equal);
    }
    friend BOOL operator!=(const NkDtString& a, const NkDtString& b) {
        return !Equal(a, b, Comparison::unequal);
    }
    friend BOOL operator<(const NkDtString& a, const NkDtString& b) {
        return Order(a, b, Comparison::less) < 0;
    }
    friend BOOL operator>(const NkDtString& a, const NkDtString& b) {
        return Order(a, b, Comparison::greater) > 0;
    }
    friend BOOL operator<=(const NkDtString& a, const NkDtString& b) {
        return Order(a, b, Comparison::lessEqual) <= 0;
    }
    friend BOOL operator>=(const NkDtString& a, const NkDtString& b) {
        return Order(a, b, Comparison::greaterEqual) >= 0;
    }
    friend BOOL operator==(const NkDtString& a, LPCTSTR b) {
        return Equal(a, PlainText(b), Comparison::equal);
    }
    friend BOOL operator!=(const NkDtString& a, LPCTSTR b) {
        return !Equal(a, PlainText(b), Comparison::unequal);
    }
    friend BOOL operator<(const NkDtString& a, LPCTSTR b) {
        return Order(a, PlainText(b), Comparison::less) < 0;
    }
    friend BOOL operator>(const NkDtString& a, LPCTSTR b) {
        return Order(a, PlainText(b), Comparison::greater) > 0;
    }
    friend BOOL operator<=(const NkDtString& a, LPCTSTR b) {
        return Order(a, PlainText(b), Comparison::lessEqual) <= 0;
    }
    friend BOOL operator>=(const NkDtString& a, LPCTSTR b) {
        return Order(a, PlainText(b), Comparison::greaterEqual) >= 0;
    }
    friend BOOL operator==(LPCTSTR a, const NkDtString& b) { return b == a; }
    friend BOOL operator!=(LPCTSTR a, const NkDtString& b) { return b != a; }
    friend BOOL operator<(LPCTSTR a, const NkDtString& b) { return b > a; }
    friend BOOL operator>(LPCTSTR a, const NkDtString& b) { return b < a; }
    friend BOOL operator<=(LPCTSTR a, const NkDtString& b) { return b >= a; }
    friend BOOL operator>=(LPCTSTR a, const NkDtString& b) { return b <= a; }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator==(const NkDtString& a, const T& b) {
        return Equal(a, PlainText(b), Comparison::equal);
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator!=(const NkDtString& a, const T& b) {
        return !Equal(a, PlainText(b), Comparison::unequal);
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator<(const NkDtString& a, const T& b) {
        return Order(a, PlainText(b), Comparison::less) < 0;
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator>(const NkDtString& a, const T& b) {
        return Order(a, PlainText(b), Comparison::greater) > 0;
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator<=(const NkDtString& a, const T& b) {
        return Order(a, PlainText(b), Comparison::lessEqual) <= 0;
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator>=(const NkDtString& a, const T& b) {
        return Order(a, PlainText(b), Comparison::greaterEqual) >= 0;
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator==(const T& a, const NkDtString& b) {
        return b == a;
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator!=(const T& a, const NkDtString& b) {
        return b != a;
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator<(const T& a, const NkDtString& b) {
        return b > a;
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator>(const T& a, const NkDtString& b) {
        return b < a;
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator<=(const T& a, const NkDtString& b) {
        return b >= a;
    }
    template <class T, nkdt::If<nkdt::isTextComparand<T>> = 0>
    friend BOOL operator>=(const T& a, const NkDtString& b) {
        return b <= a;
    }

    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator==(const NkDtString&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator!=(const NkDtString&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator<(const NkDtString&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator>(const NkDtString&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator<=(const NkDtString&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator>=(const NkDtString&, const T&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator==(const T&, const NkDtString&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator!=(const T&, const NkDtString&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator<(const T&, const NkDtString&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator>(const T&, const NkDtString&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator<=(const T&, const NkDtString&) = delete;
    template <class T>
    friend nkdt::ResultIf<nkdt::isNoTextComparand<T>, BOOL> operator>=(const T&, const NkDtString&) = delete;

    /// Writes the text's bytes; nothing for an undefined text.
    friend std::ostream& operator<<(std::ostream& os, const NkDtString& str) { return Write(os, str); }

  private:
    enum class Comparison : unsigned char { equal, unequal, less, greater, lessEqual, greaterEqual };

    friend class NkDtChar;

    /// A plain text or a character that is compared with.
    class PlainText {
      public:
        explicit PlainText(LPCTSTR psz) noexcept : m_psz(psz) {}
        explicit PlainText(const CString& r) noexcept : m_psz(r.GetString()) {}
        explicit PlainText(TCHAR ch) noexcept : m_psz(nullptr), m_szCharacter{ch, '\0'}, m_fCharacter(true) {}
        explicit PlainText(const NkDtChar& r);
        LPCTSTR Text() const noexcept { return m_fCharacter ? m_szCharacter : m_psz; }
        bool IsMissing() const noexcept { return m_fMissing; }

      private:
        LPCTSTR m_psz;
        TCHAR m_szCharacter[2] = {};
        bool m_fCharacter = false;
        bool m_fMissing = false;
    };

    /// A whole number as sign and magnitude.
    struct Digits {
        template <class W>
        explicit constexpr Digits(W n) noexcept
            : fNegative(n < W{0}),
              ulMagnitude(n < W{0} ? ULONGLONG{0} - static_cast<ULONGLONG>(n) : static_cast<ULONGLONG>(n)) {}
        bool fNegative;
        ULONGLONG ulMagnitude;
    };
    NkDtString(Digits digits);
    explicit NkDtString(const nkdt::NewRecords<NkDtString_Imp>& records) noexcept;

    NkDtString_Imp& Text() { return *m_imp; }
    const NkDtString_Imp& Text() const { return *m_imp; }
    void TakeField(const CString& rField);
    void TakeWhole(LPCTSTR psz, INT nLength);
    void TakePart(const nkdt::TextPiece& part, INT nLength);
    void Resize(INT nAlloc);
    void MakeRoom(INT nAlloc) {
        if (GetAllocLength() < nAlloc) Resize(nAlloc);
    }
    void Append(const nkdt::TextPiece& piece, const nkdt::Origin& origin);
    void GrowAndAppend(const nkdt::TextPiece& piece, INT nLength);
    void AppendCharacter(TCHAR ch, const nkdt::Origin& origin);
    static NkDtString Joined(const nkdt::TextPiece& left, const nkdt::TextPiece& right,
                             const nkdt::Origin& origin);
    static NkDtString Quoted(std::string_view text);
    static bool Equal(const NkDtString& a, const NkDtString& b, Comparison comparison);
    static bool Equal(const NkDtString& a, const PlainText& b, Comparison comparison);
    static INT Order(const NkDtString& a, const NkDtString& b, Comparison comparison);
    static INT Order(const NkDtString& a, const PlainText& b, Comparison comparison);
    static NkDtString Concatenate(const NkDtString& a, const NkDtString& b);
    static NkDtString Concatenate(const NkDtString& a, const CString& b);
    static NkDtString Concatenate(const NkDtString& a, LPCTSTR b);
    static NkDtString Concatenate(const NkDtString& a, TCHAR b);
    static NkDtString Concatenate(LPCTSTR a, const NkDtString& b);
    static NkDtString Concatenate(TCHAR a, const NkDtString& b);
    static std::ostream& Write(std::ostream& os, const NkDtString& str);

    nkdt::Record<NkDtString_Imp> m_imp;

#if defined(__cpp_impl_three_way_comparison)
    // Equality and order follow different rules, and the built-in `<=>` would compare pointers.
    friend void operator<=>(const NkDtString&, const NkDtString&) = delete;
    template <class T>
    friend nkdt::ResultIf<!nkdt::isKindOf<T, NkDtString>, void> operator<=>(const NkDtString&,
                                                                            const T&) = delete;
#endif
};
