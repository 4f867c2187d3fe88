#pragma once

/// @file
/// The sum of decimals with every digit.

#include <string>
#include <string_view>

namespace nkdt::app {

/// A single decimal has 28 digits in all; a sum has room for them before the point and behind it, and for
/// thousands of millions of such numbers, whatever their order. It is never rounded.
class ExactTotal {
  public:
    /// @param plain a decimal in digits, with 28 places at most: "-12.50"
    void add(std::string_view plain);
    /// FALSE once a sum was too large, or a text no such decimal; it stays so.
    bool isKnown() const noexcept { return m_known; }
    /// The sum in digits, without superfluous places.
    std::string text() const;

  private:
    __extension__ typedef __int128 Int128;

    Int128 m_whole = 0;
    Int128 m_places = 0;  // in units of the 28th place, less than 1 together, of any sign
    bool m_known = true;
};

}  // namespace nkdt::app
