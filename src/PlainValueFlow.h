#pragma once

/// @file
/// The operations of a class that holds one plain value; the class's source states its part and instantiates
/// them.

#include <ostream>
#include <string_view>

#include "Conversion.h"
#include "Raise.h"
#include "ValueRecords.h"
#include "nkdt/PlainValue.h"

namespace nkdt {

/// What a class states beside its record: `typ`; the origins of its errors, `assign` and those of its
/// comparisons with another value and with a plain one (`comparisons`, `plainComparisons`, equality first);
/// and the text of a value (`text()`).
template <class Derived>
struct PlainValuePart;

template <class Derived>
PlainValue<Derived>::PlainValue(BOOL fDefined, NkDtWorkingMode eMode, Value value)
    : PlainValue(newRecords<Imp>(newState(fDefined, eMode), value)) {}

template <class Derived>
PlainValue<Derived>::PlainValue(const NkDtBasis& r, Value value)
    : PlainValue(newRecords<Imp>(ValueAccess::state(r), value)) {}

template <class Derived>
PlainValue<Derived>::PlainValue(const PlainValue& r)
    : PlainValue(newRecords<Imp>(ValueAccess::state(r), *r.m_imp)) {}

template <class Derived>
PlainValue<Derived>::PlainValue(const NewRecords<Imp>& records) noexcept
    : NkDtBasis(records.state), m_imp(records.imp) {}

template <class Derived>
PlainValue<Derived>::~PlainValue() {
    endRecords(*this, m_imp);
}

template <class Derived>
auto PlainValue<Derived>::Stored() const -> Value {
    return m_imp->value;
}

template <class Derived>
void PlainValue<Derived>::Store(Value value) {
    if (m_imp->value == value) return;
    SetModified(TRUE);
    m_imp->value = value;
}

template <class Derived>
void PlainValue<Derived>::SetTo(Value value) {
    Store(value);
    SetDefined(TRUE);
}

template <class Derived>
void PlainValue<Derived>::CopyFrom(const PlainValue& r) {
    Store(r.Stored());
    NkDtBasis::operator=(r);
}

template <class Derived>
bool PlainValue<Derived>::Equal(const Derived& a, const Derived& b, Comparison comparison) {
    if (a.IsMissing() || b.IsMissing()) [[unlikely]] {
        raise(PlainValuePart<Derived>::comparisons[static_cast<unsigned char>(comparison)],
              NkDtErrUndefiniert);
    }
    return a.Stored() == b.Stored();
}

template <class Derived>
bool PlainValue<Derived>::Equal(const Derived& a, Value b, Comparison comparison) {
    if (a.IsMissing()) [[unlikely]] {
        raise(PlainValuePart<Derived>::plainComparisons[static_cast<unsigned char>(comparison)],
              NkDtErrUndefiniert);
    }
    return a.Stored() == b;
}

template <class Derived>
std::ostream& PlainValue<Derived>::Write(std::ostream& os, const Derived& value) {
    if (!value.IsDefined()) return os << std::string_view();
    const Value stored = value.Stored();
    return os << PlainValuePart<Derived>::text(stored);
}

template <class Derived>
void PlainValue<Derived>::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        NkDtBasis::Serialize(ar);
        ar << Stored();
        return;
    }
    load(
        *this, [&] { NkDtBasis::Serialize(ar); },
        [&] {
            Value value{};
            ar >> value;
            Store(value);
        });
}

template <class Derived>
void PlainValue<Derived>::Clear() {
    Store(Value{});
    NkDtBasis::Clear();
}

template <class Derived>
void PlainValue<Derived>::Assign(const NkDtBasis& r) {
    if (!r.IsKindOf(Derived::GetThisClass())) raise(PlainValuePart<Derived>::assign, NkDtErrBasistypen);
    Self() = static_cast<const Derived&>(r);
}

template <class Derived>
NkDtTyps PlainValue<Derived>::GetDtTyp() const {
    return PlainValuePart<Derived>::typ;
}

}  // namespace nkdt
