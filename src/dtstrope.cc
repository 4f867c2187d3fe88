#include <cstddef>
#include <cstring>
#include <ostream>
#include <string_view>

#include "Imp/dtstrini.h"
#include "NarrowText.h"
#include "Raise.h"
#include "RecordMemory.h"
#include "ValueAccess.h"
#include "nkdt/NkDtChar.h"
#include "nkdt/NkDtString.h"
#include "nkdt/NkDtUtil.h"

using namespace nkdt;

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\dtstrope.cc", "NkDtString", operation};
}

constexpr auto maxLength = static_cast<std::size_t>(NkDtString_Imp::maxLength);

/// The length of the two texts together; error 8 when a text cannot be that long.
INT combinedLength(std::size_t left, std::size_t right, const Origin& origin) {
    if (left > maxLength || right > maxLength - left) raise(origin, NkDtErrWertebereich);
    return static_cast<INT>(left + right);
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
    const NkDtString_Imp& source = r.Text();
    if (!IsDefined() || GetAllocLength() < source.Length()) Resize(source.Length());
    if (std::strcmp(Text().Text(), source.Text()) != 0) {
        Text().Write(0, source.Text(), source.Length());
        SetModified(TRUE);
    }
    SetDefined(TRUE);
    return *this;
}

NkDtString& NkDtString::operator=(LPCTSTR psz) {
    static constexpr Origin origin = originOf("operator=(LPCTSTR)");
    requireText(psz, origin);
    TakeWhole(psz, combinedLength(std::strlen(psz), 0, origin));
    return *this;
}

NkDtString& NkDtString::operator=(const CString& r) {
    static constexpr Origin origin = originOf("operator=(CString&)");
    const std::size_t nLength = std::strlen(r);
    if (nLength > maxLength) raise(origin, NkDtErrInitiallaenge);
    TakeWhole(r, static_cast<INT>(nLength));
    return *this;
}

NkDtString& NkDtString::operator=(const OLECHAR* pwsz) {
    static constexpr Origin origin = originOf("operator=(BSTR)");
    const CString text = narrowText(pwsz, origin);
    TakeWhole(text, combinedLength(static_cast<std::size_t>(text.GetLength()), 0, origin));
    return *this;
}

NkDtString& NkDtString::operator=(TCHAR ch) {
    if (GetLength() != 1 || *Text().Text() != ch) SetModified(TRUE);
    Text().Reserve(1);
    Text().Write(0, &ch, 1);
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
    const bool fHasText = GetLength() != 0;
    try {
        Text().StrRealloc(nAlloc);
    } catch (...) {  // the text is lost with its buffer, and an application must notice
        if (fHasText) SetModified(TRUE);
        throw;
    }
}

void NkDtString::TakeWhole(LPCTSTR psz, INT nLength) {
    // A source inside this text needs its buffer, which has the room.
    if (GetAllocLength() < nLength || (!IsDefined() && !Text().Holds(psz))) Resize(nLength);
    if (std::strcmp(Text().Text(), psz) != 0) {
        SetModified(TRUE);
        Text().Write(0, psz, nLength);
    } else {
        Text().SetLength(nLength);
    }
    SetDefined(TRUE);
}

void NkDtString::TakeText(LPCTSTR psz, INT nLength) {
    SetModified(TRUE);
    Text().Reserve(nLength);
    Text().Write(0, psz, nLength);
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
    AppendText(r.Text().Text(), static_cast<std::size_t>(r.GetLength()), origin);
    // An empty text beside an undefined one makes it defined without raising the modified flag.
    ValueAccess::state(*this).defined = TRUE;
    return *this;
}

NkDtString& NkDtString::operator+=(const CString& r) {
    static constexpr Origin origin = originOf("operator+=(CString&)");
    AppendText(r, std::strlen(r), origin);
    return *this;
}

NkDtString& NkDtString::operator+=(LPCTSTR psz) {
    static constexpr Origin origin = originOf("operator+=(LPCTSTR)");
    requireText(psz, origin);
    AppendText(psz, std::strlen(psz), origin);
    return *this;
}

NkDtString& NkDtString::operator+=(TCHAR ch) {
    static constexpr Origin origin = originOf("operator+=(TCHAR)");
    const INT nLength = combinedLength(static_cast<std::size_t>(GetLength()), 1, origin);
    if (GetAllocLength() < nLength) Resize(nLength);
    Text().Write(nLength - 1, &ch, 1);
    SetDefined(TRUE);
    SetModified(TRUE);
    return *this;
}

NkDtString& NkDtString::operator+=(const NkDtChar& r) {
    return r.IsDefined() ? *this += static_cast<TCHAR>(r) : *this;
}

void NkDtString::AppendText(LPCTSTR psz, std::size_t nLength, const Origin& origin) {
    if (nLength == 0) return;
    wrapped(origin, [&] {
        const INT nOld = GetLength();
        const INT nNew = combinedLength(static_cast<std::size_t>(nOld), nLength, origin);
        // A source inside this text moves with the buffer.
        const bool fInside = Text().Holds(psz);
        const std::ptrdiff_t nOffset = fInside ? psz - Text().Text() : 0;
        if (!IsDefined() || GetAllocLength() < nNew) Resize(nNew);
        Text().Write(nOld, fInside ? Text().Text() + nOffset : psz, static_cast<INT>(nLength));
        SetModified(TRUE);
        SetDefined(TRUE);
    });
}

