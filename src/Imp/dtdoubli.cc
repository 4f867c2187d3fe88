#include "Imp/dtdoubli.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <system_error>

#include "LetterCase.h"
#include "Raise.h"

using namespace nkdt;

namespace {

constexpr Origin originFromString = {".\\Imp\\dtdoubli.cc", "NkDtDouble_Imp", "ConvAsciiToDouble(LPCTSTR)"};

constexpr bool isSpace(char ch) {
    return ch == ' ' || (ch >= '\t' && ch <= '\r');
}

constexpr bool isDigit(char ch) {
    return ch >= '0' && ch <= '9';
}

/// The text from its first character on that is no digit.
const char* behindDigits(const char* psz) {
    while (isDigit(*psz))
        ++psz;
    return psz;
}

/// A number that no double holds is either too large or too small. Every text of it has a first digit that is
/// not 0.
/// @param psz the number without its sign
bool isLarge(const char* psz, const char* end) {
    const char* const point = behindDigits(psz);
    const char* const mark = *point == '.' ? behindDigits(point + 1) : point;
    int exponent = 0;
    if (mark != end) {
        const bool negative = mark[1] == '-';
        const char* const digits = mark[1] == '-' || mark[1] == '+' ? mark + 2 : mark + 1;
        if (std::from_chars(digits, end, exponent).ec != std::errc()) return !negative;
        if (negative) exponent = -exponent;
    }
    const char* first = psz;
    while (*first == '0' || *first == '.')
        ++first;
    return LONGLONG{exponent} + (point - first) > 0;
}

struct Prefix {
    double value;
    const char* end;
};

/// `strtod` in the C locale.
Prefix readPrefix(const char* const pszText) {
    const char* psz = pszText;
    while (isSpace(*psz))
        ++psz;
    const bool negative = *psz == '-';
    if (*psz == '-' || *psz == '+') ++psz;
    // The words for what is no number would be read otherwise.
    if (!isDigit(*psz) && !(*psz == '.' && isDigit(psz[1]))) return {0.0, pszText};

    double value = 0.0;
    const char* const textEnd = psz + std::strlen(psz);
    const auto [end, error] = std::from_chars(psz, textEnd, value);
    if (error != std::errc()) value = isLarge(psz, end) ? HUGE_VAL : 0.0;
    if (error != std::errc() || (value != 0.0 && value < std::numeric_limits<double>::min())) errno = ERANGE;
    return {negative ? -value : value, end};
}

/// @param digits the significant digits
std::string_view write(double number, int digits, NkDtDouble_Imp::Text& buffer) noexcept {
    const auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer - 1, number, std::chars_format::general, digits);
    *end = '\0';
    return {buffer, static_cast<std::size_t>(end - buffer)};
}

}  // namespace

double NkDtDouble_Imp::fromString(LPCTSTR pszText) {
    requireText(pszText, originFromString);
    const Prefix prefix = readPrefix(pszText);
    const bool complete = !std::isinf(prefix.value) && *prefix.end == '\0';
    if (!complete && errno == ERANGE) raise(originFromString, NkDtErrWertebereich);
    return prefix.value;
}

std::string_view NkDtDouble_Imp::shortText(double number, Text& buffer) noexcept {
    return write(number, 15, buffer);
}

std::string_view NkDtDouble_Imp::externText(double number, Text& buffer) noexcept {
    const std::string_view text = write(number, 16, buffer);
    mapToUpper(buffer, text.size());
    return text;
}
