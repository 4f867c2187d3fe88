#include "nkdt/NkDtBool.h"

#include <cstring>

#include "DefaultFormats.h"
#include "Imp/dtbooli.h"
#include "PlainValueFlow.h"

namespace nkdt {

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\dtbool.cc", "NkDtBool", operation};
}

}  // namespace

template <>
struct ValuePart<NkDtBool> {
    static constexpr NkDtTyps typ = NkDtTypBool;
    static constexpr Origin assign = originOf("VOID  NkDtBool :: Assign ( const NkDtBasis & krCopyObj )");
    static constexpr Origin comparisons[] = {
        originOf("BOOL  NkDtBool :: operator== ( const NkDtBool & krCmpObj ) const"),
        originOf("BOOL  NkDtBool :: operator!= ( const NkDtBool & krCmpObj ) const")};
    static constexpr Origin plainComparisons[] = {
        originOf("BOOL  NkDtBool :: operator== ( BOOL fCmp ) const"),
        originOf("BOOL  NkDtBool :: operator!= ( BOOL fCmp ) const")};

    static LPCTSTR text(BOOL f) { return NkDtBool_Imp::word(f); }
};

template class Record<NkDtBool_Imp>;
template class StoredValue<NkDtBool>;
template class PlainValue<NkDtBool>;

}  // namespace nkdt

using namespace nkdt;

namespace {

constexpr CRuntimeClass classNkDtBool{"NkDtBool", sizeof(NkDtBool), 1, &NkDtBool::CreateObject,
                                      &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtBool};

constexpr LPCTSTR externTrue = "J";
constexpr LPCTSTR externFalse = "N";

BOOL readText(LPCTSTR psz) {
    static constexpr Origin origin = originOf("NkDtBool :: NkDtBool ( LPCTSTR const pszInit) ");
    requireText(psz, origin);
    return NkDtBool_Imp::fromString(psz);
}

/// Reading a missing value raises error 2.
void requireValue(const NkDtBool& value, const Origin& origin) {
    if (value.IsMissing()) raise(origin, NkDtErrUndefiniert);
}

}  // namespace

NkDtBool::NkDtBool(NkDtWorkingMode eMode) : PlainValue(FALSE, eMode) {}

[[gnu::flatten]] NkDtBool::NkDtBool(BOOL fInit) : PlainValue(TRUE, NkDtWmDefault, fInit) {}

NkDtBool::NkDtBool(LPCTSTR pszInit) : PlainValue(TRUE, NkDtWmDefault, readText(pszInit)) {}

NkDtBool::NkDtBool(const NkDtString& krStrInit)
    : PlainValue(krStrInit, krStrInit.IsDefined() ? NkDtBool_Imp::fromString(krStrInit) : FALSE) {}

[[gnu::flatten]] NkDtBool::NkDtBool(const NkDtBool& r) = default;

[[gnu::flatten]] NkDtBool::~NkDtBool() = default;

const CRuntimeClass* NkDtBool::GetThisClass() noexcept {
    return &classNkDtBool;
}

CObject* NkDtBool::CreateObject() {
    return new NkDtBool;
}

NkDtBool* NkDtBool::NewObject() const {
    return new NkDtBool(*this);
}

NkDtBool& NkDtBool::operator=(const NkDtBool& r) {
    CopyFrom(r);
    return *this;
}

NkDtBool& NkDtBool::operator=(BOOL f) {
    SetTo(f);
    return *this;
}

void NkDtBool::Set(BOOL f) {
    SetTo(f);
}

BOOL NkDtBool::IsTrue() const {
    static constexpr Origin origin = originOf("BOOL  NkDtBool :: IsTrue ( VOID ) const");
    requireValue(*this, origin);
    return Stored();
}

BOOL NkDtBool::IsFalse() const {
    static constexpr Origin origin = originOf("BOOL  NkDtBool :: IsFalse ( VOID ) const");
    requireValue(*this, origin);
    return !IsNull() && Stored() == FALSE;
}

BOOL NkDtBool::GetValue() const {
    static constexpr Origin origin = originOf("BOOL  NkDtBool :: GetValue ( VOID ) const");
    requireValue(*this, origin);
    return Stored();
}

// Conversions

CString NkDtBool::ConvToOFL(const NkFormat* pFormat) const {
    static constexpr Origin origin = originOf("ConvToOFL(NkFormat*)");
    return convToOFL(*this, pFormat, defaultFormat::truth, origin,
                     [this](const NkFormat& format) { return format.FormatBool(Stored()); });
}

void NkDtBool::SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) {
    static constexpr Origin origin = originOf("SetFromOFL(LPCTSTR,NkFormat*)");
    setFromOFL(
        *this, pszOFL, pFormat, defaultFormat::truth, origin,
        [](const NkFormat& format, LPCTSTR psz) { return format.ParseBool(psz); },
        [this](BOOL f) { Store(f); });
}

NkDtString NkDtBool::ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const {
    describeExtern(*this, rfDefiniert, rusVersion);
    if (!IsDefined()) return NkDtString(*this);
    return NkDtString(Stored() != FALSE ? externTrue : externFalse);
}

void NkDtBool::SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) {
    static constexpr Origin origin = originOf(
        "void NkDtBool::SetFromExtern ( const DtString * pExternData, BOOL fDefiniert,USHORT usVersion)");
    const bool hasText = fDefiniert == TRUE && pExternData != nullptr;
    // Refused before anything is marked, unlike in the other classes.
    if (usVersion == NkDtExternVersion && hasText && !pExternData->IsDefined())
        raise(origin, NkDtErrDefiniertheit);
    setFromExtern(*this, pExternData, fDefiniert, usVersion, origin, [this](const NkDtString& text) {
        if (std::strcmp(text, externTrue) == 0) {
            Store(TRUE);
        } else if (std::strcmp(text, externFalse) == 0) {
            Store(FALSE);
        }
    });
}

void NkDtBool::SetFromSQL(TCHAR chSQL) {
    static constexpr Origin origin = originOf("VOID  NkDtBool::SetFromSQL ( TCHAR chSQL )");
    if (chSQL != '0' && chSQL != '1') raise(origin, NkDtErrInitialwert);
    SetTo(chSQL == '1' ? TRUE : FALSE);
}

NkDtString NkDtBool::ConvToSQL() const {
    if (!IsDefined()) return NkDtString("NULL");
    return NkDtString(Stored() != FALSE ? "'1'" : "'0'");
}

void NkDtBool::SetFromRecordSet(CRecordset& rs, const BOOL& rField) {
    setFromRecordSet(*this, rs, rField, [this](BOOL field) { Store(field); });
}

void NkDtBool::ConvToRecordSet(CRecordset& rs, BOOL& rField) const {
    convToRecordSet(*this, rs, rField, [this](BOOL& field) { field = Stored(); });
}
