#include <string_view>

#include "Conversion.h"
#include "DecimalPart.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtUtil.h"

using namespace nkdt;

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\Dtdecfkt.cc", "NkDtDecimal", operation};
}

NkDtString textValue(std::string_view text) {
    return NkDtString(text.data(), static_cast<INT>(text.size()));
}

}  // namespace

// Access

double NkDtDecimal::GetValue() const {
    static constexpr Origin origin = originOf("GetValue()");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    return wrapped(origin, [this] { return static_cast<double>(*this); });
}

NkDtDecimal::operator double() const {
    const Decimal96 number = Stored();
    // A negative scale is multiplied out first, which fails where the number is too large for a decimal.
    return (number.scale() < 0 ? number + 0 : number).toDouble();
}

NkDtDecimal::operator COleCurrency() const {
    return NkDtDecimal_Imp::toCurrency(Stored());
}

INT NkDtDecimal::GetPrecision() const {
    static constexpr Origin origin = originOf("GetPrecision()");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    return Stored().scale();
}

BOOL NkDtDecimal::IsDecimal0() const {
    return Stored() == 0;
}

LPTSTR NkDtDecimal::DecimalToAscii(LPTSTR pszBuffer) const {
    static constexpr Origin origin = originOf("DecimalToAscii(LPCTSTR)");
    requireText(pszBuffer, origin);
    NkDtDecimal_Imp::Text text;
    const std::string_view plain = NkDtDecimal_Imp::plainText(Stored(), text);
    plain.copy(pszBuffer, plain.size());
    pszBuffer[plain.size()] = '\0';
    return pszBuffer;
}

void NkDtDecimal::Clear() {
    if (ValuePart<NkDtDecimal>::differ(Stored(), Decimal96())) SetModified(TRUE);
    Replace(Decimal96());
    StoredValue::Clear();
}

// Records

void NkDtDecimal::SetFromBTR(const DEC& rDec, BOOL fDefiniert) {
    if (fDefiniert == FALSE) {
        Clear();
        return;
    }
    Take(NkDtDecimal_Imp::fromRecord(rDec));
    SetDefined(TRUE);
}

DEC NkDtDecimal::ConvToBTR(BOOL& rfDefiniert) const {
    rfDefiniert = IsDefined();
    return NkDtDecimal_Imp::toRecord(Stored());
}

BOOL NkDtDecimal::CompareDec(const DEC& rDec) const {
    return NkDtDecimal_Imp::fromRecord(rDec) == Stored();
}

// Conversions

CString NkDtDecimal::ConvToOFL(const NkFormat* pFormat) const {
    static constexpr Origin origin = originOf("ConvToOFL(NkFormat*)");
    if (!IsDefined()) return CString();
    return wrapped(origin, [&] {
        NkDtDecimal_Imp::Text text;
        const std::string_view plain = NkDtDecimal_Imp::sqlText(Stored(), text);
        const NkFormat* const format = pFormat != nullptr ? pFormat : GetFormat();
        return format != nullptr ? format->FormatDecimalText(plain) : CString(plain);
    });
}

void NkDtDecimal::SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) {
    static constexpr Origin origin = originOf("SetFromOFL(LPCTSTR,NkFormat*)");
    if (pszOFL == nullptr || *pszOFL == '\0') {
        Clear();
        return;
    }
    wrapped(origin, [&] {
        const NkFormat* const format = pFormat != nullptr ? pFormat : GetFormat();
        Take(format != nullptr ? NkDtDecimal_Imp::fromPlainText(format->ParseDecimalText(pszOFL))
                               : NkDtDecimal_Imp::fromPlainText(pszOFL));
        SetDefined(TRUE);
    });
}

NkDtString NkDtDecimal::ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const {
    describeExtern(*this, rfDefiniert, rusVersion);
    if (!IsDefined()) return NkDtString(*this);
    NkDtDecimal_Imp::ExternText text;
    return textValue(NkDtDecimal_Imp::externText(Stored(), text));
}

void NkDtDecimal::SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) {
    static constexpr Origin origin = originOf("SetFromExtern(NkDtString*,BOOL,USHORT)");
    setFromExtern(*this, pExternData, fDefiniert, usVersion, origin,
                  [this](const NkDtString& text) { Take(NkDtDecimal_Imp::fromExtern(text)); });
}

void NkDtDecimal::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        // The text first: what cannot be written leaves no half record behind.
        BOOL fDefined = FALSE;
        USHORT usVersion = 0;
        const CString text(ConvToExtern(fDefined, usVersion));
        StoredValue::Serialize(ar);
        ar << text;
        return;
    }
    load(
        *this, [&] { StoredValue::Serialize(ar); },
        [&] {
            CString text;
            ar >> text;
            const NkDtString external(text);
            SetFromExtern(&external, IsDefined(), NkDtExternVersion);
        });
}

void NkDtDecimal::SetFromSQL(LPCTSTR psz) {
    Take(NkDtDecimal_Imp::fromText(psz));
    SetDefined(TRUE);
}

NkDtString NkDtDecimal::ConvToSQL() const {
    if (!IsDefined()) return NkDtString("NULL");
    NkDtDecimal_Imp::Text text;
    return textValue(NkDtDecimal_Imp::sqlText(Stored(), text));
}

void NkDtDecimal::SetFromRecordSet(CRecordset& rs, const CString& rField) {
    setFromRecordSet(*this, rs, rField,
                     [this](const CString& field) { Take(NkDtDecimal_Imp::fromFieldText(field)); });
}

void NkDtDecimal::ConvToRecordSet(CRecordset& rs, CString& rField) const {
    convToRecordSet(*this, rs, rField, [this](CString& field) {
        NkDtDecimal_Imp::Text text;
        NkDtDecimal_Imp::fieldText(Stored(), text);
        AssignRecordsetMemberCString(field, text);
    });
}

void NkDtDecimal::Take(const Decimal96& number) {
    if (!IsModified() && ValuePart<NkDtDecimal>::differ(number, Stored())) SetModified(TRUE);
    Replace(number);
}
