/// @file
/// External texts of decimals, held against a second reading that moves digits and never computes, and the
/// field and plain texts of the same input.

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "Imp/dtdecimi.h"
#include "nkdt/NkDtExcep.h"

namespace {

using fuzz::require;

bool isDigit(char ch) {
    return ch >= '0' && ch <= '9';
}

/// The significant digits of a number, and the power of ten of a point in front of them; 0 has none.
struct Significant {
    bool negative = false;
    std::string digits;
    long power = 0;

    bool operator==(const Significant&) const = default;
};

Significant significantOf(bool negative, std::string_view whole, std::string_view places, long exponent) {
    std::string digits = std::string(whole) + std::string(places);
    long power = static_cast<long>(whole.size()) + exponent;
    const std::size_t first = std::min(digits.find_first_not_of('0'), digits.size());
    digits.erase(0, first);
    digits.erase(digits.find_last_not_of('0') + 1);
    power -= static_cast<long>(first);
    if (digits.empty()) return {};
    return {negative, digits, power};
}

std::string_view takeSign(std::string_view& text) {
    if (text.empty() || (text.front() != '-' && text.front() != '+')) return {};
    const std::string_view sign = text.substr(0, 1);
    text.remove_prefix(1);
    return sign;
}

/// A text of digits with one point at most and a sign in front.
std::optional<Significant> readPlain(std::string_view text, long exponent = 0) {
    const bool negative = takeSign(text) == "-";
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view whole = text.substr(0, point);
    const std::string_view places = point < text.size() ? text.substr(point + 1) : std::string_view();
    if (whole.empty() && places.empty()) return std::nullopt;
    for (const std::string_view part : {whole, places}) {
        if (!std::all_of(part.begin(), part.end(), isDigit)) return std::nullopt;
    }
    return significantOf(negative, whole, places, exponent);
}

std::optional<long> readExponent(std::string_view text) {
    const std::string_view sign = takeSign(text);
    if (sign.empty() || text.empty() || text.size() > 3) return std::nullopt;
    if (!std::all_of(text.begin(), text.end(), isDigit)) return std::nullopt;
    const long magnitude = std::stol(std::string(text));
    return sign == "-" ? -magnitude : magnitude;
}

template <class Text>
std::string written(std::string_view (*write)(const Decimal96&, Text&), const Decimal96& number) {
    Text buffer;
    const std::string_view text = write(number, buffer);
    require(text.size() < sizeof buffer && buffer[text.size()] == '\0', "a text fits its buffer");
    return std::string(text);
}

/// Whether the number is the one that was written. A mantissa holds every number of 28 digits.
void checkNumber(const Decimal96& number, const Significant& expected) {
    const std::optional<Significant> held = readPlain(written(&NkDtDecimal_Imp::sqlText, number));
    require(held.has_value(), "what is written is a number");
    const bool fits =
        expected.digits.size() <= 28 && static_cast<long>(expected.digits.size()) - expected.power <= 28;
    if (fits) require(*held == expected, "a number of 28 digits is read exactly");
}

void checkExternal(const std::string& text) {
    Decimal96 number;
    const ULONG error = fuzz::errorNumberOf([&] { number = NkDtDecimal_Imp::fromExtern(text.c_str()); });
    const std::size_t letter = text.find('E');
    const std::optional<long> exponent =
        letter < text.size() ? readExponent(std::string_view(text).substr(letter + 1)) : std::nullopt;
    require((error == NkDtErrExtern) == !exponent.has_value(), "the exponent decides on error 18");
    if (!exponent.has_value()) return;
    const std::optional<Significant> expected =
        readPlain(std::string_view(text).substr(0, letter), *exponent);
    if (!expected.has_value()) {
        require(error == NkDtErrFormatUnzulaessig || error == NkDtErrEingabeZuLang,
                "what is no number is refused");
        return;
    }
    if (error != 0) {
        require(error == NkDtErrEingabeZuLang || error == NkDtErrDezimal,
                "a number is refused by its length");
        require(letter > 28 || expected->power > 28 || expected->power < 1, "a short number is read");
        return;
    }
    checkNumber(number, *expected);
    const std::string back = written(&NkDtDecimal_Imp::externText, number);
    const Decimal96 again = NkDtDecimal_Imp::fromExtern(back.c_str());
    require(again == number, "what is written reads back");
    if (!number.isZero()) require(again.scale() == number.scale(), "and with all its places");
}

void checkTexts(const std::string& text) {
    const std::optional<Significant> expected = readPlain(text);
    for (const auto reader : {&NkDtDecimal_Imp::fromText, &NkDtDecimal_Imp::fromFieldText}) {
        Decimal96 number;
        const ULONG error = fuzz::errorNumberOf([&] { number = reader(text.c_str()); });
        if (error == 0 && expected.has_value()) checkNumber(number, *expected);
        require(error == 0 || error == NkDtErrEingabeZuLang || error == NkDtErrFormatUnzulaessig ||
                    error == NkDtErrDezimal,
                "a refused text is too long, no number or too large");
    }
    Decimal96 number;
    const ULONG error = fuzz::errorNumberOf([&] { number = NkDtDecimal_Imp::fromPlainText(text.c_str()); });
    require((error == NkDtErrFormatUnzulaessig) == (!expected.has_value() && !text.empty()),
            "exactly the plain texts are read");
    if (error == 0 && expected.has_value() && text.size() <= 38) checkNumber(number, *expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::string text = input.rest();
    checkExternal(text);
    checkTexts(text);
    return 0;
}
