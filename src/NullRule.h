#pragma once

/// @file
/// What an operation does with undefined operands, decided in one place.

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
struct OperandState {
    explicit OperandState(INT) noexcept {}
    explicit OperandState(const NkDtBasis& value)
        : defined(value.IsDefined() != FALSE),
          missing(value.IsMissing() != FALSE),
          null(value.IsNull() != FALSE) {}

    bool defined = true;
    bool missing = false;
    bool null = false;
};

inline Outcome decide(const OperandState& left, const OperandState& right, Neutral neutral) noexcept {
    if (left.missing || right.missing || (!left.defined && !right.defined)) return Outcome::undefined;
    if (neutral != Neutral::none && right.null) return Outcome::takeLeft;
    if (neutral == Neutral::both && left.null) return Outcome::takeRight;
    return Outcome::compute;
}

}  // namespace nkdt
