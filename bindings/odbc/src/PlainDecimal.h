#pragma once

/// @file
/// A decimal number as digits: what a driver writes in one of many ways and a field holds in one.

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace nkdt::odbc {

/// The number +-digits * 10^-places, without leading zeros and without memory of its own.
class PlainDecimal {
  public:
    /// Most digits, and most decimal places, that a field can hold.
    static constexpr int mostDigits = 28;
    /// The longest text of a decimal: 29 digits, a sign, a point and a zero behind it.
    static constexpr std::size_t longestText = 32;

    /// Reads "[+|-]digits[.digits][E[+|-]digits]" with a digit on one side of the point at least; nothing for
    /// any other text.
    static std::optional<PlainDecimal> parse(std::string_view text) noexcept;
    /// The decimal with the fewest digits that reads back as the double, which is finite.
    static PlainDecimal from(double number) noexcept;

    /// Writes an exponent out and drops zeros at the end that are too many. FALSE if the number still has
    /// more than mostDigits digits or places.
    bool fitIntoField() noexcept;
    /// Drops the zero behind the point, with which a field's text marks a number that has no places, and the
    /// places of 0.
    void dropMark() noexcept;
    /// Drops all places of a whole number.
    void dropPlacesOfWhole() noexcept;

    bool isZero() const noexcept { return m_count == 0; }
    bool isWhole() const noexcept { return lastPlace() <= 0; }
    /// The count of digits without the zeros at the end.
    int significantDigits() const noexcept { return m_count - zerosAtEnd(); }
    /// Where the last digit other than 0 stands: 2 for hundredths, 0 for ones, -2 for hundreds.
    int lastPlace() const noexcept { return m_count == 0 ? 0 : m_places - zerosAtEnd(); }
    /// The count of digits before the point, negative for zeros behind it; 0 for zero.
    int digitsBefore() const noexcept { return m_count == 0 ? 0 : m_count - m_places; }
    /// Whether all digits were kept, so that appendTo() gives the number itself in a bounded text.
    bool canBeWritten() const noexcept { return !m_cut && m_places >= 0 && m_places <= mostKept; }

    /// The number in digits: "-0.05", "12.50", "100".
    void appendTo(std::string& text) const;

    /// Equal in value, whatever the places.
    friend bool operator==(const PlainDecimal& a, const PlainDecimal& b) noexcept;

  private:
    static constexpr int mostKept = 48;

    std::string_view digits() const noexcept { return {m_digits.data(), static_cast<std::size_t>(m_count)}; }
    int zerosAtEnd() const noexcept;
    void addDigit(char digit, bool behindPoint) noexcept;
    void dropPlaces(int count) noexcept;

    std::array<char, mostKept> m_digits{};
    int m_count = 0;
    int m_places = 0;
    bool m_negative = false;
    bool m_cut = false;
};

}  // namespace nkdt::odbc
