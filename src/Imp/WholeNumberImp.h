#pragma once

/// @file
/// The value record of a whole number with its checked computing and its text reading; NkDtLong_Imp and
/// NkDtShort_Imp are made from it.

#include <cstddef>
#include <cstring>
#include <limits>
#include <string_view>

#include "Raise.h"
#include "nkfw/Types.h"

namespace nkdt {

/// @tparam Limits states the class's part: `Value`, the stored type; `separatedLength`, the bytes that count
/// in a text with a decimal separator; and the origins of its errors: `add`, `subtract`, `multiply`,
/// `divide`, `construct`, `fromString`.
template <class Limits>
class WholeNumberImp {
  public:
    using Value = typename Limits::Value;

    constexpr WholeNumberImp() noexcept = default;
    explicit constexpr WholeNumberImp(Value n) noexcept : value(n) {}

    // Operands have 32 bits at most, so nothing wraps in 64 bits before the result is checked.
    static Value add(LONGLONG a, LONGLONG b) { return checked(a + b, Limits::add); }
    static Value subtract(LONGLONG a, LONGLONG b) { return checked(a - b, Limits::subtract); }
    static Value multiply(LONGLONG a, LONGLONG b) { return checked(a * b, Limits::multiply); }
    static Value divide(LONGLONG a, LONGLONG b) {
        if (b == 0) raise(Limits::divide, NkDtErrDivisionDurchNull);
        return checked(a / b, Limits::divide);
    }

    /// The number as a value of the class; error 8 when it does not fit.
    static Value fromNumber(LONGLONG n) { return checked(n, Limits::construct); }

    /// The same for the integer part of a number that may have a fraction; what lies beyond a bound, be it by
    /// a fraction, does not fit, nor does NaN.
    static Value fromDouble(double number) {
        const bool fits =
            number >= std::numeric_limits<Value>::min() && number <= std::numeric_limits<Value>::max();
        if (!fits) raise(Limits::construct, NkDtErrWertebereich);
        return static_cast<Value>(number);
    }

    /// Reads blanks, a sign and digits. An empty text is 0. Errors 5 and 8, the latter first.
    static Value fromString(LPCTSTR pszText);

    /// Where a number that does not fit arises.
    static const Origin& constructOrigin() noexcept { return Limits::construct; }

    Value value = 0;

  private:
    static Value checked(LONGLONG n, const Origin& origin) {
        if (n < std::numeric_limits<Value>::min() || n > std::numeric_limits<Value>::max())
            raise(origin, NkDtErrWertebereich);
        return static_cast<Value>(n);
    }
};

/// What a text begins with: a whole number, and how many characters it takes; none when there is no digit.
struct WholeNumberText {
    LONGLONG value = 0;  // held at a bound beyond every 32-bit number when there are more digits
    std::size_t length = 0;
};

/// Reads white space, a sign and digits from the start of the text.
WholeNumberText readWholeNumber(std::string_view text) noexcept;

template <class Limits>
auto WholeNumberImp<Limits>::fromString(LPCTSTR pszText) -> Value {
    requireText(pszText, Limits::fromString);
    const std::string_view text(pszText);
    std::size_t separator = text.find(',');
    if (separator == std::string_view::npos) separator = text.find('.');
    const bool separated = separator != std::string_view::npos;
    const std::string_view counted = separated ? text.substr(0, Limits::separatedLength) : text;

    const WholeNumberText number = readWholeNumber(counted);
    const Value result = checked(number.value, Limits::fromString);
    const bool complete = number.length == counted.size() || (separated && number.length == separator);
    if (!complete) raise(Limits::fromString, NkDtErrInitialwert);
    return result;
}

}  // namespace nkdt
