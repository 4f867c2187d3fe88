// The decimal arithmetic alone, without any other header of the library.
#include <nkdec/Decimal96.h>
#include <nkdec/Decimal96Handlers.h>

#include <string_view>

#include "Expect.h"

int main() {
    Expectations expect;

    const Decimal96 total = Decimal96("19.99") * 3;
    const Decimal96 tax = Decimal96::multiplyRounded(total, Decimal96("0.19"), 2);
    char text[Decimal96::textSize];
    (total + tax).toString(text);
    expect.that(std::string_view(text) == "71.36", "a total with its tax");

    static int overflows = 0;
    setDecimal96OverflowHandler([](Decimal96Operation) { ++overflows; });
    const Decimal96 most("39614081257132168796771975167");
    (most * most).toString(text);
    expect.that(overflows == 1 && std::string_view(text) == "NaN", "the user's handler hears of an overflow");

    return expect.exitStatus();
}
