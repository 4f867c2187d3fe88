#pragma once

/// @file
/// The operations of a whole-number class; the class's source states its part and instantiates them.

#include <charconv>
#include <ostream>
#include <string_view>

#include "NullRule.h"
#include "StoredValueFlow.h"
#include "nkdt/WholeNumber.h"

namespace nkdt {

// The class's part states its `module` and `classText`; the signatures of its six comparisons with another
// value and of those with a number (`comparisons`, `numberComparisons`, in the order of Comparison) and of
// SetFromSQL() (`setFromSql`); `defaultFormat()`; and how a format shows and reads its native type
// (`format()`, `parse()`).

template <class Derived>
inline constexpr Origin originOf(const char* operation) {
    return {ValuePart<Derived>::module, ValuePart<Derived>::classText, operation};
}

template <class Derived>
void WholeNumber<Derived>::RaiseRange() {
    raise(Imp::constructOrigin(), NkDtErrWertebereich);
}

template <class Derived>
auto WholeNumber<Derived>::GetValue() const -> Native {
    static constexpr Origin origin = originOf<Derived>("GetValue()");
    if (this->IsMissing()) raise(origin, NkDtErrUndefiniert);
    return Stored();
}

template <class Derived>
Derived& WholeNumber<Derived>::operator=(INT n) {
    static constexpr Origin origin = originOf<Derived>("operator=(INT)");
    if (!fits<Value>(n)) raise(origin, NkDtErrWertebereich);
    this->SetTo(static_cast<Value>(n));
    return Self();
}

// Arithmetic

template <class Derived>
template <class A, class B>
Derived WholeNumber<Derived>::ComputeAny(const A& a, const B& b, Operation operation) {
    struct Rule {
        Neutral neutral;
        Value (*compute)(LONGLONG, LONGLONG);
    };
    static constexpr Rule rules[] = {{Neutral::none, Imp::add},
                                     {Neutral::none, Imp::subtract},
                                     {Neutral::both, Imp::multiply},
                                     {Neutral::right, Imp::divide}};
    const Rule& rule = rules[static_cast<unsigned char>(operation)];
    switch (decide(OperandState(a), OperandState(b), rule.neutral)) {
        case Outcome::undefined:
            return Derived(NkDtWmDefault);
        case Outcome::takeLeft:
            return Derived(a);
        case Outcome::takeRight:
            return Derived(b);
        case Outcome::compute:
            break;
    }
    return Derived(rule.compute(Number(a), Number(b)));
}

template <class Derived>
Derived WholeNumber<Derived>::Compute(const Derived& a, const Derived& b, Operation operation) {
    return ComputeAny(a, b, operation);
}

template <class Derived>
Derived WholeNumber<Derived>::Compute(const Derived& a, INT b, Operation operation) {
    return ComputeAny(a, b, operation);
}

template <class Derived>
Derived WholeNumber<Derived>::Compute(INT a, const Derived& b, Operation operation) {
    return ComputeAny(a, b, operation);
}

template <class Derived>
Derived& WholeNumber<Derived>::Accumulate(const Derived& r, Operation operation) {
    if (!this->CheckDefinedForArithmetic(*this, r)) {
        Store(0);
        this->SetDefined(FALSE);
        return Self();
    }
    AccumulateNumber(r.Stored(), operation);
    return Self();
}

template <class Derived>
Derived& WholeNumber<Derived>::Accumulate(INT n, Operation operation) {
    if (!this->IsMissing()) AccumulateNumber(n, operation);
    return Self();
}

template <class Derived>
void WholeNumber<Derived>::AccumulateNumber(INT n, Operation operation) {
    if (n != 0) {
        // Computed before anything changes: a result beyond the range leaves the value and its flag alone.
        const Value result = operation == Operation::add ? Imp::add(Stored(), n) : Imp::subtract(Stored(), n);
        Store(result);
    }
    this->SetDefined(TRUE);
}

// Comparison

template <class Derived>
int WholeNumber<Derived>::Order(const Derived& a, const Derived& b, Comparison comparison) {
    if (a.IsMissing() || b.IsMissing()) [[unlikely]] {
        raise(originOf<Derived>(ValuePart<Derived>::comparisons[static_cast<unsigned char>(comparison)]),
              NkDtErrUndefiniert);
    }
    return (a.Stored() > b.Stored()) - (a.Stored() < b.Stored());
}

template <class Derived>
int WholeNumber<Derived>::Order(const Derived& a, LONGLONG b, Comparison comparison) {
    if (a.IsMissing()) [[unlikely]] {
        raise(
            originOf<Derived>(ValuePart<Derived>::numberComparisons[static_cast<unsigned char>(comparison)]),
            NkDtErrUndefiniert);
    }
    return (a.Stored() > b) - (a.Stored() < b);
}

// Conversions

template <class Derived>
CString WholeNumber<Derived>::ConvToOFL(const NkFormat* pFormat) const {
    static constexpr Origin origin = originOf<Derived>("ConvToOFL(NkFormat*)");
    using Part = ValuePart<Derived>;
    return convToOFL(*this, pFormat, Part::defaultFormat(), origin,
                     [this](const NkFormat& format) { return Part::format(format, Stored()); });
}

template <class Derived>
void WholeNumber<Derived>::SetFromOFL(LPCTSTR pszOFL, const NkFormat* pFormat) {
    static constexpr Origin origin = originOf<Derived>("SetFromOFL(LPCTSTR,NkFormat*)");
    using Part = ValuePart<Derived>;
    setFromOFL(*this, pszOFL, pFormat, Part::defaultFormat(), origin, Part::parse,
               [this](Value n) { Store(n); });
}

template <class Derived>
NkDtString WholeNumber<Derived>::ConvToExtern(BOOL& rfDefiniert, USHORT& rusVersion) const {
    describeExtern(*this, rfDefiniert, rusVersion);
    return NkDtString(INT{Stored()});
}

template <class Derived>
void WholeNumber<Derived>::SetFromExtern(const NkDtString* pExternData, BOOL fDefiniert, USHORT usVersion) {
    static constexpr Origin origin = originOf<Derived>("SetFromExtern(NkDtString*,BOOL,USHORT)");
    setFromExtern(*this, pExternData, fDefiniert, usVersion, origin,
                  [this](const NkDtString& text) { Store(Imp::fromString(text)); });
}

template <class Derived>
void WholeNumber<Derived>::SetFromSQL(Native n) {
    static constexpr Origin origin = originOf<Derived>(ValuePart<Derived>::setFromSql);
    if (!fits<Value>(n)) raise(origin, NkDtErrWertebereich);
    this->SetTo(static_cast<Value>(n));
}

template <class Derived>
NkDtString WholeNumber<Derived>::ConvToSQL() const {
    return this->IsDefined() ? NkDtString(INT{Stored()}) : NkDtString("NULL");
}

template <class Derived>
void WholeNumber<Derived>::SetFromRecordSet(CRecordset& rs, const Field& rField) {
    setFromRecordSet(*this, rs, rField,
                     [this](const Field& field) { Store(ValuePart<Derived>::fromField(field)); });
}

template <class Derived>
void WholeNumber<Derived>::ConvToRecordSet(CRecordset& rs, Field& rField) const {
    convToRecordSet(*this, rs, rField, [this](Field& field) { field = Stored(); });
}

template <class Derived>
std::ostream& WholeNumber<Derived>::Write(std::ostream& os, const Derived& n) {
    if (!n.IsDefined()) return os << std::string_view();
    char digits[std::numeric_limits<Value>::digits10 + 3];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, n.Stored());
    return os << std::string_view(digits, static_cast<std::size_t>(end.ptr - digits));
}

}  // namespace nkdt
