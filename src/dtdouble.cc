#include "nkdt/NkDtDouble.h"

#include "Conversion.h"
#include "DefaultFormats.h"
#include "Imp/dtdoubli.h"
#include "RealNumberFlow.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"

namespace nkdt {

namespace {

constexpr Origin originOf(const char* operation) {
    return {".\\dtdouble.cc", "NkDtDouble", operation};
}

}  // namespace

template <>
struct ValuePart<NkDtDouble> {
    static constexpr NkDtTyps typ = NkDtTypDouble;
    static constexpr Origin assign = originOf("Assign(NkDtBasis&)");
    static constexpr Origin comparisons[] = {
        originOf("operator==(NkDtDouble&)"), originOf("operator!=(NkDtDouble&)"),
        originOf("operator<(NkDtDouble&)"),  originOf("operator>(NkDtDouble&)"),
        originOf("operator<=(NkDtDouble&)"), originOf("operator>=(NkDtDouble&)")};
    static constexpr Origin wholeComparisons[] = {originOf("operator==(INT)"), originOf("operator!=(INT)"),
                                                  originOf("operator<(INT)"),  originOf("operator>(INT)"),
                                                  originOf("operator<=(INT)"), originOf("operator>=(INT)")};
    static constexpr Origin floatingComparisons[] = {
        originOf("operator==(double)"), originOf("operator!=(double)"), originOf("operator<(double)"),
        originOf("operator>(double)"),  originOf("operator<=(double)"), originOf("operator>=(double)")};
    // In the order of RealForm.
    static constexpr Origin divisions[] = {
        originOf("operator/(NkDtDouble&)"), originOf("operator/(INT)"), originOf("operator/(double)"),
        originOf("operator/(INT,NkDtDouble&)"), originOf("operator/(double,NkDtDouble&)")};
    static constexpr bool alwaysModified = true;

    static double toValue(const PlainNumber& number) {
        return valueOf<double>(number, [](double floating) { return floating; });
    }

    /// There is no remainder.
    static double divide(RealOperation, double a, double b, RealForm form) {
        if (b == 0.0) raise(divisions[static_cast<unsigned char>(form)], NkDtErrDivisionDurchNull);
        return a / b;
    }

    static double computeFirst(RealOperation operation, const PlainNumber& a, const NkDtDouble& b) {
        if (isNeutral(b, operation)) return toValue(a);
        return compute<ValuePart>(operation, toValue(a), static_cast<double>(b), formOf(a, true));
    }

    static NkDtDouble taken(const NkDtDouble& operand, RealOperation) { return operand; }

    static bool related(RealComparison comparison, double a, const PlainNumber& b, const Origin&) {
        return holds(comparison, a, toValue(b));
    }

    using Text = NkDtDouble_Imp::Text;
    static std::string_view text(double number, Text& buffer) {
        return NkDtDouble_Imp::shortText(number, buffer);
    }
};

template class Record<NkDtDouble_Imp>;
template class StoredValue<NkDtDouble>;
template class RealNumber<NkDtDouble>;

}  // namespace nkdt

using namespace nkdt;

namespace {

constexpr CRuntimeClass classNkDtDouble{"NkDtDouble", sizeof(NkDtDouble), 1, &NkDtDouble::CreateObject,
                                        &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtDouble};

double readText(LPCTSTR psz) {
    static constexpr Origin origin = originOf("NkDtDouble(LPCTSTR)");
    requireText(psz, origin);
    return NkDtDouble_Imp::fromString(psz);
}

/// The number of another value, 0.0 when it is undefined.
template <class Value>
double numberOf(const Value& value) {
    return value.IsDefined() ? static_cast<double>(value.GetValue()) : 0.0;
}

}  // namespace

NkDtDouble::NkDtDouble(NkDtWorkingMode eMode) : RealNumber(FALSE, eMode) {}

[[gnu::flatten]] NkDtDouble::NkDtDouble(double d) : RealNumber(TRUE, NkDtWmDefault, d) {}

NkDtDouble::NkDtDouble(INT n) : RealNumber(TRUE, NkDtWmDefault, n) {}

NkDtDouble::NkDtDouble(LPCTSTR psz) : RealNumber(TRUE, NkDtWmDefault, readText(psz)) {}

