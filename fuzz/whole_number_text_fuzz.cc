/// @file
/// Whole numbers from text, held against a second reading that compares digits as text and never computes.

#include <cctype>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "nkdt/NkDt.h"

namespace {

using fuzz::require;

/// What a text is to become.
struct Expected {
    ULONG error = 0;
    std::string digits = "0";  // as the value is written
};

/// The number's digits without zeros in front, with its sign; "0" for zero.
std::string canonical(bool negative, std::string_view digits) {
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.empty()) return "0";
    return (negative ? "-" : "") + std::string(digits);
}

bool isBeyond(std::string_view magnitude, std::string_view largest) {
    return magnitude.size() != largest.size() ? magnitude.size() > largest.size() : magnitude > largest;
}

/// @param window        the bytes that count where there is a separator
/// @param largest,least the bounds without their sign
Expected read(std::string_view text, std::size_t window, std::string_view largest, std::string_view least) {
    const char separator = text.find(',') != std::string_view::npos ? ',' : '.';
    const std::size_t position = text.find(separator);
    const bool separated = position != std::string_view::npos;
    if (separated) text = text.substr(0, window);
    // Where the number has to end: at the separator, or with the bytes that count.
    const std::size_t end = separated ? std::min(position, text.size()) : text.size();

    constexpr std::string_view space = " \t\n\v\f\r";
    const std::size_t sign = std::min(text.find_first_not_of(space), text.size());
    const bool signedText = sign < text.size() && (text[sign] == '-' || text[sign] == '+');
    const bool negative = signedText && text[sign] == '-';
    const std::size_t first = sign + (signedText ? 1 : 0);
    const std::size_t behind = std::min(text.find_first_not_of("0123456789", first), text.size());
    if (behind <= first) return {end == 0 ? 0U : NkDtErrInitialwert, "0"};

    const std::string number = canonical(negative, text.substr(first, behind - first));
    const std::string_view magnitude = std::string_view(number).substr(number[0] == '-' ? 1 : 0);
    if (isBeyond(magnitude, number[0] == '-' ? least : largest)) return {NkDtErrWertebereich, ""};
    if (behind != end) return {NkDtErrInitialwert, ""};
    return {0, number};
}

template <class Number>
void checkValue(const Number& value, const Expected& expected) {
    require(value.IsDefined() && !value.IsModified(), "a number from text is defined and not modified");
    const NkDtString sql = value.ConvToSQL();
    require(sql == expected.digits.c_str(), "the text becomes the number that it shows");
    require(Number(sql.GetValue()).GetValue() == value.GetValue(), "a number reads back what it writes");
}

template <class Number>
void check(const std::string& text, const Expected& expected) {
    const ULONG fromText = fuzz::errorNumberOf([&] { checkValue(Number(text.c_str()), expected); });
    require(fromText == expected.error, "the constructor from text raises the error of the text");

    const NkDtString value(text.c_str());
    const ULONG fromValue = fuzz::errorNumberOf([&] { checkValue(Number(value), expected); });
    require(fromValue == expected.error, "the constructor from a text value raises the same error");

    Number target(7);
    const auto error = fuzz::errorOf([&] { target.SetFromExtern(&value, TRUE, NkDtExternVersion); });
    require((error != nullptr) == (expected.error != 0), "an external text is refused like any other");
    require(target.IsDefined() != FALSE, "an external text makes the value defined");
    if (error == nullptr) {
        require(target.ConvToSQL() == expected.digits.c_str(), "an external text becomes its number");
    } else {
        require(error->GetErrorNumber() == NkDtErrFolgefehler && error->GetCauseNumber() == expected.error,
                "a refused external text raises error 1 with its cause");
        require(target.GetValue() == 7 && !target.IsModified(), "a refused external text changes nothing");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = fuzz::Input(data, size).rest();
    check<NkDtLong>(text, read(text, 11, "2147483647", "2147483648"));
    check<NkDtShort>(text, read(text, 6, "32767", "32768"));
    return 0;
}
