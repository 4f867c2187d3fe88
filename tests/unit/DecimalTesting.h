#pragma once

/// @file
/// Decimal numbers as the tests show them.

#include <nkdt/NkDtDecimal.h>

#include <string>

#include "ValueTesting.h"

namespace valuetest {

/// "number state", the number without superfluous places, whether it is defined or not.
inline std::string describe(const NkDtDecimal& value) {
    char text[33];
    return std::string(value.DecimalToAscii(text)) + " " + stateOf(value);
}

/// A valid currency of that many ten-thousandths.
inline COleCurrency currency(LONGLONG count) {
    CURRENCY units{};
    units.int64 = count;
    return COleCurrency(units);
}

}  // namespace valuetest
