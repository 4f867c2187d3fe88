#pragma once

/// @file
/// The operations of a stored value; the class's source states its part and instantiates them.

#include <type_traits>

#include "Conversion.h"
#include "Raise.h"
#include "ValueRecords.h"
#include "nkdt/StoredValue.h"

namespace nkdt {

/// What a class states beside its record: `typ`, the origin of the error of `assign`, and what its family
/// asks for. A class that keeps its value when an equal one is stored states `keepsEqual`, a class whose
/// values cannot all be compared `differ()` of two of them.
template <class Derived>
struct ValuePart;

template <class Derived>
StoredValue<Derived>::StoredValue(BOOL fDefined, NkDtWorkingMode eMode, Value value)
    : StoredValue(newRecords<Imp>(newState(fDefined, eMode), value)) {}

template <class Derived>
StoredValue<Derived>::StoredValue(const NkDtBasis& r, Value value)
    : StoredValue(newRecords<Imp>(ValueAccess::state(r), value)) {}

template <class Derived>
StoredValue<Derived>::StoredValue(const StoredValue& r)
    : StoredValue(newRecords<Imp>(ValueAccess::state(r), *r.m_imp)) {}

template <class Derived>
StoredValue<Derived>::StoredValue(const NewRecords<Imp>& records) noexcept
    : NkDtBasis(records.state), m_imp(records.imp) {}

template <class Derived>
StoredValue<Derived>::~StoredValue() {
    endRecords(*this, m_imp);
}

template <class Derived>
auto StoredValue<Derived>::Stored() const -> const Value& {
    return m_imp->value;
}

template <class Derived>
auto StoredValue<Derived>::InPlace() -> Value& {
    return m_imp->value;
}

/// Whether storing one value in place of the other modifies.
template <class Derived, class Value>
bool differ(const Value& a, const Value& b) {
    if constexpr (requires { ValuePart<Derived>::differ(a, b); }) {
        return ValuePart<Derived>::differ(a, b);
    } else {
        return !(a == b);
    }
}

template <class Derived>
constexpr bool keepsEqual() noexcept {
    if constexpr (requires { ValuePart<Derived>::keepsEqual; }) return ValuePart<Derived>::keepsEqual;
    return false;
}

template <class Derived>
void StoredValue<Derived>::Store(const Value& value) {
    if (differ<Derived>(m_imp->value, value)) {
        SetModified(TRUE);
    } else if constexpr (keepsEqual<Derived>()) {
        return;
    }
    m_imp->value = value;  // with what equality does not see: the sign of a zero, say
}

template <class Derived>
void StoredValue<Derived>::SetTo(const Value& value) {
    Store(value);
    SetDefined(TRUE);
}

template <class Derived>
void StoredValue<Derived>::Replace(const Value& value) {
    m_imp->value = value;
}

template <class Derived>
void StoredValue<Derived>::CopyFrom(const StoredValue& r) {
    if (this == &r) return;
    Store(r.Stored());
    NkDtBasis::operator=(r);
}

template <class Derived>
void StoredValue<Derived>::Serialize(CArchive& ar) {
    // What is no plain number archives itself in a form of its class.
    if constexpr (!std::is_arithmetic_v<Value>) {
        NkDtBasis::Serialize(ar);
    } else if (ar.IsStoring()) {
        NkDtBasis::Serialize(ar);
        ar << Stored();
    } else {
        load(
            *this, [&] { NkDtBasis::Serialize(ar); },
            [&] {
                Value value{};
                ar >> value;
                Store(value);
            });
    }
}

template <class Derived>
void StoredValue<Derived>::Clear() {
    Store(Value{});
    NkDtBasis::Clear();
}

template <class Derived>
void StoredValue<Derived>::Assign(const NkDtBasis& r) {
    if (!r.IsKindOf(Derived::GetThisClass())) raise(ValuePart<Derived>::assign, NkDtErrBasistypen);
    Self() = static_cast<const Derived&>(r);
}

template <class Derived>
NkDtTyps StoredValue<Derived>::GetDtTyp() const {
    return ValuePart<Derived>::typ;
}

}  // namespace nkdt
