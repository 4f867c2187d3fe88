#include <cstddef>
#include <cstring>
#include <ostream>
#include <string_view>

#include "Imp/dtstrini.h"
#include "NarrowText.h"
#include "Raise.h"
#include "RecordMemory.h"
#include "TextGrowth.h"
#include "TextLength.h"
#include "ValueAccess.h"
#include "nkdt/NkDtChar.h"
#include "nkdt/NkDtString.h"
#include "nkdt/NkDtUtil.h"

using namespace nkdt;

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\dtstrope.cc", "NkDtString", operation};
}

TextPiece pieceOf(LPCTSTR psz) noexcept {
    return {psz};
}

/// A view of @p ch.
TextPiece pieceOf(const TCHAR& ch) noexcept {
    return {{&ch, 1}, ch == '\0'};
}

}  // namespace

// Assignment

NkDtString& NkDtString::operator=(const NkDtString& r) {
    if (this == &r) return *this;
    if (!r.IsDefined()) {
        Text().StrReset();
        // Whatever the mode, and without raising the modified flag.
        ValueAccess::state(*this).defined = FALSE;
        return *this;
    }
    NkDtString_Imp& text = Text();
    const NkDtString_Imp& source = r.Text();
    if (!IsDefined() || text.AllocLength() < source.Length()) Resize(source.Length());
    if (!text.Equals(source)) {
        text.Write(0, source.Whole());
        SetModified(TRUE);
    }
    SetDefined(TRUE);
    return *this;
}

NkDtString& NkDtString::operator=(LPCTSTR psz) {
    static constexpr Origin origin = originOf("operator=(LPCTSTR)");
    requireText(psz, origin);
    TakeWhole(psz, checkedLength(std::strlen(psz), origin));
    return *this;
}

NkDtString& NkDtString::operator=(const CString& r) {
    static constexpr Origin origin = originOf("operator=(CString&)");
    const std::size_t nLength = std::strlen(r);
    if (nLength > static_cast<std::size_t>(NkDtString_Imp::maxLength)) raise(origin, NkDtErrInitiallaenge);
    TakeWhole(r, static_cast<INT>(nLength));
    return *this;
}

NkDtString& NkDtString::operator=(const OLECHAR* pwsz) {
    static constexpr Origin origin = originOf("operator=(BSTR)");
    const CString text = narrowText(pwsz, origin);
    TakeWhole(text, checkedLength(static_cast<std::size_t>(text.GetLength()), origin));
    return *this;
}

NkDtString& NkDtString::operator=(TCHAR ch) {
    if (GetLength() != 1 || *Text().Text() != ch) SetModified(TRUE);
    Text().Reserve(1);
    Text().Write(0, pieceOf(ch));
    SetDefined(TRUE);
    return *this;
}

NkDtString& NkDtString::operator=(const NkDtChar& r) {
    if (r.IsDefined()) return *this = static_cast<TCHAR>(r);
    Text().StrReset();
    SetDefined(FALSE);
    return *this;
}

void NkDtString::Resize(INT nAlloc) {
    grow(*this, [this, nAlloc] { Text().StrRealloc(nAlloc); });
}

void NkDtString::TakeWhole(LPCTSTR psz, INT nLength) {
    // A source inside this text needs its buffer, which has the room.
    if (GetAllocLength() < nLength || (!IsDefined() && !Text().Holds(psz))) Resize(nLength);
    const TextPiece source{{psz, static_cast<std::size_t>(nLength)}};
    if (Text().VisibleText() != source.characters) {
        SetModified(TRUE);
        Text().Write(0, source);
    } else {
        Text().SetLength(nLength);
    }
    SetDefined(TRUE);
}

void NkDtString::TakeField(const CString& rField) {
    SetModified(TRUE);
    Text().Reserve(rField.GetLength());
    const std::string_view field(rField.GetString(), static_cast<std::size_t>(rField.GetLength()));
    Text().Write(0, {field, std::strlen(rField) != field.size()});
}

// Access

TCHAR NkDtString::operator[](INT nIndex) const {
    static constexpr Origin origin = originOf("operator[](INT)");
    if (nIndex < 0 || nIndex >= GetLength()) raise(origin, NkDtErrStringindex);
    return Text().Text()[nIndex];
}

NkDtString::operator LPCTSTR() const {
    return Text().Text();
}

NkDtString::operator CString() const {
    return CString(Text().VisibleText());
}

NkDtString::operator BSTR() const {
    return CString(Text().VisibleText()).AllocSysString();
}

// Appending

NkDtString& NkDtString::operator+=(const NkDtString& r) {
    static constexpr Origin origin = originOf("operator+=(NkDtString&)");
    if (!IsDefined() && !r.IsDefined()) return *this;
    Append(r.Text().Whole(), origin);
    // An empty text beside an undefined one makes it defined without raising the modified flag.
    ValueAccess::state(*this).defined = TRUE;
    return *this;
}

NkDtString& NkDtString::operator+=(const CString& r) {
    static constexpr Origin origin = originOf("operator+=(CString&)");
    Append(pieceOf(r), origin);
    return *this;
}

