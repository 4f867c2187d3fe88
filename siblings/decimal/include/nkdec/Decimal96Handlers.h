#pragma once

/// @file
/// The two process-wide handlers of decimal arithmetic.
///
/// A handler is called in the middle of the operation, on the thread that computes, before anything is
/// stored: one that throws leaves all operands as they were. Where none is set nothing is called, and an
/// overflow shows in the result's state alone.
///
/// @code
/// setDecimal96OverflowHandler([](Decimal96Operation) { throw std::overflow_error("decimal"); });
/// @endcode

#include "nkdec/Export.h"

/// What was being computed when a handler is called. A compound form counts as its operator.
enum class Decimal96Operation : int {
    add,           ///< `+`, `-`
    multiply,      ///< `*`, Decimal96::multiplyRounded()
    divide,        ///< `/`, Decimal96::divideRounded(), Decimal96::truncatedQuotient()
    remainder,     ///< `%`
    round,         ///< Decimal96::round(), Decimal96::truncate()
    compare,       ///< the comparisons
    fromDouble,    ///< the construction from a double
    fromText,      ///< the construction from a text
    fromMantissa,  ///< the construction from a mantissa and a scale
    toInteger,     ///< Decimal96::toInt(), Decimal96::toInt64()
    toText,        ///< Decimal96::toString()
};

/// A handler. It may throw; when it returns, the operation goes on.
using Decimal96Handler = void (*)(Decimal96Operation operation);

/// Sets what is called when a result does not fit: beyond the mantissa at scale 0, a divisor of 0, a double
/// that is not finite, a number outside the whole type that is asked for, or a negative scale that cannot be
/// multiplied out. When the handler returns, the result is no number but has the state
/// Decimal96State::overflow (0 for whole types). Null, which is the default: nothing is called.
/// @return the handler before
NKDEC_API Decimal96Handler setDecimal96OverflowHandler(Decimal96Handler handler) noexcept;

/// Sets what is called when `+`, `-`, `*`, `/`, their compound forms, a text or a double lose digits because
/// the exact result does not fit, or when computing and comparing normalise an operand of more than 28
/// places and lose digits. Places that the caller asked to round to are no loss. Null, which is the default:
/// nothing is called. Setting a handler that is already set costs no more than a look.
/// @return the handler before
NKDEC_API Decimal96Handler setDecimal96InexactHandler(Decimal96Handler handler) noexcept;
