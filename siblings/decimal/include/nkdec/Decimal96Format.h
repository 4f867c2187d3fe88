#pragma once

/// @file
/// Writes a Decimal96 with another decimal separator or a set count of places.
///
/// @code
/// Decimal96Format format;
/// format.setDecimalSeparator(',');
/// format.setPlaces(2);             // not all held places, but two
/// char text[Decimal96Format::textSize];
/// format.write(Decimal96("1.5"), text);    // "1,50"
/// format.write(Decimal96("1.005"), text);  // "1,01"
/// @endcode
///
/// A new format writes what Decimal96::toString() writes. A format holds no memory; threads may share one
/// that nobody changes.

#include <cstddef>

#include "nkdec/Decimal96.h"
#include "nkdec/Export.h"

class Decimal96Format {
  public:
    static constexpr std::size_t textSize = 64;  ///< bytes of a buffer for any text, its NUL included

    /// What stands between the whole number and its places: "." at first.
    void setDecimalSeparator(char separator) noexcept { m_separator = separator; }
    char decimalSeparator() const noexcept { return m_separator; }

    /// Whether separator and places are shown at all: true at first. Without them the number is rounded to a
    /// whole one. A number without places never has a separator.
    void setShowDecimalPoint(bool show) noexcept { m_showPoint = show; }
    bool showDecimalPoint() const noexcept { return m_showPoint; }

    /// Whether all held places are shown: true at first.
    void setShowAllDecimals(bool show) noexcept { m_showAll = show; }
    bool showAllDecimals() const noexcept { return m_showAll; }

    /// Shows as many places and no longer all: more are rounded, fewer filled.
    /// @param places 0 to 28; numbers outside count as the bound
    void setPlaces(int places) noexcept;
    int places() const noexcept { return m_places; }

    /// What stands for places that are not held: "0" at first; NUL: nothing.
    void setRightFill(char fill) noexcept { m_fill = fill; }
    char rightFill() const noexcept { return m_fill; }

    /// How places that are not shown are rounded: PLAIN at first.
    void setRounding(Decimal96::Rounding method) noexcept { m_rounding = method; }
    Decimal96::Rounding rounding() const noexcept { return m_rounding; }

    /// Writes the number and a NUL. What is zero after rounding has no sign.
    /// @param buffer of the caller, at least textSize bytes
    /// @return the end of the text, where the NUL stands
    NKDEC_API char* write(const Decimal96& number, char* buffer) const;

  private:
    int m_places = 2;
    Decimal96::Rounding m_rounding = Decimal96::PLAIN;
    char m_separator = '.';
    char m_fill = '0';
    bool m_showPoint = true;
    bool m_showAll = true;
};

inline void Decimal96Format::setPlaces(int places) noexcept {
    m_places = places < 0 ? 0 : places > Decimal96::maxScale ? Decimal96::maxScale : places;
    m_showAll = false;
}