NkDtString& NkDtString::operator+=(LPCTSTR psz) {
    static constexpr Origin origin = originOf("operator+=(LPCTSTR)");
    requireText(psz, origin);
    Append(pieceOf(psz), origin);
    return *this;
}

NkDtString& NkDtString::operator+=(TCHAR ch) {
    static constexpr Origin origin = originOf("operator+=(TCHAR)");
    AppendCharacter(ch, origin);
    return *this;
}

NkDtString& NkDtString::operator+=(const NkDtChar& r) {
    static constexpr Origin origin = originOf("operator+=(NkDtChar&)");
    if (r.IsDefined()) AppendCharacter(r, origin);
    return *this;
}

void NkDtString::AppendCharacter(TCHAR ch, const Origin& origin) {
    const INT nLength = combinedLength(GetLength(), 1, origin);
    if (GetAllocLength() < nLength) Resize(nLength);
    Text().Write(nLength - 1, pieceOf(ch));
    SetDefined(TRUE);
    SetModified(TRUE);
}

[[gnu::flatten]] void NkDtString::Append(const TextPiece& piece, const Origin& origin) {
    if (piece.characters.empty()) return;
    wrapped(origin, [&] {
        NkDtString_Imp& text = Text();
        const INT nOld = text.Length();
        const INT nNew = combinedLength(static_cast<std::size_t>(nOld), piece.characters.size(), origin);
        if (IsDefined() && nNew <= text.AllocLength()) [[likely]] {
            text.Write(nOld, piece);
        } else {
            GrowAndAppend(piece, nNew);
        }
        SetModified(TRUE);
        SetDefined(TRUE);
    });
}

void NkDtString::GrowAndAppend(const TextPiece& piece, INT nLength) {
    NkDtString_Imp& text = Text();
    const INT nOld = text.Length();
    // A source inside this text moves with the buffer.
    LPCTSTR const psz = piece.characters.data();
    const bool fInside = text.Holds(psz);
    const std::ptrdiff_t nOffset = fInside ? psz - text.Text() : 0;
    Resize(nLength);
    LPCTSTR const source = fInside ? text.Text() + nOffset : psz;
    text.Write(nOld, {{source, piece.characters.size()}, piece.mayHoldNul});
}

// Concatenation

NkDtString NkDtString::Joined(const TextPiece& left, const TextPiece& right, const Origin& origin) {
    const INT nLength = combinedLength(left.characters.size(), right.characters.size(), origin);
    NkDtString result("", 0, nLength);
    result.Text().Write(0, left);
    result.Text().Write(left.Length(), right);
    return result;
}

NkDtString NkDtString::Concatenate(const NkDtString& a, const NkDtString& b) {
    static constexpr Origin origin = originOf("operator+(NkDtString&)");
    if (!a.IsDefined()) return b;
    if (!b.IsDefined()) return a;
    return Joined(a.Text().Whole(), b.Text().Whole(), origin);
}

NkDtString NkDtString::Concatenate(const NkDtString& a, const CString& b) {
    static constexpr Origin origin = originOf("operator+(CString&)");
    if (!a.IsDefined()) return NkDtString(b);
    return Joined(a.Text().Whole(), pieceOf(b.GetString()), origin);
}

NkDtString NkDtString::Concatenate(const NkDtString& a, LPCTSTR b) {
    static constexpr Origin origin = originOf("operator+(LPCTSTR)");
    requireText(b, origin);
    if (!a.IsDefined()) return NkDtString(b);
    return Joined(a.Text().Whole(), pieceOf(b), origin);
}

NkDtString NkDtString::Concatenate(const NkDtString& a, TCHAR b) {
    static constexpr Origin origin = originOf("operator+(TCHAR)");
    if (!a.IsDefined()) return NkDtString(b);
    return Joined(a.Text().Whole(), pieceOf(b), origin);
}

NkDtString NkDtString::Concatenate(LPCTSTR a, const NkDtString& b) {
    static constexpr Origin origin = originOf("operator+(LPCTSTR,NkDtString&)");
    requireText(a, origin);
    if (!b.IsDefined()) return NkDtString(a);
    return Joined(pieceOf(a), b.Text().Whole(), origin);
}

NkDtString NkDtString::Concatenate(TCHAR a, const NkDtString& b) {
    static constexpr Origin origin = originOf("operator+(TCHAR,NkDtString&)");
    if (!b.IsDefined()) return NkDtString(a);
    return Joined(pieceOf(a), b.Text().Whole(), origin);
}

// Concatenation with characters: a NUL counts as one here

NkDtString NkDtChar::Concatenate(const NkDtChar& a, const NkDtChar& b) {
    static constexpr Origin origin = originOf("operator+(NkDtChar&,NkDtChar&)");
    if (!a.IsDefined()) return NkDtString(b);
    if (!b.IsDefined()) return NkDtString(a);
    const TCHAR left = a.Stored();
    const TCHAR right = b.Stored();
    return NkDtString::Joined(pieceOf(left), pieceOf(right), origin);
}

