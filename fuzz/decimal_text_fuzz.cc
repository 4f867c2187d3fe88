/// @file
/// Decimals from text, held against a second reading, and their arithmetic against sums and products of
/// digits as they are taught in school.

#include <algorithm>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "nkdec/Decimal96.h"

namespace {

using fuzz::require;

// ---- Numbers as digits ----

/// Digits, the last one first, without zeros at the end of the string; a sign and a count of places.
struct Digits {
    std::string digits;
    std::size_t places = 0;
    bool negative = false;
};

void trim(std::string& digits) {
    digits.erase(digits.find_last_not_of('0') + 1);
}

Digits shifted(Digits number, std::size_t places) {
    number.digits.insert(0, places - number.places, '0');
    trim(number.digits);
    number.places = places;
    return number;
}

bool isLess(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return a.size() < b.size();
    return std::lexicographical_compare(a.rbegin(), a.rend(), b.rbegin(), b.rend());
}

std::string sumOf(const std::string& a, const std::string& b) {
    std::string sum;
    int carry = 0;
    for (std::size_t i = 0; i < std::max(a.size(), b.size()) || carry > 0; ++i) {
        const int digit = carry + (i < a.size() ? a[i] - '0' : 0) + (i < b.size() ? b[i] - '0' : 0);
        sum += static_cast<char>('0' + digit % 10);
        carry = digit / 10;
    }
    return sum;
}

/// a - b, where a is not less.
std::string differenceOf(const std::string& a, const std::string& b) {
    std::string difference;
    int borrow = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const int digit = a[i] - '0' - borrow - (i < b.size() ? b[i] - '0' : 0);
        borrow = digit < 0 ? 1 : 0;
        difference += static_cast<char>('0' + digit + 10 * borrow);
    }
    trim(difference);
    return difference;
}

Digits sumOf(Digits a, Digits b) {
    const std::size_t places = std::max(a.places, b.places);
    a = shifted(a, places);
    b = shifted(b, places);
    if (a.negative == b.negative) return {sumOf(a.digits, b.digits), places, a.negative};
    if (isLess(a.digits, b.digits)) return {differenceOf(b.digits, a.digits), places, b.negative};
    return {differenceOf(a.digits, b.digits), places, a.negative};
}

Digits productOf(const Digits& a, const Digits& b) {
    Digits product{"", a.places + b.places, a.negative != b.negative};
    for (std::size_t i = 0; i < a.digits.size(); ++i) {
        for (char times = '0'; times < a.digits[i]; ++times)
            product.digits = sumOf(product.digits, std::string(i, '0') + b.digits);
    }
    trim(product.digits);
    return product;
}

// ---- Reading ----

struct Expected {
    bool isNumber = false;
    Digits number;
};

Expected read(std::string_view text) {
    if (text.empty()) return {true, {}};
    Digits number;
    number.negative = text.front() == '-';
    if (text.front() == '-' || text.front() == '+') text.remove_prefix(1);
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string digits(text.substr(0, point));
    if (point < text.size()) digits += text.substr(point + 1);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) return {};
    number.places = point < text.size() ? text.size() - point - 1 : 0;
    number.digits.assign(digits.rbegin(), digits.rend());
    trim(number.digits);
    return {true, number};
}

std::string written(const Decimal96& number) {
    char text[Decimal96::textSize];
    char* const end = number.toString(text);
    require(end - text < static_cast<std::ptrdiff_t>(sizeof text) && *end == '\0', "a text fits the buffer");
    return std::string(text, static_cast<std::size_t>(end - text));
}

Digits digitsOf(const Decimal96& number) {
    const Expected back = read(written(number));
    require(back.isNumber, "what is written is a number");
    require(back.number.places == static_cast<std::size_t>(number.scale()), "all places are written");
    return back.number;
}

// ---- Rules ----

int overflows = 0;
int losses = 0;

bool isZero(const Digits& number) {
    return number.digits.empty();
}

bool areEqual(const Digits& a, const Digits& b) {
    Digits opposite = b;
    opposite.negative = !b.negative;
    return isZero(sumOf(a, opposite));
}

/// The result is the exact number, or at most half a unit of its last place beside it and told to be so.
void checkRounded(const Decimal96& result, const Digits& exact, std::size_t places, const char* rule) {
    if (!result.isNumber()) {
        require(overflows > 0, "what does not fit calls the overflow handler");
        // The largest number has 29 digits.
        require(exact.digits.size() >= exact.places + 29, "only large numbers overflow");
        return;
    }
    const Digits held = digitsOf(result);
    require(held.places <= std::min<std::size_t>(places, 28), "a result has its natural places at most");
    require(areEqual(held, exact) == (losses == 0), "a loss of digits calls the inexact handler");
    if (losses == 0) {
        require(held.places == std::min<std::size_t>(places, 28) || exact.digits.size() > 28,
                "an exact result that fits keeps its places");
        return;
    }
    Digits opposite = held;
    opposite.negative = !held.negative;
    Digits error = sumOf(exact, opposite);
    error.negative = false;
    const Digits twice = shifted(sumOf(error, error), std::max(error.places, held.places));
    const Digits unit = shifted({"1", held.places, false}, twice.places);
    require(!isLess(unit.digits, twice.digits), rule);
}

Decimal96 checkParsing(std::string_view text) {
    overflows = losses = 0;
    const Expected expected = read(text);
    Decimal96 number;
    const Decimal96TextResult result = Decimal96::parse(text, number);
    require(static_cast<bool>(result) == expected.isNumber, "exactly the texts of numbers are read");
    require((number.state() == Decimal96State::invalid) != expected.isNumber,
            "the state tells what is no number");
    if (!expected.isNumber) return Decimal96();
    checkRounded(number, expected.number, expected.number.places, "a text is rounded once");
    return number.isNumber() ? number : Decimal96();
}

void checkArithmetic(const Decimal96& a, const Decimal96& b) {
    const Digits left = digitsOf(a);
    const Digits right = digitsOf(b);
    overflows = losses = 0;
    checkRounded(a + b, sumOf(left, right), std::max(left.places, right.places), "a sum is rounded once");
    overflows = losses = 0;
    checkRounded(a * b, productOf(left, right), left.places + right.places, "a product is rounded once");
    require((a == b) == areEqual(left, right), "equal is what has the same digits");
    if (a == b) require(a.hash() == b.hash(), "equal numbers share their hash");
    if (b.isZero()) return;
    const Decimal96 rest = a % b;
    if (!rest.isNumber()) return;
    require(rest.abs() < b.abs(), "a remainder is smaller than the divisor");
    require(rest.isZero() || rest.sign() == a.sign(), "a remainder has the sign of the dividend");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 400) return 0;
    setDecimal96OverflowHandler([](Decimal96Operation) { ++overflows; });
    setDecimal96InexactHandler([](Decimal96Operation) { ++losses; });
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t middle = std::min(text.find('\n'), text.size());
    const Decimal96 a = checkParsing(text.substr(0, middle));
    const Decimal96 b = checkParsing(middle < text.size() ? text.substr(middle + 1) : std::string_view());
    checkArithmetic(a, b);
    checkArithmetic(b, a);
    return 0;
}
