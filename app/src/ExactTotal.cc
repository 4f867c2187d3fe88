#include "ExactTotal.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace nkdt::app {

namespace {

__extension__ typedef __int128 Int128;

constexpr std::size_t mostPlaces = 28;
constexpr Int128 one = Int128{100'000'000'000'000} * 100'000'000'000'000;  // in units of the 28th place

/// The number that the digits are; nothing for other characters and for one that is too large.
std::optional<Int128> numberOf(std::string_view digits, bool negative) {
    Int128 number = 0;
    for (const char ch : digits) {
        if (ch < '0' || ch > '9') return std::nullopt;
        const int digit = negative ? '0' - ch : ch - '0';
        if (__builtin_mul_overflow(number, 10, &number) || __builtin_add_overflow(number, digit, &number))
            return std::nullopt;
    }
    return number;
}

/// @param least zeros stand in front up to so many digits
std::string digitsOf(Int128 number, std::size_t least) {
    std::string digits;
    for (; number != 0; number /= 10) {
        const auto digit = static_cast<int>(number % 10);
        digits += static_cast<char>('0' + (digit < 0 ? -digit : digit));
    }
    digits.append(least - std::min(least, digits.size()), '0');
    std::reverse(digits.begin(), digits.end());
    return digits;
}

}  // namespace

void ExactTotal::add(std::string_view plain) {
    const bool negative = !plain.empty() && plain.front() == '-';
    if (negative) plain.remove_prefix(1);
    const std::size_t point = std::min(plain.find('.'), plain.size());
    std::string places(plain.substr(std::min(point + 1, plain.size())));
    m_known = m_known && point > 0 && places.size() <= mostPlaces;
    if (!m_known) return;
    places.resize(mostPlaces, '0');
    const std::optional<Int128> whole = numberOf(plain.substr(0, point), negative);
    const std::optional<Int128> units = numberOf(places, negative);
    m_known = whole && units;
    if (!m_known) return;
    m_places += *units;
    const auto carry = static_cast<int>(m_places / one);
    m_places %= one;
    m_known = !__builtin_add_overflow(m_whole, *whole, &m_whole) &&
              !__builtin_add_overflow(m_whole, carry, &m_whole);
}

std::string ExactTotal::text() const {
    // Both parts are told with one sign.
    const bool isNegative = m_whole < 0 || (m_whole == 0 && m_places < 0);
    Int128 whole = m_whole;
    Int128 places = m_places;
    if (isNegative && places > 0) {
        ++whole;
        places -= one;
    } else if (!isNegative && places < 0) {
        --whole;
        places += one;
    }
    std::string text = (isNegative ? "-" : "") + digitsOf(whole, 1);
    if (places == 0) return text;
    text += '.' + digitsOf(places, mostPlaces);
    text.erase(text.find_last_not_of('0') + 1);
    return text;
}

}  // namespace nkdt::app
