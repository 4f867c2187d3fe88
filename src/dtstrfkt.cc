#include <cstring>
#include <optional>
#include <string_view>

#include "Conversion.h"
#include "DefaultFormats.h"
#include "Imp/dtstrini.h"
#include "Raise.h"
#include "RecordMemory.h"
#include "SqlText.h"
#include "nkdt/NkDtString.h"
#include "nkdt/NkDtUtil.h"

using namespace nkdt;

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\dtstrfkt.cc", "NkDtString", operation};
}

constexpr Origin originConvToSQL = originOf("ConvToSQL(UINT)const");
constexpr Origin originConvertCodePage = originOf("ConvertCodePage(NkDtCodepageWandlung)");

void convert(NkDtString_Imp& text, NkDtCodepageWandlung eWandlung) {
    if (!NkDtConvertCodePageFkt(text.Buffer(), eWandlung)) raise(originConvertCodePage, NkDtErrCodepage);
}

}  // namespace

// Access

LPCTSTR NkDtString::GetValue() const {
    static constexpr Origin origin = originOf("GetValue()");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    return Text().Text();
}

LPTSTR NkDtString::GetValue(LPTSTR pszBuffer, INT nSize) const {
    static constexpr Origin origin = originOf("GetValue(LPTSTR,INT)");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    if (pszBuffer == nullptr) raise(origin, NkDtErrInitialwert);
    if (nSize <= GetLength()) raise(origin, NkDtErrPuffer);
    std::memcpy(pszBuffer, Text().Text(), static_cast<std::size_t>(GetLength()) + 1);
    return pszBuffer;
}

NkDtString NkDtString::GetnValue(INT nPos, INT nCount) const {
    static constexpr Origin origin = originOf("GetnValue(INT,INT)");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    if (IsNull()) return wrapped(origin, [] { return NkDtString(""); });
    if (nPos < 0 || nCount < 0 || nPos > GetLength() || nCount > GetLength() - nPos)
        raise(origin, NkDtErrStringindex);
    return wrapped(origin, [&] { return NkDtString(Text().Text() + nPos, nCount, NkDtStrLenAuto); });
}

INT NkDtString::GetLength() const {
    return Text().Length();
}

INT NkDtString::GetAllocLength() const {
    return Text().AllocLength();
}

void NkDtString::SetAt(INT nIndex, TCHAR ch) {
    static constexpr Origin origin = originOf("SetAt(INT,TCHAR)");
    if (nIndex < 0 || nIndex >= GetLength()) raise(origin, NkDtErrStringindex);
    if (ch == '\0') raise(origin, NkDtErrInitialwert);
    if (Text().Text()[nIndex] == ch) return;
    Text().SetAt(nIndex, ch);
    SetModified(TRUE);
}

// The base contract

void NkDtString::Clear() {
    NkDtBasis::Clear();
    if (GetLength() != 0) SetModified(TRUE);
    Text().StrReset();
}

void NkDtString::Assign(const NkDtBasis& r) {
    static constexpr Origin origin = originOf("Assign(NkDtBasis&");
    if (!r.IsKindOf(GetThisClass())) raise(origin, NkDtErrBasistypen);
    *this = static_cast<const NkDtString&>(r);
}

// Conversions

CString NkDtString::ConvToOFL(const NkFormat* pFormat) const {
    static constexpr Origin origin = originOf("ConvToOFL(NkFormat*)");
    return convToOFL(*this, pFormat, defaultFormat::text, origin,
                     [this](const NkFormat& format) { return format.FormatText(Text().VisibleText()); });
}

void NkDtString::SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) {
    static constexpr Origin origin = originOf("SetFromOFL(LPCTSTR,NkFormat*)");
    setFromOFL(
        *this, pszOFL, pFormat, defaultFormat::text, origin,
        [](const NkFormat& format, LPCTSTR psz) { return format.ParseText(psz); },
        [this](const CString& text) { *this = text.GetString(); });
}

