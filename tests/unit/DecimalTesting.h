#pragma once

/// @file
/// Decimal numbers as the tests show them.

#include <nkdt/NkDtDecimal.h>

#include "ValueTesting.h"

namespace valuetest {

/// A valid currency of that many ten-thousandths.
inline COleCurrency currency(LONGLONG count) {
    CURRENCY units{};
    units.int64 = count;
    return COleCurrency(units);
}

}  // namespace valuetest