NkDtString NkDtChar::Concatenate(const NkDtString& a, const NkDtChar& b) {
    static constexpr Origin origin = originOf("operator+(NkDtChar&)");
    if (!b.IsDefined()) return a;
    if (!a.IsDefined()) return NkDtString(b.Stored());
    const TCHAR right = b.Stored();
    return NkDtString::Joined(a.Text().Whole(), pieceOf(right), origin);
}

NkDtString NkDtChar::Concatenate(const NkDtChar& a, const NkDtString& b) {
    static constexpr Origin origin = originOf("operator+(NkDtChar&,NkDtString&)");
    if (!a.IsDefined()) return b;
    if (!b.IsDefined()) return NkDtString(a);
    const TCHAR left = a.Stored();
    return NkDtString::Joined(pieceOf(left), b.Text().Whole(), origin);
}

NkDtString NkDtChar::Concatenate(const NkDtChar& a, TCHAR b) {
    static constexpr Origin origin = originOf("operator+(NkDtChar&,TCHAR)");
    if (!a.IsDefined()) return NkDtString(b);
    const TCHAR left = a.Stored();
    return NkDtString::Joined(pieceOf(left), pieceOf(b), origin);
}

NkDtString NkDtChar::Concatenate(TCHAR a, const NkDtChar& b) {
    static constexpr Origin origin = originOf("operator+(TCHAR,NkDtChar&)");
    if (!b.IsDefined()) return NkDtString(a);
    const TCHAR right = b.Stored();
    return NkDtString::Joined(pieceOf(a), pieceOf(right), origin);
}

NkDtString NkDtChar::Concatenate(const NkDtChar& a, LPCTSTR b) {
    static constexpr Origin origin = originOf("operator+(NkDtChar&,LPCTSTR)");
    requireText(b, origin);
    if (!a.IsDefined()) return NkDtString(b);
    const TCHAR left = a.Stored();
    return NkDtString::Joined(pieceOf(left), pieceOf(b), origin);
}

NkDtString NkDtChar::Concatenate(LPCTSTR a, const NkDtChar& b) {
    static constexpr Origin origin = originOf("operator+(LPCTSTR,NkDtChar&)");
    requireText(a, origin);
    if (!b.IsDefined()) return NkDtString(a);
    const TCHAR right = b.Stored();
    return NkDtString::Joined(pieceOf(a), pieceOf(right), origin);
}

// Comparison

namespace {

constexpr const char* comparisons[] = {"operator==(NkDtString&)", "operator!=(NkDtString&)",
                                       "operator<(NkDtString&)",  "operator>(NkDtString&)",
                                       "operator<=(NkDtString&)", "operator>=(NkDtString&)"};
constexpr const char* textComparisons[] = {"operator==(LPCTSTR)", "operator!=(LPCTSTR)",
                                           "operator<(LPCTSTR)",  "operator>(LPCTSTR)",
                                           "operator<=(LPCTSTR)", "operator>=(LPCTSTR)"};

void requireComparable(const NkDtString& a, const NkDtString& b, const char* operation) {
    if (a.IsMissing() || b.IsMissing()) [[unlikely]]
        raise(originOf(operation), NkDtErrUndefiniert);
}

template <class PlainText>
void requireComparable(const NkDtString& a, const PlainText& b, const char* operation) {
    if (a.IsMissing() || b.IsMissing()) [[unlikely]]
        raise(originOf(operation), NkDtErrUndefiniert);
    if (b.Text() == nullptr) [[unlikely]]
        raise(originOf(operation), NkDtErrInitialwert);
}

}  // namespace

NkDtString::PlainText::PlainText(const NkDtChar& r) : PlainText(static_cast<TCHAR>(r)) {
    m_fMissing = r.IsMissing();
}

bool NkDtString::Equal(const NkDtString& a, const NkDtString& b, Comparison comparison) {
    requireComparable(a, b, comparisons[static_cast<unsigned char>(comparison)]);
    return a.Text().Equals(b.Text());
}

bool NkDtString::Equal(const NkDtString& a, const PlainText& b, Comparison comparison) {
    requireComparable(a, b, textComparisons[static_cast<unsigned char>(comparison)]);
    return std::strcmp(a.Text().Text(), b.Text()) == 0;
}

INT NkDtString::Order(const NkDtString& a, const NkDtString& b, Comparison comparison) {
    requireComparable(a, b, comparisons[static_cast<unsigned char>(comparison)]);
    return NkDtCompareUsingNorvaneSortOrder(a.Text().Text(), b.Text().Text());
}

INT NkDtString::Order(const NkDtString& a, const PlainText& b, Comparison comparison) {
    requireComparable(a, b, textComparisons[static_cast<unsigned char>(comparison)]);
    return NkDtCompareUsingNorvaneSortOrder(a.Text().Text(), b.Text());
}

std::ostream& NkDtString::Write(std::ostream& os, const NkDtString& str) {
    return os << (str.IsDefined() ? str.Text().VisibleText() : std::string_view());
}
