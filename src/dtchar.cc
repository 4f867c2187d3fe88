#include "nkdt/NkDtChar.h"

#include "DefaultFormats.h"
#include "Imp/dtchari.h"
#include "LetterCase.h"
#include "PlainValueFlow.h"
#include "SqlText.h"
#include "nkdt/NkDtUtil.h"

namespace nkdt {

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\dtchar.cc", "NkDtChar", operation};
}

}  // namespace

template <>
struct ValuePart<NkDtChar> {
    static constexpr NkDtTyps typ = NkDtTypChar;
    static constexpr Origin assign = originOf("Assign(NkDtBasis&)");
    static constexpr Origin comparisons[] = {originOf("operator==(NkDtChar&)"),
                                             originOf("operator!=(NkDtChar&)")};
    static constexpr Origin plainComparisons[] = {originOf("operator==(TCHAR)"),
                                                  originOf("operator!=(TCHAR)")};

    static std::string_view text(const TCHAR& ch) { return NkDtChar_Imp::text(ch); }
};

template class Record<NkDtChar_Imp>;
template class StoredValue<NkDtChar>;
template class PlainValue<NkDtChar>;

}  // namespace nkdt

using namespace nkdt;

namespace {

constexpr CRuntimeClass classNkDtChar{"NkDtChar", sizeof(NkDtChar), 1, &NkDtChar::CreateObject,
                                      &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtChar};

TCHAR firstOf(LPCTSTR psz) {
    static constexpr Origin origin = originOf("NkDtChar(LPCTSTR)");
    requireText(psz, origin);
    return *psz;
}

TCHAR converted(TCHAR ch, NkDtCodepageWandlung eWandlung, const Origin& origin) {
    TCHAR text[] = {ch, '\0'};
    if (!NkDtConvertCodePageFkt(text, eWandlung)) raise(origin, NkDtErrCodepage);
    return text[0];
}

}  // namespace

NkDtChar::NkDtChar(NkDtWorkingMode eMode) : PlainValue(FALSE, eMode) {}

[[gnu::flatten]] NkDtChar::NkDtChar(CHAR ch) : PlainValue(TRUE, NkDtWmDefault, ch) {}

NkDtChar::NkDtChar(LPCTSTR psz) : PlainValue(TRUE, NkDtWmDefault, firstOf(psz)) {}

NkDtChar::NkDtChar(const NkDtString& r)
    : PlainValue(r, r.IsDefined() ? *static_cast<LPCTSTR>(r) : TCHAR{'\0'}) {}

[[gnu::flatten]] NkDtChar::NkDtChar(const NkDtChar& r) = default;

[[gnu::flatten]] NkDtChar::~NkDtChar() = default;

const CRuntimeClass* NkDtChar::GetThisClass() noexcept {
    return &classNkDtChar;
}

CObject* NkDtChar::CreateObject() {
    return new NkDtChar;
}

NkDtChar* NkDtChar::NewObject() const {
    return new NkDtChar(*this);
}

NkDtChar& NkDtChar::operator=(const NkDtChar& r) {
    CopyFrom(r);
    return *this;
}

NkDtChar& NkDtChar::operator=(TCHAR ch) {
    SetTo(ch);
    return *this;
}

TCHAR NkDtChar::GetValue() const {
    static constexpr Origin origin = originOf("GetValue()");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    return Stored();
}

void NkDtChar::ToUpper() {
    Store(toUpper(Stored()));
}

void NkDtChar::ToLower() {
    Store(toLower(Stored()));
}

// Conversions

CString NkDtChar::ConvToOFL(const NkFormat* pFormat) const {
    static constexpr Origin origin = originOf("ConvToOFL(NkFormat*)");
    return convToOFL(*this, pFormat, defaultFormat::character, origin,
                     [this](const NkFormat& format) { return format.FormatChar(Stored()); });
}

void NkDtChar::SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) {
    static constexpr Origin origin = originOf("SetFromOFL(LPCTSTR,NkFormat*)");
    setFromOFL(
        *this, pszOFL, pFormat, defaultFormat::character, origin,
        [](const NkFormat& format, LPCTSTR psz) { return format.ParseChar(psz); },
        [this](TCHAR ch) { Store(ch); });
}

NkDtString NkDtChar::ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const {
    describeExtern(*this, rfDefiniert, rusVersion);
    return NkDtString(*this);
}

void NkDtChar::SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) {
    static constexpr Origin origin = originOf("SetFromExtern(NkDtString*,BOOL,USHORT)");
    setFromExtern(*this, pExternData, fDefiniert, usVersion, origin,
                  [this](const NkDtString& text) { Store(*static_cast<LPCTSTR>(text)); });
}

void NkDtChar::SetFromSQL(CHAR ch, UINT uCodePage) {
    static constexpr Origin origin = originOf("SetFromSQL(CHAR,UINT)");
    const auto page = directionsOf(uCodePage, PageOrder::oemAfter437);
    SetTo(page ? converted(ch, page->toAnsi, origin) : ch);
}

NkDtString NkDtChar::ConvToSQL(UINT uCodePage) const {
    static constexpr Origin origin = originOf("ConvToSQL(UINT)");
    if (!IsDefined()) return NkDtString("NULL");
    // Converted before it is quoted: an apostrophe that the conversion makes is doubled like any other.
    const auto page = directionsOf(uCodePage, PageOrder::oemBefore437);
    const TCHAR ch = page ? converted(Stored(), page->fromAnsi, origin) : Stored();
    TCHAR literal[5];
    *writeLiteral(NkDtChar_Imp::text(ch), literal) = '\0';
    return NkDtString(literal);
}

void NkDtChar::SetFromRecordSet(CRecordset& rs, const CString& rField) {
    setFromRecordSet(*this, rs, rField, [this](const CString& field) { Store(*field.GetString()); });
}

void NkDtChar::ConvToRecordSet(CRecordset& rs, CString& rField) const {
    convToRecordSet(*this, rs, rField, [this](CString& field) {
        const TCHAR ch = Stored();
        field.Assign(NkDtChar_Imp::text(ch));
    });
}
