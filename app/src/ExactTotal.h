#pragma once

/// @file
/// The sum of decimals with every digit.

#include <string>
#include <string_view>

#include "nkdec/Decimal96.h"

namespace nkdt::app {

/// Whole numbers and places are added apart, so that a sum is never rounded: it has up to 28 digits before
/// the point and 28 behind it, where a single decimal has 28 in all.
class ExactTotal {
  public:
    /// @param plain a decimal in digits: "-12.50"
    void add(std::string_view plain);
    /// FALSE once the sum was too large; it stays so.
    bool isKnown() const noexcept { return m_known; }
    /// The sum in digits, without superfluous places.
    std::string text() const;

  private:
    void addKnown(const Decimal96& number);

    Decimal96 m_whole;
    Decimal96 m_places;  // smaller than 1, of the sign of the whole number
    bool m_known = true;
};

}  // namespace nkdt::app