NkDtDouble::NkDtDouble(const NkDtString& r)
    : RealNumber(r, r.IsDefined() ? NkDtDouble_Imp::fromString(r) : 0.0) {}

NkDtDouble::NkDtDouble(const NkDtLong& r) : RealNumber(r, numberOf(r)) {}

NkDtDouble::NkDtDouble(const NkDtShort& r) : RealNumber(r, numberOf(r)) {}

NkDtDouble::NkDtDouble(const NkDtDecimal& r) : RealNumber(r, numberOf(r)) {}

NkDtDouble::NkDtDouble(const COleCurrency& r)
    : RealNumber(isValid(r), NkDtWmDefault, isValid(r) ? r.GetDouble() : 0.0) {}

[[gnu::flatten]] NkDtDouble::NkDtDouble(const NkDtDouble& r) = default;

[[gnu::flatten]] NkDtDouble::~NkDtDouble() = default;

const CRuntimeClass* NkDtDouble::GetThisClass() noexcept {
    return &classNkDtDouble;
}

CObject* NkDtDouble::CreateObject() {
    return new NkDtDouble;
}

NkDtDouble* NkDtDouble::NewObject() const {
    return new NkDtDouble(*this);
}

// Assignment and access

NkDtDouble& NkDtDouble::operator=(const NkDtDouble& r) {
    CopyFrom(r);
    return *this;
}

NkDtDouble& NkDtDouble::operator=(double d) {
    SetTo(d);
    return *this;
}

NkDtDouble& NkDtDouble::operator=(const COleCurrency& r) {
    if (isValid(r)) {
        SetTo(r.GetDouble());
    } else {
        Clear();
    }
    return *this;
}

double NkDtDouble::GetValue() const {
    static constexpr Origin origin = originOf("GetValue()");
    if (IsMissing()) raise(origin, NkDtErrUndefiniert);
    return Stored();
}

NkDtDouble::operator double() const {
    return Stored();
}

NkDtDouble::operator COleCurrency() const {
    return COleCurrency::FromDouble(Stored());
}

// Conversions

CString NkDtDouble::ConvToOFL(const NkFormat* pFormat) const {
    static constexpr Origin origin = originOf("ConvToOFL(NkFormat*)");
    return convToOFL(*this, pFormat, defaultFormat::doubleNumber, origin,
                     [this](const NkFormat& format) { return format.FormatDouble(Stored()); });
}

void NkDtDouble::SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) {
    static constexpr Origin origin = originOf("SetFromOFL(LPCTSTR,NkFormat*)");
    setFromOFL(
        *this, pszOFL, pFormat, defaultFormat::doubleNumber, origin,
        [](const NkFormat& format, LPCTSTR psz) { return format.ParseDouble(psz); },
        [this](double number) { Store(number); });
}

NkDtString NkDtDouble::ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const {
    describeExtern(*this, rfDefiniert, rusVersion);
    if (!IsDefined()) return NkDtString(*this);
    NkDtDouble_Imp::Text text;
    NkDtDouble_Imp::externText(Stored(), text);
    return NkDtString(text);
}

void NkDtDouble::SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) {
    static constexpr Origin origin = originOf("SetFromExtern(NkDtString*,BOOL,USHORT)");
    setFromExtern(*this, pExternData, fDefiniert, usVersion, origin,
                  [this](const NkDtString& text) { Store(NkDtDouble_Imp::fromString(text)); });
}

void NkDtDouble::SetFromSQL(double d) {
    SetTo(d);
}

NkDtString NkDtDouble::ConvToSQL() const {
    if (!IsDefined()) return NkDtString("NULL");
    NkDtDouble_Imp::Text text;
    NkDtDouble_Imp::shortText(Stored(), text);
    return NkDtString(text);
}

void NkDtDouble::SetFromRecordSet(CRecordset& rs, const double& rField) {
    setFromRecordSet(*this, rs, rField, [this](double field) { Store(field); });
}

void NkDtDouble::ConvToRecordSet(CRecordset& rs, double& rField) const {
    convToRecordSet(*this, rs, rField, [this](double& field) { field = Stored(); });
}
