#pragma once

/// @file
/// What an operation does with undefined operands, decided in one place.

#include "ValueAccess.h"
#include "nkdt/NkDtBasis.h"

namespace nkdt {

/// Which null operand is the neutral element of an operation.
enum class Neutral : unsigned char {
    none,   ///< none: a null counts with its stored value (`+`, `-`)
    right,  ///< the right one: the result is the left operand (`/`)
    both,   ///< either: the result is the other operand (`*`)
};

enum class Outcome : unsigned char { undefined, takeLeft, takeRight, compute };

/// What the decision needs to know of an operand; a plain number is always defined.
class OperandState {
  public:
    explicit OperandState(INT) noexcept {}
    explicit OperandState(const NkDtBasis& value) : OperandState(ValueAccess::state(value)) {}

    bool isDefined() const noexcept { return m_defined; }
    bool isMissing() const noexcept { return !m_defined && m_mode == NkDtWmMissing; }
    bool isNull() const noexcept { return !m_defined && m_mode == NkDtWmNull; }

  private:
    explicit OperandState(const State& state) noexcept
        : m_defined(state.defined == TRUE), m_mode(state.mode) {}

    bool m_defined = true;
    NkDtWorkingMode m_mode = NkDtWmMissing;
};

inline Outcome decide(const OperandState& left, const OperandState& right, Neutral neutral) noexcept {
    if (left.isDefined() && right.isDefined()) [[likely]]
        return Outcome::compute;
    if (left.isMissing() || right.isMissing() || (!left.isDefined() && !right.isDefined()))
        return Outcome::undefined;
    if (neutral != Neutral::none && right.isNull()) return Outcome::takeLeft;
    if (neutral == Neutral::both && left.isNull()) return Outcome::takeRight;
    return Outcome::compute;
}

}  // namespace nkdt
