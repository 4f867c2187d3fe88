#pragma once

/// @file
/// The value record of a double, and its texts: as the C library reads and writes them in the C locale,
/// whatever the program's locale is, and without memory from the heap.

#include <cstddef>
#include <string_view>

#include "nkfw/Types.h"

class NkDtDouble_Imp {
  public:
    /// Room for the longest text of a double, "-2.225073858507201E-308", and its terminator.
    static constexpr std::size_t textSize = 24;
    using Text = char[textSize];

    constexpr NkDtDouble_Imp() noexcept = default;
    explicit constexpr NkDtDouble_Imp(double number) noexcept : value(number) {}

    /// Reads as `strtod` does: white space, a sign, digits with a ".", an exponent; decimal forms only. What
    /// follows the number is ignored; a text without a number is 0. A number beyond the range sets `errno` to
    /// ERANGE, and so does one that differs from 0 and is smaller than the smallest normal number.
    ///
    /// Error 5 "Ungültiger Initialwert" for null. Error 8 "Wert außerhalb des Wertebereichs" when the number
    /// is beyond the range or not the whole text, and `errno` is ERANGE. `errno` is not cleared before: one
    /// left over from earlier counts.
    static double fromString(LPCTSTR pszText);

    /// The text with 15 significant digits, as `%.15g` writes it. The buffer holds it with a terminator.
    static std::string_view shortText(double number, Text& buffer) noexcept;
    /// The text with 16 significant digits and a capital "E", as `%.16G` writes it.
    static std::string_view externText(double number, Text& buffer) noexcept;

    double value = 0.0;
};
