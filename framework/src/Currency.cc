#include "nkfw/Currency.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace {

constexpr ULONGLONG unit = 10000;
constexpr std::size_t places = 4;
constexpr LONGLONG most = std::numeric_limits<LONGLONG>::max();
constexpr ULONGLONG mostBelowZero = ULONGLONG{1} << 63U;

/// The longest text is "-922337203685477.5808".
constexpr std::size_t textSize = 24;
using Text = char[textSize];

constexpr bool isDigit(char ch) noexcept {
    return ch >= '0' && ch <= '9';
}

/// A magnitude in ten-thousandths on its way to a count; it stays below 2^63 + 9, or is known not to fit.
class Magnitude {
  public:
    void append(char digit) noexcept {
        if (m_count > mostBelowZero / 10) {
            m_fits = false;
        } else {
            m_count = m_count * 10 + static_cast<ULONGLONG>(digit - '0');
        }
    }
    void raise() noexcept { ++m_count; }

    /// @return false if the amount is beyond the range
    bool toCurrency(bool negative, CURRENCY& cur) const noexcept {
        if (!m_fits || m_count > mostBelowZero || (m_count == mostBelowZero && !negative)) return false;
        cur.int64 = static_cast<LONGLONG>(negative ? 0 - m_count : m_count);
        return true;
    }

  private:
    ULONGLONG m_count = 0;
    bool m_fits = true;
};

/// The magnitude of digits in front of the point and behind it. Digits behind the fourth place are rounded
/// half away from zero.
Magnitude magnitudeOf(std::string_view whole, std::string_view fraction) noexcept {
    Magnitude magnitude;
    for (const char digit : whole)
        magnitude.append(digit);
    for (std::size_t i = 0; i < places; ++i)
        magnitude.append(i < fraction.size() ? fraction[i] : '0');
    if (fraction.size() > places && fraction[places] >= '5') magnitude.raise();
    return magnitude;
}

/// A text of digits with a point or none.
struct Parts {
    std::string_view whole;
    std::string_view fraction;
    bool hasPoint;
};

Parts partsOf(std::string_view text) noexcept {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos) return {text, {}, false};
    return {text.substr(0, point), text.substr(point + 1), true};
}

/// Writes "-" for an amount below zero, the units, the point and four places.
std::string_view write(LONGLONG count, Text& text) noexcept {
    const bool negative = count < 0;
    const ULONGLONG magnitude = negative ? 0 - static_cast<ULONGLONG>(count) : static_cast<ULONGLONG>(count);
    char* end = text;
    if (negative) *end++ = '-';
    end = std::to_chars(end, text + textSize, magnitude / unit).ptr;
    *end++ = '.';
    // The leading 1 keeps the zeros behind it; the point is then written over it.
    char* const point = end - 1;
    end = std::to_chars(point, text + textSize, unit + magnitude % unit).ptr;
    *point = '.';
    return {text, static_cast<std::size_t>(end - text)};
}

}  // namespace

void COleCurrency::SetCurrency(long nUnits, long nFractionalUnits) noexcept {
    constexpr auto signedUnit = static_cast<LONGLONG>(unit);
    constexpr LONGLONG mostUnits = most / signedUnit;
    const bool inRange = nUnits >= -mostUnits && nUnits <= mostUnits && nFractionalUnits > -signedUnit &&
                         nFractionalUnits < signedUnit;
    const LONGLONG whole = inRange ? LONGLONG{nUnits} * signedUnit : 0;
    const bool fits = nFractionalUnits < 0 ? whole >= std::numeric_limits<LONGLONG>::min() - nFractionalUnits
                                           : whole <= most - nFractionalUnits;
    if (!inRange || !fits) {
        Set({0}, invalid);
        return;
    }
    Set({whole + nFractionalUnits}, valid);
}

COleCurrency COleCurrency::FromDouble(double dValue) noexcept {
    COleCurrency result;
    result.m_status = invalid;
    constexpr double beyond = 1e15;  // keeps the text short in front of its point
    if (!(std::fabs(dValue) < beyond)) return result;
    char text[400];  // a tiny number has more than 300 zeros
    const auto [end, error] =
        std::to_chars(text, text + sizeof text, std::fabs(dValue), std::chars_format::fixed);
    const Parts parts = partsOf({text, static_cast<std::size_t>(end - text)});
    const Magnitude magnitude = magnitudeOf(parts.whole, parts.fraction);
    if (magnitude.toCurrency(std::signbit(dValue), result.m_cur)) result.m_status = valid;
    return result;
}

double COleCurrency::GetDouble() const noexcept {
    // By its text, since the count itself may have more digits than a double.
    Text text;
    const std::string_view amount = write(m_cur.int64, text);
    double result = 0;
    std::from_chars(amount.data(), amount.data() + amount.size(), result);
    return result;
}

BOOL COleCurrency::ParseCurrency(LPCTSTR pszText) noexcept {
    Set({0}, invalid);
    if (pszText == nullptr) return FALSE;
    std::string_view text(pszText);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
    const Parts parts = partsOf(text);
    for (const char ch : text) {
        if (!isDigit(ch) && ch != '.') return FALSE;
    }
    if (parts.whole.empty() || parts.fraction.empty() == parts.hasPoint) return FALSE;
    if (parts.fraction.size() > places || parts.fraction.find('.') != std::string_view::npos) return FALSE;
    CURRENCY cur = {0};
    if (!magnitudeOf(parts.whole, parts.fraction).toCurrency(negative, cur)) return FALSE;
    Set(cur, valid);
    return TRUE;
}

CString COleCurrency::Format() const {
    if (m_status != valid) return CString();
    Text text;
    return CString(write(m_cur.int64, text));
}
