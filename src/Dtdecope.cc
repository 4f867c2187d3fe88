#include "nkdec/Decimal96.h"
#include "nkdt/NkDtDecimal.h"

namespace {

/// To steps of 0.05, as it is stated.
Decimal96 roundedTo005(const Decimal96& number) {
    const Decimal96 tenth = Decimal96::fromMantissa(0, 1, 1);
    const Decimal96 half = Decimal96::fromMantissa(0, 5, 2);
    Decimal96 result = number - number % tenth;
    if (result < 0) result -= tenth;
    const Decimal96 rest = number - result;
    if (rest > half) return result + half;
    if (rest < -half) return result - half;
    return result;
}

Decimal96::Rounding methodOf(NkDtDecimal::Rundungsart eArt, bool isPositive) noexcept {
    switch (eArt) {
        case NkDtDecimal::RundenAufwaerts:
            return isPositive ? Decimal96::UP : Decimal96::DOWN;
        case NkDtDecimal::RundenAbwaerts:
            return isPositive ? Decimal96::DOWN : Decimal96::UP;
        case NkDtDecimal::RundenVonNull:
            return Decimal96::UP;
        case NkDtDecimal::RundenZurNull:
            return Decimal96::DOWN;
        default:
            return Decimal96::PLAIN;
    }
}

}  // namespace

NkDtDecimal& NkDtDecimal::Round(SHORT sPower, Rundungsart eArt) {
    const Decimal96 number = Stored();
    const int places = -sPower;
    if (!IsDefined() || places >= number.scale()) return *this;
    const Decimal96 rounded =
        eArt == RundenAuf005 ? roundedTo005(number) : number.round(places, methodOf(eArt, number > 0));
    ReplaceRounded(rounded);
    return *this;
}

NkDtDecimal& NkDtDecimal::Truncate(USHORT usPlaces) {
    const Decimal96 number = Stored();
    if (usPlaces == number.scale()) return *this;
    ReplaceRounded(number.truncate(usPlaces));
    return *this;
}

void NkDtDecimal::ReplaceRounded(const Decimal96& number) {
    Replace(number);
    SetModified(TRUE);
}
