#include "ExactTotal.h"

#include <array>

#include "Error.h"

namespace nkdt::app {

namespace {

std::string textOf(const Decimal96& number) {
    std::array<char, Decimal96::textSize> text{};
    (void)number.toString(text.data());
    return text.data();
}

}  // namespace

// An overflow raises what the value classes raise, or shows in the sum's state.
void ExactTotal::add(std::string_view plain) {
    if (!m_known) return;
    try {
        const Decimal96 number(plain);
        m_known = number.isNumber();
        if (m_known) addKnown(number);
    } catch (...) {
        (void)takeCaughtText();
        m_known = false;
    }
}

// Both parts of a number, and so both parts of the sum, have one sign.
void ExactTotal::addKnown(const Decimal96& number) {
    const Decimal96 whole = number.truncate(0);
    Decimal96 places = m_places + (number - whole);
    const Decimal96 carry = places.truncate(0);
    places -= carry;
    Decimal96 sum = m_whole + whole + carry;
    if (sum.sign() * places.sign() < 0) {
        sum += places.sign();
        places -= places.sign();
    }
    m_known = sum.isNumber() && places.isNumber();
    m_whole = sum;
    m_places = places;
}

std::string ExactTotal::text() const {
    std::string text = textOf(m_whole);
    std::string places = textOf(m_places);
    if (m_whole.isZero() && m_places.isNegative()) text.insert(0, 1, '-');
    const std::size_t point = places.find('.');
    if (point == std::string::npos) return text;
    places.erase(0, point);
    places.erase(places.find_last_not_of('0') + 1);
    return places == "." ? text : text + places;
}

}  // namespace nkdt::app
