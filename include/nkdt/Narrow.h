#pragma once

/// @file
/// Whole numbers on their way into a parameter of 16 or 32 bits, which the language would cut without a word.

#include "nkdt/Operands.h"
#include "nkfw/Export.h"

namespace nkdt {

/// Raises error 8 "Wert außerhalb des Wertebereichs".
[[noreturn]] NKDT_API void raiseTooWide();

/// The number in the narrower type. Error 8 when it does not fit.
template <class To, class From>
To narrowed(From n) {
    if (!fits<To>(n)) raiseTooWide();
    return static_cast<To>(n);
}

/// The number of a whole type or of a whole-number value. Error 8 when it does not fit, error 2
/// "Undefinierter Wert" for a missing value.
template <class To, class T>
To countOf(const T& n) {
    if constexpr (isWhole<T>) {
        return narrowed<To>(n);
    } else {
        return narrowed<To>(n.GetValue());
    }
}

}  // namespace nkdt
