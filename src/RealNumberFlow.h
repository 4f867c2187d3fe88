#pragma once

/// @file
/// The operations of a number with decimal places; the class's source states its part and instantiates them.

#include <ostream>
#include <string_view>

#include "NullRule.h"
#include "StoredValueFlow.h"
#include "nkdt/RealNumber.h"

namespace nkdt {

/// How an operation is written, which its errors tell.
enum class RealForm : unsigned char {
    values,         ///< value with value
    whole,          ///< value with a whole number
    floating,       ///< value with a floating number
    wholeFirst,     ///< whole number with value
    floatingFirst,  ///< floating number with value
};

inline RealForm formOf(const PlainNumber& number, bool isFirst) noexcept {
    const bool isFloating = number.kind() == PlainNumber::Kind::floating;
    if (isFirst) return isFloating ? RealForm::floatingFirst : RealForm::wholeFirst;
    return isFloating ? RealForm::floating : RealForm::whole;
}

// The class's part states
// - the origins of its six comparisons, in the order of RealComparison: with another value (`comparisons`),
// with
//   a whole number (`wholeComparisons`) and with a floating one (`floatingComparisons`);
// - `toValue()`: a plain number as a stored value;
// - `divide()`: the quotient, or the rest, of two stored values, in the form that its errors tell;
// - `computeFirst()`: the operation on a plain number and a value that is not missing; beside a null, which
// is
//   neutral in `*` and `/`, they give the plain number;
// - `taken()`: the result of an operation that takes one of its operands;
// - `related()`: whether a stored value and a plain number compare so;
// - `alwaysModified`: whether adding in place raises the modified flag even when nothing changes;
// - `text()`: a stored value's text, in a buffer of its type `Text`.

/// A plain number as a stored value.
/// @param fromDouble turns a floating one into it
template <class Value, class FromDouble>
Value valueOf(const PlainNumber& number, FromDouble&& fromDouble) {
    switch (number.kind()) {
        case PlainNumber::Kind::whole:
            return static_cast<Value>(number.whole());
        case PlainNumber::Kind::unsignedWhole:
            return static_cast<Value>(number.unsignedWhole());
        case PlainNumber::Kind::floating:
            break;
    }
    return fromDouble(number.floating());
}

/// The operation on two stored values. Compiled into each caller, so that a sum asks for no call.
template <class Part, class Value>
[[gnu::always_inline]] inline Value compute(RealOperation operation, const Value& a, const Value& b,
                                            RealForm form) {
    switch (operation) {
        case RealOperation::add:
            return a + b;
        case RealOperation::subtract:
            return a - b;
        case RealOperation::multiply:
            return a * b;
        default:
            return Part::divide(operation, a, b, form);
    }
}

inline bool isValid(const COleCurrency& currency) noexcept {
    return currency.GetStatus() == COleCurrency::valid;
}

/// Whether the values compare so.
template <class Value>
bool holds(RealComparison comparison, const Value& a, const Value& b) {
    switch (comparison) {
        case RealComparison::equal:
            return a == b;
        case RealComparison::unequal:
            return a != b;
        case RealComparison::less:
            return a < b;
        case RealComparison::greater:
            return a > b;
        case RealComparison::lessEqual:
            return a <= b;
        case RealComparison::greaterEqual:
            return a >= b;
    }
    return false;
}

constexpr Neutral neutralOf(RealOperation operation) noexcept {
    switch (operation) {
        case RealOperation::multiply:
            return Neutral::both;
        case RealOperation::divide:
        case RealOperation::remainder:
            return Neutral::right;
        default:
            return Neutral::none;
    }
}

/// Whether the operation leaves the operand beside this one as it is.
inline bool isNeutral(const NkDtBasis& value, RealOperation operation) {
    return neutralOf(operation) != Neutral::none && value.IsNull();
}

template <class Derived>
Derived RealNumber<Derived>::Compute(const Derived& a, const Derived& b, Operation operation) {
    if (a.IsDefined() && b.IsDefined()) [[likely]]
        return Derived(compute<ValuePart<Derived>>(operation, a.Stored(), b.Stored(), RealForm::values));
    return ComputeUndefined(a, b, operation);
}

template <class Derived>
[[gnu::noinline]] Derived RealNumber<Derived>::ComputeUndefined(const Derived& a, const Derived& b,
                                                                Operation operation) {
    using Part = ValuePart<Derived>;
    switch (decide(OperandState(a), OperandState(b), neutralOf(operation))) {
        case Outcome::undefined:
            return Derived(NkDtWmDefault);
        case Outcome::takeLeft:
            return Part::taken(a, operation);
        case Outcome::takeRight:
            return Part::taken(b, operation);
        case Outcome::compute:
            break;
    }
    return Derived(compute<Part>(operation, a.Stored(), b.Stored(), RealForm::values));
}

template <class Derived>
Derived RealNumber<Derived>::Compute(const Derived& a, const PlainNumber& b, Operation operation) {
    using Part = ValuePart<Derived>;
    if (a.IsMissing()) return Derived(NkDtWmDefault);
    return Derived(compute<Part>(operation, a.Stored(), Part::toValue(b), formOf(b, false)));
}

template <class Derived>
Derived RealNumber<Derived>::Compute(const PlainNumber& a, const Derived& b, Operation operation) {
    using Part = ValuePart<Derived>;
    if (b.IsMissing()) return Derived(NkDtWmDefault);
    return Derived(Part::computeFirst(operation, a, b));
}

template <class Derived>
Derived& RealNumber<Derived>::Accumulate(const Derived& r, Operation operation) {
    using Part = ValuePart<Derived>;
    // The loop over a column: nothing is left to be noted beside the number.
    if (!Part::alwaysModified && this->IsModified() && this->IsDefined() && r.IsDefined()) [[likely]] {
        this->Replace(operation == Operation::add
                          ? compute<Part>(Operation::add, Stored(), r.Stored(), RealForm::values)
                          : compute<Part>(Operation::subtract, Stored(), r.Stored(), RealForm::values));
        return Self();
    }
    return AccumulateAndNote(r, operation);
}

template <class Derived>
[[gnu::noinline]] Derived& RealNumber<Derived>::AccumulateAndNote(const Derived& r, Operation operation) {
    using Part = ValuePart<Derived>;
    const OperandState state(*this);
    if (decide(state, OperandState(r), Neutral::none) == Outcome::undefined) return Self();
    // Computed before anything changes: an error leaves the value and its flag alone.
    const Value result = compute<Part>(operation, Stored(), r.Stored(), RealForm::values);
    if (Part::alwaysModified || (!this->IsModified() && result != Stored())) this->SetModified(TRUE);
    this->Replace(result);
    this->SetDefined(TRUE);
    return Self();
}

template <class Derived>
Derived& RealNumber<Derived>::Accumulate(const PlainNumber& n, Operation operation) {
    using Part = ValuePart<Derived>;
    if (this->IsMissing()) return Self();
    const Value operand = Part::toValue(n);
    if (Part::alwaysModified || operand != Value{}) {
        const Value result = compute<Part>(operation, Stored(), operand, formOf(n, false));
        this->SetModified(TRUE);
        this->Replace(result);
    }
    this->SetDefined(TRUE);
    return Self();
}

template <class Derived>
void RealNumber<Derived>::Step(Operation operation) {
    Accumulate(PlainNumber(INT{1}), operation);
}

template <class Derived>
bool RealNumber<Derived>::Related(const Derived& a, const Derived& b, Comparison comparison) {
    if (a.IsMissing() || b.IsMissing()) [[unlikely]]
        raise(ValuePart<Derived>::comparisons[static_cast<unsigned char>(comparison)], NkDtErrUndefiniert);
    return holds(comparison, a.Stored(), b.Stored());
}

template <class Derived>
bool RealNumber<Derived>::Related(const Derived& a, const PlainNumber& b, Comparison comparison) {
    using Part = ValuePart<Derived>;
    const auto index = static_cast<unsigned char>(comparison);
    const Origin& origin = b.kind() == PlainNumber::Kind::floating ? Part::floatingComparisons[index]
                                                                   : Part::wholeComparisons[index];
    if (a.IsMissing()) [[unlikely]]
        raise(origin, NkDtErrUndefiniert);
    return Part::related(comparison, a.Stored(), b, origin);
}

template <class Derived>
std::ostream& RealNumber<Derived>::Write(std::ostream& os, const Derived& number) {
    if (!number.IsDefined()) return os << std::string_view();
    typename ValuePart<Derived>::Text buffer;
    return os << ValuePart<Derived>::text(number.Stored(), buffer);
}

}  // namespace nkdt
