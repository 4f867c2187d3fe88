#include "Exact.h"

using namespace nkdec;

Decimal96 Decimal96::fromWide(Int128 mantissa, std::int16_t scale) {
    const auto magnitude = static_cast<UInt128>(mantissa < 0 ? -mantissa : mantissa);
    if (!fitsMantissa(magnitude)) return overflow(Operation::fromMantissa);
    return Decimal96Access::make(mantissa, scale);
}
