// What a first user tries: values compute, convert and compare, a missing one raises the library's error, and
// the error can be caught here.
#include <nkdt/NkDt.h>

#include <memory>

#include "Expect.h"

namespace {

void numbers(Expectations& expect) {
    NkDtLong sum(40);
    sum += 2;
    expect.that(sum == 42, "whole numbers add");

    const NkDtDecimal gross = NkDtDecimal("1234.50") * NkDtDecimal("1.19");
    expect.that(gross == NkDtDecimal("1469.055"), "decimals multiply exactly");
}

void money(Expectations& expect) {
    const COleCurrency price(1234, 5678);
    expect.that(NkDtDecimal(price) == NkDtDecimal("1234.5678"), "a currency becomes a decimal");
    const COleCurrency back = NkDtDecimal(price);
    expect.that(back.m_cur.int64 == 12345678, "a decimal becomes a currency");
    expect.that(back.Format() == "1234.5678", "a currency has a text");
}

void dates(Expectations& expect) {
    NkDtDateTime received("05.03.2004 14:07:09");
    received.AddMonth(1);
    expect.that(received == NkDtDateTime(5, 4, 2004, 14, 7, 9), "a date moves by a month");

    const COleDateTime noon(2004, 3, 5, 12, 0, 0);
    expect.that(noon.m_dt == 38051.5, "days are counted");
    const COleDateTime back = NkDtDateTime(noon);
    expect.that(back == noon, "a date goes to a date-time and back");

    const NkDtTime idle = NkDtDateTime(6, 3, 2004, 8, 0, 0) - NkDtDateTime(5, 3, 2004, 7, 30, 0);
    expect.that(idle.GetTime(NkDtTime::Minutes) == 24 * 60 + 30, "the difference of dates is a duration");
}

void errors(Expectations& expect) {
    int number = 0;
    try {
        const NkDtLong missing(NkDtWmMissing);
        number = missing.GetValue() == 0 ? -1 : -2;
    } catch (NkDtExcep* caught) {
        const std::unique_ptr<NkDtExcep> error(caught);
        number = error->GetErrorNumber();
    }
    expect.that(number == 2, "a missing value raises error 2");
}

}  // namespace

int main() {
    Expectations expect;
    numbers(expect);
    money(expect);
    dates(expect);
    errors(expect);
    return expect.exitStatus();
}