NkDtString NkDtString::ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const {
    describeExtern(*this, rfDefiniert, rusVersion);
    return *this;
}

void NkDtString::SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) {
    static constexpr Origin origin = originOf("SetFromExtern(NkDtString*,BOOL,USHORT)");
    setFromExtern(*this, pExternData, fDefiniert, usVersion, origin,
                  [this](const NkDtString& text) { *this = text; });
}

void NkDtString::SetFromRecordSet(CRecordset& rs, const CString& rField) {
    setFromRecordSet(*this, rs, rField, [this](const CString& field) {
        if (std::strcmp(field, Text().Text()) != 0) TakeField(field);
    });
}

void NkDtString::ConvToRecordSet(CRecordset& rs, CString& rField) const {
    convToRecordSet(*this, rs, rField,
                    [this](CString& field) { AssignRecordsetMemberCString(field, Text().Text()); });
}

void NkDtString::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        NkDtBasis::Serialize(ar);
        ar << CString(IsDefined() ? Text().VisibleText() : std::string_view());
        return;
    }
    load(
        *this, [&] { NkDtBasis::Serialize(ar); },
        [&] {
            CString text;
            ar >> text;
            if (IsDefined()) {
                Text().ReserveBesides(static_cast<INT>(std::strlen(text)));
                *this = text.GetString();
            } else {
                Clear();
            }
        });
}

void NkDtString::SetFromSQL(LPCTSTR pszText, INT nLen, UINT uCodePage) {
    static constexpr Origin origin = originOf("SetFromSQL(LPCTSTR,INT,UINT)");
    requireText(pszText, origin);
    if (nLen < 1 || nLen > NkDtString_Imp::maxLength ||
        std::memchr(pszText, '\0', static_cast<std::size_t>(nLen)) != nullptr) {
        raise(origin, NkDtErrInitiallaenge);
    }
    wrapped(origin, [&] {
        // The final text alone decides on the modified flag, so the column is converted beside the old text.
        NkDtString_Imp column(pszText, nLen, NkDtStrLenAuto);
        if (const auto page = directionsOf(uCodePage, PageOrder::oemBefore437)) convert(column, page->toAnsi);
        Text().ReserveBesides(nLen);
        const bool changed = !column.Equals(Text());
        Text().Write(0, column.Whole());
        if (changed) SetModified(TRUE);
        ValueAccess::state(*this).defined = TRUE;
    });
}

NkDtString NkDtString::ConvToSQL(UINT uCodePage) const {
    return wrapped(originConvToSQL, [&] {
        const std::optional<PageDirections> page = directionsOf(uCodePage, PageOrder::oemBefore437);
        if (!IsDefined()) {
            NkDtString null("NULL");
            if (page) convert(null.Text(), page->fromAnsi);
            return null;
        }
        if (!page) return Quoted(Text().VisibleText());
        // Converted before it is quoted: an apostrophe that the conversion makes is doubled like any other.
        NkDtString_Imp converted(Text().Text(), NkDtStrLenAuto, NkDtStrLenAuto);
        convert(converted, page->fromAnsi);
        return Quoted(converted.VisibleText());
    });
}

NkDtString NkDtString::Quoted(std::string_view text) {
    const std::size_t length = literalLength(text);
    if (length > static_cast<std::size_t>(NkDtString_Imp::maxLength))
        raise(originConvToSQL, NkDtErrWertebereich);
    NkDtString literal("", 0, static_cast<INT>(length));
    writeLiteral(text, literal.Text().Buffer());
    literal.Text().SetLength(static_cast<INT>(length));
    return literal;
}

void NkDtString::ConvertCodePage(NkDtCodepageWandlung eWandlung) {
    if (!IsDefined()) return;
    NkDtString_Imp converted(Text());
    convert(converted, eWandlung);
    if (converted.Equals(Text())) return;
    Text().Write(0, converted.Whole());
    SetModified(TRUE);
}
