#pragma once

/// @file
/// The common part of all wide operations: operands taken apart into sign, magnitude and scale, exact results
/// of up to 192 bits put together again, rounded once.

#include "Wide.h"
#include "nkdec/Decimal96.h"

/// Makes and opens numbers for the operations.
struct Decimal96Access {
    static constexpr Decimal96 make(nkdec::Int128 mantissa, int scale) noexcept {
        return {mantissa, static_cast<std::uint32_t>(static_cast<std::uint16_t>(scale))};
    }
    static constexpr Decimal96 make(Decimal96State state) noexcept {
        return {0, static_cast<std::uint32_t>(state) << 16U};
    }
    static constexpr nkdec::Int128 mantissa(const Decimal96& number) noexcept { return number.mantissa(); }
};

namespace nkdec {

using Operation = Decimal96Operation;
using Rounding = Decimal96::Rounding;

/// Calls the handler; if it returns, the result that is none.
Decimal96 overflow(Operation operation);
void reportInexact(Operation operation);

/// An operand as it takes part: sign, magnitude and 0 to 28 places.
struct Operand {
    UInt128 magnitude = 0;
    int scale = 0;
    bool negative = false;
    bool inexact = false;  ///< normalising lost digits
    Decimal96State state = Decimal96State::number;

    bool isNumber() const noexcept { return state == Decimal96State::number; }
    Decimal96 asNonNumber() const noexcept { return Decimal96Access::make(state); }
};

/// The operand without a call of a handler: a negative scale that cannot be multiplied out gives the state
/// overflow.
Operand normalised(const Decimal96& number) noexcept;
/// The operand of an operation, which calls the handlers for what normalising makes of it.
Operand taken(const Decimal96& number, Operation operation);

/// The number of a magnitude that fits.
constexpr Decimal96 number(UInt128 magnitude, bool negative, int scale) noexcept {
    const auto positive = static_cast<Int128>(magnitude);
    return Decimal96Access::make(negative ? -positive : positive, scale);
}

/// An exact result on its way into a number. Digits below the magnitude's last one may be cut off if they are
/// more than 28 places behind the point, since rounding half away from zero looks at one digit alone.
struct Exact {
    Wide magnitude;
    int scale = 0;  ///< 0 to 57
    bool negative = false;
    bool trace = false;  ///< a cut off digit was not 0
};

/// The number at the largest scale up to @p places at which the rounded result fits.
/// @param asked  the places are what the caller wants, so that digits behind them are no loss
Decimal96 fitted(const Exact& exact, Operation operation, int places = Decimal96::maxScale,
                 Rounding method = Decimal96::PLAIN, bool asked = false);

/// Whether a quotient has to be raised by one for its remainder.
constexpr bool roundsUp(UInt128 remainder, UInt128 divisor, Rounding method) noexcept {
    if (method == Decimal96::PLAIN) return remainder >= divisor - remainder;
    return method == Decimal96::UP && remainder != 0;
}

/// A magnitude / 10^digits, rounded, for any count of digits.
struct Shortened {
    Wide quotient;
    bool inexact = false;
};
Shortened shortened(const Wide& magnitude, int digits, Rounding method) noexcept;

}  // namespace nkdec
