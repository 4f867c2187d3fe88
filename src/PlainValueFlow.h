#pragma once

/// @file
/// The operations of a class that holds one plain value; the class's source states its part and instantiates
/// them.

#include <ostream>
#include <string_view>

#include "StoredValueFlow.h"
#include "nkdt/PlainValue.h"

namespace nkdt {

// The class's part states the origins of its comparisons with another value and with a plain one
// (`comparisons`, `plainComparisons`, equality first), and the text of a value (`text()`).

template <class Derived>
bool PlainValue<Derived>::Equal(const Derived& a, const Derived& b, Comparison comparison) {
    if (a.IsMissing() || b.IsMissing()) [[unlikely]] {
        raise(ValuePart<Derived>::comparisons[static_cast<unsigned char>(comparison)], NkDtErrUndefiniert);
    }
    return a.Stored() == b.Stored();
}

template <class Derived>
bool PlainValue<Derived>::Equal(const Derived& a, Value b, Comparison comparison) {
    if (a.IsMissing()) [[unlikely]] {
        raise(ValuePart<Derived>::plainComparisons[static_cast<unsigned char>(comparison)],
              NkDtErrUndefiniert);
    }
    return a.Stored() == b;
}

template <class Derived>
std::ostream& PlainValue<Derived>::Write(std::ostream& os, const Derived& value) {
    if (!value.IsDefined()) return os << std::string_view();
    const Value stored = value.Stored();
    return os << ValuePart<Derived>::text(stored);
}

}  // namespace nkdt
