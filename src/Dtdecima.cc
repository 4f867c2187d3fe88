#include "nkdt/NkDtDecimal.h"

#include <cstdint>

#include "DecimalPart.h"
#include "nkdt/NkDtDouble.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"

namespace nkdt {

template class Record<NkDtDecimal_Imp>;
template class StoredValue<NkDtDecimal>;
template class RealNumber<NkDtDecimal>;  // beside the records, so that computing is compiled into one
                                         // function

}  // namespace nkdt

using namespace nkdt;

namespace {

constexpr CRuntimeClass classNkDtDecimal{"NkDtDecimal", sizeof(NkDtDecimal), 1, &NkDtDecimal::CreateObject,
                                         &NkDtBasis::GetThisClass};
const CClassRegistration registration{classNkDtDecimal};

/// The number of another value class, 0 when it is undefined.
template <class Value>
Decimal96 numberOf(const Value& value) {
    if (!value.IsDefined()) return Decimal96();
    return ValuePart<NkDtDecimal>::toValue(PlainNumber(value.GetValue()));
}

/// Whether the integer part of the number is another one. A scale that cannot be multiplied out makes it one
/// beyond every whole number.
bool hasOtherIntegerPart(const Decimal96& number, const Decimal96& whole) {
    std::int64_t part = 0;
    if (number.scale() < 0 && !number.tryToInt64(part)) return true;
    return number.truncate(0) != whole;
}

}  // namespace

NkDtDecimal::NkDtDecimal(NkDtWorkingMode eMode) : RealNumber(FALSE, eMode) {}

[[gnu::flatten]] NkDtDecimal::NkDtDecimal(INT n) : RealNumber(TRUE, NkDtWmDefault, Decimal96(n)) {}

NkDtDecimal::NkDtDecimal(const PlainNumber& number)
    : RealNumber(TRUE, NkDtWmDefault, ValuePart<NkDtDecimal>::toValue(number)) {}

NkDtDecimal::NkDtDecimal(double dValue) : NkDtDecimal(PlainNumber(dValue)) {}

NkDtDecimal::NkDtDecimal(LPCTSTR psz) : RealNumber(TRUE, NkDtWmDefault, NkDtDecimal_Imp::fromText(psz)) {}

NkDtDecimal::NkDtDecimal(const NkDtString& r)
    : RealNumber(r, r.IsDefined() ? NkDtDecimal_Imp::fromText(r) : Decimal96()) {}

NkDtDecimal::NkDtDecimal(const NkDtLong& r) : RealNumber(r, numberOf(r)) {}

NkDtDecimal::NkDtDecimal(const NkDtShort& r) : RealNumber(r, numberOf(r)) {}

NkDtDecimal::NkDtDecimal(const NkDtDouble& r) : RealNumber(r, numberOf(r)) {}

NkDtDecimal::NkDtDecimal(const COleCurrency& r)
    : RealNumber(isValid(r), NkDtWmDefault, isValid(r) ? NkDtDecimal_Imp::fromCurrency(r) : Decimal96()) {}

[[gnu::flatten]] NkDtDecimal::NkDtDecimal(Decimal96 number) : RealNumber(TRUE, NkDtWmDefault, number) {}

[[gnu::flatten]] NkDtDecimal::NkDtDecimal(const NkDtDecimal& r) = default;

[[gnu::flatten]] NkDtDecimal::~NkDtDecimal() = default;

const CRuntimeClass* NkDtDecimal::GetThisClass() noexcept {
    return &classNkDtDecimal;
}

CObject* NkDtDecimal::CreateObject() {
    return new NkDtDecimal;
}

NkDtDecimal* NkDtDecimal::NewObject() const {
    return new NkDtDecimal(*this);
}

// Assignment

NkDtDecimal& NkDtDecimal::operator=(const NkDtDecimal& r) {
    CopyFrom(r);
    return *this;
}

NkDtDecimal& NkDtDecimal::AssignWhole(const PlainNumber& number) {
    const Decimal96 whole = ValuePart<NkDtDecimal>::toValue(number);
    if (!IsModified() && hasOtherIntegerPart(Stored(), whole)) SetModified(TRUE);
    Replace(whole);
    SetDefined(TRUE);
    return *this;
}

NkDtDecimal& NkDtDecimal::operator=(double d) {
    Take(ValuePart<NkDtDecimal>::toValue(PlainNumber(d)));
    SetDefined(TRUE);
    return *this;
}

NkDtDecimal& NkDtDecimal::operator=(const COleCurrency& r) {
    if (!isValid(r)) {
        Clear();
        return *this;
    }
    Take(NkDtDecimal_Imp::fromCurrency(r));
    SetDefined(TRUE);
    return *this;
}
