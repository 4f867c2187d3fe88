#include "PlainDecimal.h"

#include <algorithm>
#include <charconv>

namespace nkdt::odbc {

namespace {

// Beyond any database's exponents, and far from the bounds of an int.
constexpr int largestExponent = 1000000;

bool isDigit(char ch) noexcept {
    return ch >= '0' && ch <= '9';
}

// Takes "[+|-]digits" from the whole text.
std::optional<int> parseExponent(std::string_view text) noexcept {
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (negative || text.front() == '+')) text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    int exponent = 0;
    for (const char ch : text) {
        if (!isDigit(ch)) return std::nullopt;
        exponent = std::min(exponent * 10 + (ch - '0'), largestExponent);
    }
    return negative ? -exponent : exponent;
}

}  // namespace

// Zeros in front are places at most. A digit that finds no room moves the point, and is missed unless it is
// 0.
void PlainDecimal::addDigit(char digit, bool behindPoint) noexcept {
    if (m_count == 0 && digit == '0') {
        m_places += behindPoint ? 1 : 0;
        return;
    }
    if (m_count < mostKept) {
        m_digits[static_cast<std::size_t>(m_count++)] = digit;
        m_places += behindPoint ? 1 : 0;
        return;
    }
    m_cut = m_cut || digit != '0';
    m_places -= behindPoint ? 0 : 1;
}

std::optional<PlainDecimal> PlainDecimal::parse(std::string_view text) noexcept {
    if (text.size() > static_cast<std::size_t>(largestExponent)) return std::nullopt;
    PlainDecimal number;
    number.m_negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (number.m_negative || text.front() == '+')) text.remove_prefix(1);
    bool behindPoint = false;
    bool hasDigit = false;
    std::size_t position = 0;
    for (; position < text.size(); ++position) {
        const char ch = text[position];
        if (ch == '.' && !behindPoint) {
            behindPoint = true;
        } else if (isDigit(ch)) {
            number.addDigit(ch, behindPoint);
            hasDigit = true;
        } else {
            break;
        }
    }
    if (!hasDigit) return std::nullopt;
    if (position < text.size()) {
        if (text[position] != 'e' && text[position] != 'E') return std::nullopt;
        const std::optional<int> exponent = parseExponent(text.substr(position + 1));
        if (!exponent) return std::nullopt;
        number.m_places -= *exponent;
    }
    if (number.isZero()) number.m_places = std::clamp(number.m_places, 0, mostDigits);
    return number;
}

PlainDecimal PlainDecimal::from(double number) noexcept {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::scientific).ptr;
    return parse({text.data(), static_cast<std::size_t>(end - text.data())}).value_or(PlainDecimal());
}

int PlainDecimal::zerosAtEnd() const noexcept {
    int zeros = 0;
    while (zeros < m_count && m_digits[static_cast<std::size_t>(m_count - zeros - 1)] == '0')
        ++zeros;
    return zeros;
}

void PlainDecimal::dropPlaces(int count) noexcept {
    m_places -= count;
    if (m_count > 0) m_count -= count;
}

bool PlainDecimal::fitIntoField() noexcept {
    if (m_places < 0 && m_count - m_places <= mostDigits) {
        std::fill_n(m_digits.begin() + m_count, -m_places, '0');
        m_count -= m_places;
        m_places = 0;
    }
    const int tooMany = std::max(m_count - mostDigits, m_places - mostDigits);
    if (tooMany > 0 && tooMany <= std::min(m_places, zerosAtEnd())) dropPlaces(tooMany);
    return !m_cut && m_places >= 0 && m_count <= mostDigits && m_places <= mostDigits;
}

void PlainDecimal::dropMark() noexcept {
    if (m_places == 1 || isZero()) dropPlacesOfWhole();
}

void PlainDecimal::dropPlacesOfWhole() noexcept {
    if (m_places > 0 && isWhole()) dropPlaces(m_places);
}

void PlainDecimal::appendTo(std::string& text) const {
    if (m_negative && !isZero()) text += '-';
    if (digitsBefore() > 0) {
        text += digits().substr(0, static_cast<std::size_t>(std::min(digitsBefore(), m_count)));
    } else {
        text += '0';
    }
    if (m_places < 0 && !isZero()) text.append(static_cast<std::size_t>(-m_places), '0');
    if (m_places <= 0) return;
    text += '.';
    text.append(static_cast<std::size_t>(std::max(m_places - m_count, 0)), '0');
    text += digits().substr(static_cast<std::size_t>(std::max(m_count - m_places, 0)));
}

bool operator==(const PlainDecimal& a, const PlainDecimal& b) noexcept {
    if (a.isZero() || b.isZero()) return a.isZero() && b.isZero();
    const auto significant = [](const PlainDecimal& number) {
        return number.digits().substr(0, static_cast<std::size_t>(number.significantDigits()));
    };
    return a.m_negative == b.m_negative && a.lastPlace() == b.lastPlace() && !a.m_cut && !b.m_cut &&
           significant(a) == significant(b);
}

}  // namespace nkdt::odbc