// Concatenation

NkDtString NkDtString::Joined(std::string_view left, std::string_view right, const Origin& origin) {
    const INT nLength = combinedLength(left.size(), right.size(), origin);
    NkDtString result("", 0, nLength);
    result.Text().Write(0, left.data(), static_cast<INT>(left.size()));
    result.Text().Write(static_cast<INT>(left.size()), right.data(), static_cast<INT>(right.size()));
    return result;
}

NkDtString NkDtString::Concatenate(const NkDtString& a, const NkDtString& b) {
    static constexpr Origin origin = originOf("operator+(NkDtString&)");
    if (!a.IsDefined()) return b;
    if (!b.IsDefined()) return a;
    return Joined(a.Text().WholeText(), b.Text().WholeText(), origin);
}

NkDtString NkDtString::Concatenate(const NkDtString& a, const CString& b) {
    static constexpr Origin origin = originOf("operator+(CString&)");
    if (!a.IsDefined()) return NkDtString(b);
    return Joined(a.Text().WholeText(), b.GetString(), origin);
}

NkDtString NkDtString::Concatenate(const NkDtString& a, LPCTSTR b) {
    static constexpr Origin origin = originOf("operator+(LPCTSTR)");
    requireText(b, origin);
    if (!a.IsDefined()) return NkDtString(b);
    return Joined(a.Text().WholeText(), b, origin);
}

NkDtString NkDtString::Concatenate(const NkDtString& a, TCHAR b) {
    static constexpr Origin origin = originOf("operator+(TCHAR)");
    if (!a.IsDefined()) return NkDtString(b);
    return Joined(a.Text().WholeText(), std::string_view(&b, 1), origin);
}

NkDtString NkDtString::Concatenate(LPCTSTR a, const NkDtString& b) {
    static constexpr Origin origin = originOf("operator+(LPCTSTR,NkDtString&)");
    requireText(a, origin);
    if (!b.IsDefined()) return NkDtString(a);
    return Joined(a, b.Text().WholeText(), origin);
}

NkDtString NkDtString::Concatenate(TCHAR a, const NkDtString& b) {
    static constexpr Origin origin = originOf("operator+(TCHAR,NkDtString&)");
    if (!b.IsDefined()) return NkDtString(a);
    return Joined(std::string_view(&a, 1), b.Text().WholeText(), origin);
}

// Concatenation with characters

namespace {

/// The character as an operand: a NUL counts as one here. A view of @p ch.
std::string_view asOperand(const TCHAR& ch) noexcept {
    return {&ch, 1};
}

}  // namespace

NkDtString NkDtChar::Concatenate(const NkDtChar& a, const NkDtChar& b) {
    static constexpr Origin origin = originOf("operator+(NkDtChar&,NkDtChar&)");
    if (!a.IsDefined()) return NkDtString(b);
    if (!b.IsDefined()) return NkDtString(a);
    const TCHAR left = a.Stored();
    const TCHAR right = b.Stored();
    return NkDtString::Joined(asOperand(left), asOperand(right), origin);
}

NkDtString NkDtChar::Concatenate(const NkDtString& a, const NkDtChar& b) {
    return b.IsDefined() ? a + b.Stored() : a;
}

NkDtString NkDtChar::Concatenate(const NkDtChar& a, const NkDtString& b) {
    if (!a.IsDefined()) return b;
    if (!b.IsDefined()) return NkDtString(a);
    return a.Stored() + b;
}

NkDtString NkDtChar::Concatenate(const NkDtChar& a, TCHAR b) {
    static constexpr Origin origin = originOf("operator+(NkDtChar&,TCHAR)");
    if (!a.IsDefined()) return NkDtString(b);
    const TCHAR left = a.Stored();
    return NkDtString::Joined(asOperand(left), asOperand(b), origin);
}

NkDtString NkDtChar::Concatenate(TCHAR a, const NkDtChar& b) {
    static constexpr Origin origin = originOf("operator+(TCHAR,NkDtChar&)");
    if (!b.IsDefined()) return NkDtString(a);
    const TCHAR right = b.Stored();
    return NkDtString::Joined(asOperand(a), asOperand(right), origin);
}

NkDtString NkDtChar::Concatenate(const NkDtChar& a, LPCTSTR b) {
    static constexpr Origin origin = originOf("operator+(NkDtChar&,LPCTSTR)");
    requireText(b, origin);
    if (!a.IsDefined()) return NkDtString(b);
    const TCHAR left = a.Stored();
    return NkDtString::Joined(asOperand(left), b, origin);
}

NkDtString NkDtChar::Concatenate(LPCTSTR a, const NkDtChar& b) {
    static constexpr Origin origin = originOf("operator+(LPCTSTR,NkDtChar&)");
    requireText(a, origin);
    if (!b.IsDefined()) return NkDtString(a);
    const TCHAR right = b.Stored();
    return NkDtString::Joined(a, asOperand(right), origin);
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
    return std::strcmp(a.Text().Text(), b.Text().Text()) == 0;
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
    return os << str.Text().VisibleText();
}
